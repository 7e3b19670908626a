#include "platform/linux/desktop/updates/AvailableUpdate.h"

#include "unit/updates/FeedText.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using test::FeedItem;
using test::feedText;
using test::itemText;

CheckResult choose(const QByteArray& items, const QString& current = u"1.5"_s,
                   const QString& system = u"12"_s) {
    return chooseUpdate(feedText(items), {Version::parse(current).value(), Version::parse(system)}, {});
}

QString offered(const CheckResult& result) {
    const auto* const update = std::get_if<AvailableUpdate>(&result);
    return update != nullptr ? update->version : u"none"_s;
}

bool failsWith(const CheckResult& result, UpdateFailure failure) {
    const auto* const found = std::get_if<UpdateFailure>(&result);
    return found != nullptr && *found == failure;
}

TEST(ChooseUpdateTest, offersTheNewestWhereverItStands) {
    const QByteArray items =
        itemText({.version = "1.9"}) + itemText({.version = "1.10"}) + itemText({.version = "1.2"});
    EXPECT_EQ(offered(choose(items)), u"1.10"_s);
}

TEST(ChooseUpdateTest, tellsThatNothingIsNewer) {
    for (const auto& version : {"1.5", "1.5.0", "1.4.9", "0.1", "1.5+9", "1.5-rc1", "not a version"}) {
        EXPECT_TRUE(std::holds_alternative<UpToDate>(choose(itemText({.version = version})))) << version;
    }
    EXPECT_TRUE(std::holds_alternative<UpToDate>(choose({})));
}

TEST(ChooseUpdateTest, handsOnWhatTheFeedSays) {
    const auto result = choose(itemText({.version = "205",
                                         .displayVersion = "2.0.5",
                                         .description = "<p>Better</p>",
                                         .notesPage = "https://example.org/notes",
                                         .length = "4321"}));
    const auto* const update = std::get_if<AvailableUpdate>(&result);
    ASSERT_NE(update, nullptr);
    EXPECT_EQ(update->version, u"2.0.5"_s);
    ASSERT_EQ(update->notes.size(), 1U);
    EXPECT_EQ(update->notes[0].text, u"Better"_s);
    EXPECT_EQ(update->notesPage, QUrl(u"https://example.org/notes"_s));
    EXPECT_EQ(update->package, QUrl(u"https://example.org/orvantile_2.0_amd64.deb"_s));
    EXPECT_EQ(update->length, 4321);
    EXPECT_EQ(update->signature, QByteArray(64, 's'));
}

TEST(ChooseUpdateTest, dropsPagesThatAreNotEncrypted) {
    for (const auto& page : {"http://example.org/", "file:///etc/passwd", "javascript:alert(1)"}) {
        const auto result = choose(itemText({.notesPage = page}));
        const auto* const update = std::get_if<AvailableUpdate>(&result);
        ASSERT_NE(update, nullptr);
        EXPECT_TRUE(update->notesPage.isEmpty()) << page;
    }
}

TEST(ChooseUpdateTest, offersPreReleasesOnlyToThoseWhoRunOne) {
    const QByteArray items = itemText({.version = "2.0-beta.2"}) + itemText({.version = "1.6"});
    EXPECT_EQ(offered(choose(items)), u"1.6"_s);
    EXPECT_EQ(offered(choose(items, u"2.0-beta.1"_s)), u"2.0-beta.2"_s);
}

TEST(ChooseUpdateTest, leavesOutOtherSystemsAndChannels) {
    const QByteArray items = itemText({.version = "5", .operatingSystem = "macos"}) +
                             itemText({.version = "4", .operatingSystem = "windows"}) +
                             itemText({.version = "3", .channel = "nightly"}) +
                             itemText({.version = "2", .operatingSystem = "Linux"});
    EXPECT_EQ(offered(choose(items)), u"2"_s);
}

TEST(ChooseUpdateTest, comparesTheMinimumSystem) {
    const QByteArray items =
        itemText({.version = "3", .minimumSystem = "13"}) + itemText({.version = "2", .minimumSystem = "12"});
    EXPECT_EQ(offered(choose(items, u"1"_s, u"13"_s)), u"3"_s);
    EXPECT_EQ(offered(choose(items, u"1"_s, u"12"_s)), u"2"_s);
    EXPECT_EQ(offered(choose(items, u"1"_s, u"rolling"_s)), u"3"_s) << "a system without releases";

    const auto result = choose(items, u"2"_s, u"12"_s);
    const auto* const tooOld = std::get_if<SystemTooOld>(&result);
    ASSERT_NE(tooOld, nullptr);
    EXPECT_EQ(tooOld->version, u"3"_s);
    EXPECT_EQ(tooOld->minimumSystem, u"13"_s);
}

TEST(ChooseUpdateTest, reportsAnUnusableUpdateRatherThanNone) {
    const auto unreadable = UpdateFailure::unreadable;
    EXPECT_TRUE(failsWith(choose(itemText({.hasEnclosure = false})), unreadable));
    EXPECT_TRUE(failsWith(choose(itemText({.length = "0"})), unreadable));
    EXPECT_TRUE(failsWith(choose(itemText({.length = "-5"})), unreadable));
    EXPECT_TRUE(failsWith(choose(itemText({.length = ""})), unreadable));
    EXPECT_TRUE(failsWith(choose(itemText({.signature = ""})), unreadable));
    EXPECT_TRUE(failsWith(choose(itemText({.signature = QByteArray(63, 's').toBase64()})), unreadable));
    EXPECT_TRUE(failsWith(choose(itemText({.length = "99999999999"})), UpdateFailure::tooLarge));
    for (const auto& url : {"http://example.org/a.deb", "http://127.0.0.1/a.deb", "file:///tmp/a.deb",
                            "ftp://example.org/a", "https://", "https://user@example.org/a.deb", ""}) {
        EXPECT_TRUE(failsWith(choose(itemText({.url = url})), UpdateFailure::forbiddenAddress)) << url;
    }
    EXPECT_TRUE(failsWith(chooseUpdate("<html/>", {Version::parse(u"1").value(), {}}, {}), unreadable));
}

} // namespace
} // namespace orvantile::platform::desktop
