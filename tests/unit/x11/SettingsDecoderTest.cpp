#include "platform/linux/x11/SettingsDecoder.h"

#include <gmock/gmock.h>
#include <string_view>
#include <vector>

namespace orvantile::platform::x11 {
namespace {

using ::testing::Pair;
using ::testing::UnorderedElementsAre;
using Bytes = std::vector<std::uint8_t>;

/// Writes the value as a settings manager does.
class Writer {
public:
    explicit Writer(bool bigEndian_, std::uint32_t count) : bigEndian(bigEndian_) {
        bytes = {static_cast<std::uint8_t>(bigEndian ? 1 : 0), 0, 0, 0};
        number(12, 4);
        number(count, 4);
    }

    Writer& entry(std::uint8_t type, std::string_view name) {
        number(type, 1);
        number(0, 1);
        number(static_cast<std::uint32_t>(name.size()), 2);
        text(name);
        number(3, 4);
        return *this;
    }

    Writer& number(std::uint32_t value, unsigned size) {
        for (unsigned i = 0; i < size; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * (bigEndian ? size - 1 - i : i))));
        }
        return *this;
    }

    Writer& text(std::string_view value) {
        bytes.insert(bytes.end(), value.begin(), value.end());
        bytes.resize((bytes.size() + 3) / 4 * 4);
        return *this;
    }

    Bytes bytes;

private:
    bool bigEndian;
};

Bytes sample(bool bigEndian) {
    Writer writer(bigEndian, 3);
    writer.entry(1, "Net/ThemeName").number(12, 4).text("Adwaita-dark");
    writer.entry(2, "Gtk/ColorPalette").number(1, 4).number(2, 4);
    writer.entry(0, "Xft/DPI").number(static_cast<std::uint32_t>(-1), 4);
    return writer.bytes;
}

TEST(SettingsDecoder, readsBothByteOrders) {
    for (const bool bigEndian : {false, true}) {
        const auto settings = decodeSharedSettings(sample(bigEndian));
        ASSERT_TRUE(settings);
        EXPECT_THAT(*settings,
                    UnorderedElementsAre(Pair("Net/ThemeName", SharedSettings::mapped_type("Adwaita-dark")),
                                         Pair("Xft/DPI", SharedSettings::mapped_type(-1))));
    }
}

TEST(SettingsDecoder, refusesWhatIsCutOff) {
    const auto whole = sample(false);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(decodeSharedSettings(std::span(whole).first(length))) << length;
    }
}

TEST(SettingsDecoder, refusesTypesOfUnknownLength) {
    EXPECT_FALSE(decodeSharedSettings(Writer(false, 1).entry(3, "x").number(0, 4).bytes));
}

TEST(SettingsDecoder, isNotLedAstrayByCounts) {
    EXPECT_FALSE(decodeSharedSettings(Writer(false, 0xffffffffU).bytes));
    EXPECT_FALSE(decodeSharedSettings(Writer(false, 1).entry(1, "name").number(0xffffffffU, 4).bytes));
}

} // namespace
} // namespace orvantile::platform::x11
