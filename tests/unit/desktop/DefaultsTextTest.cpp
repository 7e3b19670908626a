#include "platform/linux/desktop/DefaultsText.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <random>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

TEST(DefaultsTextTest, writesBooleansAndReadsThemExactly) {
    EXPECT_EQ(textOf(true), "true");
    EXPECT_EQ(textOf(false), "false");
    EXPECT_EQ(valueOf("true"), DefaultsValue(true));
    EXPECT_EQ(valueOf(" false\t"), DefaultsValue(false));
    for (const auto* other : {"True", "yes", "on"}) {
        EXPECT_TRUE(std::holds_alternative<QString>(valueOf(other))) << other;
    }
    EXPECT_EQ(valueOf("1"), DefaultsValue(1.0));
}

TEST(DefaultsTextTest, writesDoublesInTheirShortestForm) {
    EXPECT_EQ(textOf(22.0), "22");
    EXPECT_EQ(textOf(1.2), "1.2");
    EXPECT_EQ(textOf(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(textOf(-0.0), "-0");
}

TEST(DefaultsTextTest, readsEveryDoubleBackBitForBit) {
    std::mt19937_64 random(1);
    for (int round = 0; round < 20000; ++round) {
        const auto bits = random();
        const auto value = std::bit_cast<double>(bits);
        if (std::isnan(value)) {
            continue;
        }
        const auto back = std::get<double>(valueOf(textOf(value)));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(back), bits);
    }
    for (const double value : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::denorm_min()}) {
        EXPECT_EQ(std::get<double>(valueOf(textOf(value))), value);
    }
    EXPECT_TRUE(std::isnan(std::get<double>(valueOf(textOf(std::numeric_limits<double>::quiet_NaN())))));
}

TEST(DefaultsTextTest, takesWhatIsNoNumberForAString) {
    for (const auto* text : {"1,2", "1.2s", "0x10", "1e999", "", "--1", "1 2"}) {
        EXPECT_EQ(valueOf(text), DefaultsValue(QString::fromLatin1(text))) << text;
    }
}

TEST(DefaultsTextTest, writesPlainStringsBare) {
    EXPECT_EQ(textOf(u"bottomCenter"_s), "bottomCenter");
    EXPECT_EQ(textOf(u"two words"_s), "two words");
    EXPECT_EQ(textOf(u"größer"_s), "größer");
}

TEST(DefaultsTextTest, readsEveryStringBack) {
    const QStringList strings{u""_s,           u"true"_s,  u"22"_s,        u" led"_s,        u"trailed "_s,
                              u"\"q\""_s,      u"\""_s,    u"a\"b"_s,      u"back\\n"_s,     u"line\nfeed"_s,
                              u"cr\r"_s,       u"tab\t"_s, u"; comment"_s, u"[section]"_s,   u"key=value"_s,
                              u"\U0001F600"_s, u"inf"_s,   u"\\"_s,        QString(QChar(0))};
    for (const auto& string : strings) {
        const auto text = textOf(string);
        EXPECT_FALSE(text.contains('\n') || text.contains('\r') || text.contains('\0')) << text.toStdString();
        EXPECT_EQ(valueOf(text), DefaultsValue(string)) << text.toStdString();
    }
}

TEST(DefaultsTextTest, readsInvalidTextAsAStringThatMatchesNothing) {
    EXPECT_EQ(valueOf("Pop\xFF"), DefaultsValue(u"Pop\uFFFD"_s));
}

} // namespace
} // namespace orvantile::platform::desktop
