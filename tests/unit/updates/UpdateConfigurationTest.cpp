#include "platform/linux/desktop/updates/UpdateConfiguration.h"

#include "platform/linux/desktop/updates/UpdatePolicy.h"
#include "unit/updates/SigningKey.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

class UpdateConfigurationTest : public ::testing::Test {
protected:
    UpdateConfiguration::Result read(const QByteArray& contents, const UpdatePolicy& policy = {}) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        file.close();
        return UpdateConfiguration::read(path, policy);
    }

    [[nodiscard]] QByteArray withFeed(const QByteArray& feed) const {
        return "[Updates]\nFeed=" + feed + "\nPublicKey=" + key.publicText() + "\n";
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"updates.conf"_s);
    test::SigningKey key;
};

TEST_F(UpdateConfigurationTest, isAbsentWithoutAFile) {
    EXPECT_TRUE(std::holds_alternative<UpdateConfiguration::Absent>(UpdateConfiguration::read(path, {})));
    EXPECT_TRUE(std::holds_alternative<UpdateConfiguration::Absent>(UpdateConfiguration::read({}, {})));
}

TEST_F(UpdateConfigurationTest, readsFeedAndKey) {
    const auto result =
        read("# where updates come from\n" + withFeed("https://example.org/a,b/appcast.xml?c=d"));
    const auto* const found = std::get_if<UpdateConfiguration>(&result);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->feed, QUrl(u"https://example.org/a,b/appcast.xml?c=d"_s));
    EXPECT_TRUE(found->key.verifies("x", key.sign("x")));
}

TEST_F(UpdateConfigurationTest, isBrokenWithoutAProperFeedOrKey) {
    for (const auto& contents : QByteArrayList{
             QByteArray(), QByteArray("garbage \xff\x00"),
             QByteArray("[Updates]\nFeed=https://example.org/\n"),
             QByteArray("[Updates]\nFeed=https://example.org/\nPublicKey=AAAA\n"), withFeed(""),
             withFeed("http://example.org/"), withFeed("http://127.0.0.1/"), withFeed("file:///etc/passwd"),
             withFeed("https://"), withFeed("https://user:pw@example.org/"), withFeed("example.org")}) {
        EXPECT_TRUE(std::holds_alternative<UpdateConfiguration::Broken>(read(contents)))
            << contents.toStdString();
    }
    EXPECT_TRUE(
        std::holds_alternative<UpdateConfiguration::Broken>(UpdateConfiguration::read(folder.path(), {})));
    EXPECT_TRUE(std::holds_alternative<UpdateConfiguration::Broken>(
        read(withFeed("https://example.org/") + QByteArray(100'000, '#'))));
}

TEST_F(UpdateConfigurationTest, permitsPlainLoopbackOnlyWhereThePolicyDoes) {
    UpdatePolicy policy;
    policy.allowsPlainLoopback = true;
    EXPECT_TRUE(std::holds_alternative<UpdateConfiguration>(read(withFeed("http://127.0.0.1:80/"), policy)));
    EXPECT_TRUE(std::holds_alternative<UpdateConfiguration>(read(withFeed("http://[::1]/"), policy)));
    EXPECT_TRUE(
        std::holds_alternative<UpdateConfiguration::Broken>(read(withFeed("http://example.org/"), policy)));
    EXPECT_TRUE(
        std::holds_alternative<UpdateConfiguration::Broken>(read(withFeed("ftp://127.0.0.1/"), policy)));
}

} // namespace
} // namespace orvantile::platform::desktop
