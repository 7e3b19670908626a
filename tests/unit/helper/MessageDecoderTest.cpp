#include "platform/linux/helper/MessageDecoder.h"

#include "helper/qt/HelperMessage.h"

#include <QByteArray>
#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::helper {
namespace {

using orvantile::helper::longestText;
using orvantile::helper::MessageHeader;
using Qt::StringLiterals::operator""_s;

constexpr std::uint32_t ctrlS = static_cast<std::uint32_t>(Qt::ControlModifier) | Qt::Key_S;

MessageHeader save() {
    MessageHeader header;
    header.kind = MessageHeader::actionFired;
    header.enabled = 1;
    header.keyCount = 1;
    header.keys[0] = ctrlS;
    return header;
}

QByteArray message(const MessageHeader& header, const QByteArray& text = {}) {
    return QByteArray(reinterpret_cast<const char*>(&header), sizeof(header)) + text;
}

TEST(MessageDecoderTest, readsAFiredCommand) {
    const FiredCommand expected{u"Save"_s, {{{.control = true}, XKB_KEY_s}}, true};
    const auto report = decodeMessage(message(save(), "&Save\tCtrl+S"));
    ASSERT_TRUE(report.has_value());
    EXPECT_EQ(report->openMenus, 0);
    EXPECT_EQ(report->command, expected);
}

TEST(MessageDecoderTest, readsOpenMenus) {
    MessageHeader header;
    header.kind = MessageHeader::menusChanged;
    header.openMenus = 2;
    EXPECT_EQ(decodeMessage(message(header)), (HelperReport{.openMenus = 2}));
}

TEST(MessageDecoderTest, keepsWhatIsDisabledOrHasNoKeys) {
    auto header = save();
    header.enabled = 0;
    header.keyCount = 0;
    const auto report = decodeMessage(message(header, "Save"));
    ASSERT_TRUE(report && report->command);
    EXPECT_FALSE(report->command->enabled);
    EXPECT_TRUE(report->command->keys.empty());
}

TEST(MessageDecoderTest, namesNoKeysWhenOneOfThemIsUnknown) {
    auto header = save();
    header.keyCount = 2;
    header.keys[1] = Qt::Key_unknown;
    const auto report = decodeMessage(message(header, "Save"));
    ASSERT_TRUE(report && report->command);
    EXPECT_TRUE(report->command->keys.empty());
}

TEST(MessageDecoderTest, refusesWhatTheHelperDoesNotSend) {
    const auto whole = message(save(), "Save");
    for (qsizetype size = 0; size < qsizetype{sizeof(MessageHeader)}; ++size) {
        EXPECT_FALSE(decodeMessage(whole.first(size))) << size;
    }
    const auto refused = [](auto change, const QByteArray& text = "Save") {
        auto header = save();
        change(header);
        return !decodeMessage(message(header, text));
    };
    EXPECT_TRUE(refused([](auto& header) { header.mark[3] = '2'; }));
    EXPECT_TRUE(refused([](auto& header) { header.kind = 0; }));
    EXPECT_TRUE(refused([](auto& header) { header.kind = 3; }));
    EXPECT_TRUE(refused([](auto& header) { header.enabled = 2; }));
    EXPECT_TRUE(refused([](auto& header) { header.keyCount = 5; }));
    EXPECT_TRUE(refused([](auto&) {}, "\xff\xfe"));
    EXPECT_TRUE(refused([](auto&) {}, QByteArray(longestText + 1, 'x')));
    EXPECT_TRUE(refused([](auto& header) { header.kind = MessageHeader::menusChanged; })) << "with a text";
    EXPECT_FALSE(refused([](auto&) {}, QByteArray(longestText, 'x')));
}

} // namespace
} // namespace orvantile::platform::helper
