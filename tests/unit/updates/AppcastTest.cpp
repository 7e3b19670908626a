#include "platform/linux/desktop/updates/Appcast.h"

#include "unit/updates/FeedText.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using test::FeedItem;
using test::feedText;
using test::itemText;

AppcastItem onlyItem(const QByteArray& feed) {
    const auto items = readAppcast(feed);
    EXPECT_TRUE(items);
    EXPECT_EQ(items ? items->size() : 0, 1U);
    return items && !items->empty() ? items->front() : AppcastItem{};
}

TEST(AppcastTest, readsEveryValueOfAnItem) {
    const auto item = onlyItem(feedText(itemText({.version = "204",
                                                  .displayVersion = "2.0.4",
                                                  .minimumSystem = "12",
                                                  .channel = "beta",
                                                  .description = "<p>A &amp; B</p>",
                                                  .notesPage = "https://example.org/notes",
                                                  .operatingSystem = "linux"})));
    EXPECT_EQ(item.version, u"204"_s);
    EXPECT_EQ(item.displayVersion, u"2.0.4"_s);
    EXPECT_EQ(item.minimumSystem, u"12"_s);
    EXPECT_EQ(item.channel, u"beta"_s);
    EXPECT_EQ(item.notes, u"<p>A &amp; B</p>"_s);
    EXPECT_EQ(item.notesFormat, NotesFormat::html);
    EXPECT_EQ(item.notesPage, QUrl(u"https://example.org/notes"_s));
    ASSERT_TRUE(item.enclosure);
    EXPECT_EQ(item.enclosure->url, QUrl(u"https://example.org/orvantile_2.0_amd64.deb"_s));
    EXPECT_EQ(item.enclosure->length, 1000);
    EXPECT_EQ(item.enclosure->signature, QByteArray(64, 's'));
    EXPECT_EQ(item.enclosure->operatingSystem, u"linux"_s);
}

TEST(AppcastTest, readsVersionsStatedAtTheEnclosureOnly) {
    const auto item = onlyItem(feedText("<item><enclosure url='https://example.org/a.deb' length='5' "
                                        "sparkle:version='7' sparkle:shortVersionString='0.7'/></item>"));
    EXPECT_EQ(item.version, u"7"_s);
    EXPECT_EQ(item.displayVersion, u"0.7"_s);
}

TEST(AppcastTest, knowsTheFormatOfNotes) {
    const auto format = [](const QByteArray& name) {
        return onlyItem(feedText("<item><sparkle:version>2</sparkle:version><description sparkle:format='" +
                                 name + "'>x</description></item>"))
            .notesFormat;
    };
    EXPECT_EQ(format("plain-text"), NotesFormat::plain);
    EXPECT_EQ(format("markdown"), NotesFormat::markdown);
    EXPECT_EQ(format("html"), NotesFormat::html);
    EXPECT_EQ(format("other"), NotesFormat::html);
}

TEST(AppcastTest, marksWhatIsNoNumberOrNoSignature) {
    const auto item = onlyItem(feedText(itemText({.length = "12k", .signature = "not base64!"})));
    ASSERT_TRUE(item.enclosure);
    EXPECT_EQ(item.enclosure->length, -1);
    EXPECT_TRUE(item.enclosure->signature.isEmpty());
}

TEST(AppcastTest, keepsTheOrderAndLeavesOutItemsWithoutVersion) {
    const auto items = readAppcast(
        feedText(itemText({.version = "1"}) + itemText({.version = ""}) + itemText({.version = "3"})));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 2U);
    EXPECT_EQ(items->at(0).version, u"1"_s);
    EXPECT_EQ(items->at(1).version, u"3"_s);
}

TEST(AppcastTest, takesNothingFromOtherNamespacesOrFromNestedElements) {
    const auto item = onlyItem(
        feedText("<item xmlns:o='urn:other'><sparkle:version>2</sparkle:version><o:version>9</o:version>"
                 "<version>8</version><sparkle:deltas><enclosure url='https://example.org/delta' length='1'/>"
                 "</sparkle:deltas></item>"));
    EXPECT_EQ(item.version, u"2"_s);
    EXPECT_FALSE(item.enclosure);
}

TEST(AppcastTest, readsAnEmptyChannel) {
    const auto items = readAppcast(feedText({}));
    ASSERT_TRUE(items);
    EXPECT_TRUE(items->empty());
}

TEST(AppcastTest, refusesWhatIsNoFeed) {
    const auto whole = feedText(itemText({}));
    const QByteArrayList feeds{QByteArray(),
                               QByteArray("hello"),
                               QByteArray("<html><body>Log in</body></html>"),
                               QByteArray("<rss version='2.0'/>"),
                               QByteArray("<rss version='0.91'><channel/></rss>"),
                               QByteArray("<feed xmlns='http://www.w3.org/2005/Atom'/>"),
                               whole.chopped(10),
                               whole.first(whole.size() / 2),
                               whole + "<more/>",
                               QByteArray(whole).replace("</item>", "</itme>"),
                               QByteArray(whole).replace("Release", "&undefined;"),
                               QByteArray(whole).replace("Release", "\xff\xfe")};
    for (const auto& feed : feeds) {
        EXPECT_FALSE(readAppcast(feed)) << feed.toStdString();
    }
}

TEST(AppcastTest, refusesDocumentTypesAndSoEveryEntityBomb) {
    const auto body = feedText(itemText({.version = "&lol9;"}));
    auto bomb = QByteArray("<!DOCTYPE rss [<!ENTITY lol0 'lollollollol'>");
    for (int level = 1; level < 10; ++level) {
        const QByteArray inner = "&lol" + QByteArray::number(level - 1) + ';';
        bomb += "<!ENTITY lol" + QByteArray::number(level) + " '" + inner.repeated(10) + "'>";
    }
    bomb += "]>";
    const auto afterDeclaration = body.indexOf('\n') + 1;
    EXPECT_FALSE(readAppcast(QByteArray(body).insert(afterDeclaration, bomb)));

    const auto harmless = feedText(itemText({}));
    ASSERT_TRUE(readAppcast(harmless));
    for (const auto& type :
         {QByteArray("<!DOCTYPE rss>"), QByteArray("<!DOCTYPE rss SYSTEM 'file:///etc/passwd'>"),
          QByteArray("<!DOCTYPE rss [<!ENTITY passwords SYSTEM 'file:///etc/passwd'>]>")}) {
        EXPECT_FALSE(readAppcast(QByteArray(harmless).insert(afterDeclaration, type)));
    }
}

TEST(AppcastTest, survivesDeepNesting) {
    constexpr int depth = 150'000;
    const QByteArray deep = QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
    EXPECT_TRUE(readAppcast(feedText(deep)));
    EXPECT_TRUE(readAppcast(feedText("<item><description>" + deep + "</description></item>")));
    EXPECT_FALSE(readAppcast(feedText(QByteArray("<a>").repeated(depth))));
}

TEST(AppcastTest, refusesTagsWithCountlessAttributes) {
    const auto crowded = [](int count) {
        QByteArray tag = "<item";
        for (int number = 0; number < count; ++number) {
            tag += " a" + QByteArray::number(number) + "='>'";
        }
        return feedText(tag + "/>");
    };
    EXPECT_TRUE(readAppcast(crowded(64)));
    EXPECT_FALSE(readAppcast(crowded(65)));
    EXPECT_FALSE(readAppcast(crowded(100'000)));
}

TEST(AppcastTest, takesQuotesOutsideOfTagsForWhatTheyAre) {
    const auto quotes = QByteArray("=\"'\"' > ").repeated(100);
    EXPECT_TRUE(
        readAppcast(feedText("<item><description><![CDATA[<p " + quotes + "]]></description></item>")));
    EXPECT_TRUE(readAppcast(feedText("<item><description>" + quotes + "</description></item>")));
    EXPECT_TRUE(readAppcast(feedText("<!-- <p " + quotes + " -->")));
    EXPECT_FALSE(readAppcast(feedText(QByteArray(1, '\0'))));
}

} // namespace
} // namespace orvantile::platform::desktop
