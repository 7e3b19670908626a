#include "unit/updates/FeedText.h"
#include "unit/updates/UpdaterStage.h"
#include "unit/updates/Waiting.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <algorithm>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using test::turnUntil;
using Ending = test::Answer::Ending;

/// From the command to what its answer says.
class UpdateCheckTest : public test::UpdaterStage {
protected:
    void expectFailure(const QString& reason) {
        check();
        EXPECT_TRUE(awaitTitle(u"The check for updates failed"_s)) << title().toStdString();
        EXPECT_TRUE(text().contains(reason)) << text().toStdString();
    }
};

TEST_F(UpdateCheckTest, asksNobodyAndShowsNothingBeforeTheFirstCheck) {
    controller = LinuxUpdater(environment).createController(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(UpdateCheckTest, ignoresChecksUnlessStarted) {
    controller = LinuxUpdater(environment).createController(false);
    check();
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdateCheckTest, saysThatUpdatesComeWithTheSystemWhenNoFeedIsPackaged) {
    QFile::remove(environment.configurationFile);
    check();
    EXPECT_EQ(title(), u"Updates come with your system"_s);
    EXPECT_TRUE(server.requests().isEmpty());
    click(u"OK"_s);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdateCheckTest, refusesAPackagedFeedThatIsNotEncrypted) {
    configure("http://127.0.0.1/appcast.xml");
    check();
    EXPECT_EQ(title(), u"Updates cannot be checked"_s);
    EXPECT_EQ(button(u"Try Again"_s), nullptr);
}

TEST_F(UpdateCheckTest, showsTheCheckAtOnceAndThenThatNothingIsNewer) {
    serveFeed({.version = "1.5"});
    check();
    EXPECT_EQ(title(), u"Checking for updates…"_s);
    EXPECT_EQ(window()->findChild<QProgressBar*>()->maximum(), 0);
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s)) << title().toStdString();
    EXPECT_EQ(text(), u"Version 1.5 is the newest one."_s);
    click(u"OK"_s);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdateCheckTest, takesAnOlderFeedAsUpToDate) {
    serveFeed({.version = "1.4"});
    check();
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s)) << title().toStdString();
}

TEST_F(UpdateCheckTest, tellsOfAVersionThatNeedsANewerSystem) {
    serveFeed({.version = "2.0", .minimumSystem = "13"});
    check();
    EXPECT_TRUE(awaitTitle(u"A newer version needs a newer system"_s)) << title().toStdString();
    EXPECT_TRUE(text().contains(u"release 13"_s)) << text().toStdString();
}

TEST_F(UpdateCheckTest, opensTheNotesPageOnRequest) {
    auto item = release();
    item.notesPage = "https://example.org/notes";
    serveFeed(item);
    check();
    ASSERT_TRUE(awaitTitle(u"A new version of Orvantile is available"_s));
    click(u"Read More…"_s);
    EXPECT_EQ(opened, QList<QUrl>{QUrl(u"https://example.org/notes"_s)});
}

TEST_F(UpdateCheckTest, reportsFeedsThatAreMissingUnreadableOrBombs) {
    expectFailure(u"did not have what was asked for"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = "oops", .status = "500 Internal Server Error"});
    expectFailure(u"did not have what was asked for"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = "<rss version='2.0'><channel>"});
    expectFailure(u"could not be understood"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = "<!DOCTYPE rss [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;&a;'>]>" +
                                              test::feedText("&b;")});
    expectFailure(u"could not be understood"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = QByteArray(1000, ' '), .ending = Ending::endless});
    expectFailure(u"more than an update can be"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = test::feedText({}), .ending = Ending::cut});
    expectFailure(u"connection was lost"_s);
}

TEST_F(UpdateCheckTest, reportsServersThatAreGoneSlowOrNotGenuine) {
    const auto patient = environment.policy.feed;
    environment.policy.feed = {100'000, 5s, 200ms, 100};
    server.answer(u"/appcast.xml"_s, {.body = test::feedText({}), .ending = Ending::trickle});
    expectFailure(u"took too long"_s);
    controller.reset();
    environment.policy.feed = patient;
    environment.policy.authorities = {test::TestCertificate().certificate};
    expectFailure(u"No secure connection"_s);
    controller.reset();
    server.close();
    expectFailure(u"could not be reached"_s);
}

TEST_F(UpdateCheckTest, checksAgainAfterAFailure) {
    expectFailure(u"did not have what was asked for"_s);
    serveFeed({.version = "1.5"});
    click(u"Try Again"_s);
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s));
    check();
    EXPECT_EQ(title(), u"Checking for updates…"_s) << "a result gives way to another check";
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s));
    EXPECT_EQ(server.requests().size(), 3);
}

TEST_F(UpdateCheckTest, runsOneCheckAtATime) {
    server.answer(u"/appcast.xml"_s, {.body = test::feedText({}), .ending = Ending::silence});
    check();
    auto* const first = window();
    ASSERT_TRUE(turnUntil([this] { return server.requests().size() == 1; }));
    check();
    check();
    EXPECT_EQ(window(), first);
    EXPECT_EQ(title(), u"Checking for updates…"_s);
    EXPECT_EQ(server.requests().size(), 1);
    click(u"Cancel"_s);
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(turnUntil([this] { return server.openConnections() == 0; }));

    serveRelease();
    check();
    ASSERT_TRUE(awaitTitle(u"A new version of Orvantile is available"_s));
    check();
    EXPECT_EQ(title(), u"A new version of Orvantile is available"_s) << "an offer waits for its answer";
    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(UpdateCheckTest, cancelsWhenItsWindowIsClosedOrEscapeIsPressed) {
    server.answer(u"/appcast.xml"_s, {.body = test::feedText({}), .ending = Ending::silence});
    for (const bool byKey : {false, true}) {
        const auto before = server.requests().size();
        check();
        ASSERT_TRUE(turnUntil([&] { return server.requests().size() == before + 1; }));
        if (byKey) {
            QTest::keyClick(window(), Qt::Key_Escape);
        } else {
            window()->close();
        }
        EXPECT_EQ(window(), nullptr);
        EXPECT_TRUE(turnUntil([this] { return server.openConnections() == 0; }));
    }
}

TEST_F(UpdateCheckTest, judgesLaboriousFeedsOutsideTheMainThread) {
    auto item = release();
    // Takes the toolkit's parser most of a second.
    item.description = QByteArray("<ul><li>").repeated(4000);
    serveFeed(item);
    check();
    QElapsedTimer whole;
    QElapsedTimer sinceTurn;
    qint64 longest = 0;
    QTimer turn;
    whole.start();
    sinceTurn.start();
    QObject::connect(&turn, &QTimer::timeout, &turn,
                     [&] { longest = std::max(longest, sinceTurn.restart()); });
    turn.start(0);
    ASSERT_TRUE(awaitTitle(u"A new version of Orvantile is available"_s));
    EXPECT_LT(longest, whole.elapsed() / 2);
}

} // namespace
} // namespace orvantile::platform::desktop
