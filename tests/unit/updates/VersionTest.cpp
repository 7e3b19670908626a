#include "platform/linux/desktop/updates/Version.h"

#include <gtest/gtest.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

Version version(const QString& text) {
    auto parsed = Version::parse(text);
    EXPECT_TRUE(parsed) << text.toStdString();
    return *parsed;
}

TEST(VersionTest, ordersReleasesAndTheirPreReleases) {
    const QStringList ascending{u"0.9"_s,      u"1.0-alpha"_s, u"1.0-alpha.2"_s, u"1.0-alpha.10"_s,
                                u"1.0-beta"_s, u"1.0-rc1"_s,   u"1.0-rc2"_s,     u"1.0-rc10"_s,
                                u"1.0"_s,      u"1.0.1"_s,     u"1.2~rc1"_s,     u"1.2"_s,
                                u"1.10b3"_s,   u"1.10"_s,      u"2"_s,           u"10.0"_s};
    for (qsizetype left = 0; left < ascending.size(); ++left) {
        for (qsizetype right = 0; right < ascending.size(); ++right) {
            EXPECT_EQ(version(ascending[left]) < version(ascending[right]), left < right)
                << ascending[left].toStdString() << " and " << ascending[right].toStdString();
            EXPECT_EQ(version(ascending[left]) == version(ascending[right]), left == right);
        }
    }
}

TEST(VersionTest, ignoresTrailingZerosBuildsCaseAndBlanks) {
    EXPECT_EQ(version(u"1.4"_s), version(u"1.4.0.0"_s));
    EXPECT_EQ(version(u"1.4.2+debian1"_s), version(u"1.4.2+7.beta"_s));
    EXPECT_EQ(version(u"1.4-RC1"_s), version(u" 1.4-rc01\n"_s));
}

TEST(VersionTest, knowsPreReleases) {
    EXPECT_TRUE(version(u"1.4-rc1"_s).isPreRelease());
    EXPECT_TRUE(version(u"1.4b2"_s).isPreRelease());
    EXPECT_FALSE(version(u"1.4"_s).isPreRelease());
    EXPECT_FALSE(version(u"1.4+rc1"_s).isPreRelease());
}

TEST(VersionTest, refusesWhatIsNoVersion) {
    for (const auto& text : {u""_s, u" "_s, u"x"_s, u"v1.0"_s, u".1"_s, u"-1"_s, u"1.0-"_s, u"1.0 beta"_s,
                             u"1.0/2"_s, u"1.0-é"_s, u"1.0-\u0000"_s, u"+1"_s, QString(65, u'1')}) {
        EXPECT_FALSE(Version::parse(text)) << text.toStdString();
    }
}

TEST(VersionTest, ordersNumbersThatNoIntegerHolds) {
    EXPECT_LT(version(u"1.0-rc99999999999999999999998"_s), version(u"1.0-rc99999999999999999999999"_s));
    EXPECT_LT(version(u"1.0-rc9"_s), version(u"1.0-rc99999999999999999999999"_s));
}

} // namespace
} // namespace orvantile::platform::desktop
