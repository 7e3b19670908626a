#include "platform/linux/desktop/updates/LinuxUpdater.h"

#include "unit/updates/FeedText.h"
#include "unit/updates/SigningKey.h"
#include "unit/updates/UpdateServer.h"
#include "unit/updates/Waiting.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using test::Answer;
using test::turnUntil;
using Ending = Answer::Ending;

/// The whole updater with its window against a server on this machine.
class UpdaterTest : public ::testing::Test {
protected:
    UpdaterTest() {
        environment.configurationFile = folder.filePath(u"updates.conf"_s);
        environment.version = u"1.5"_s;
        environment.systemRelease = u"12"_s;
        environment.downloadFolder = folder.filePath(u"Downloads"_s);
        environment.open = [this](const QUrl& url) {
            opened.append(url);
            return opens;
        };
        environment.policy.authorities = {certificate.certificate};
        configure(server.url(u"/appcast.xml"_s).toEncoded());
    }

    ~UpdaterTest() override {
        controller.reset();
        // The threads, the window and the connections go on later turns.
        EXPECT_TRUE(turnUntil(
            [this] { return server.openConnections() == 0 && window() == nullptr && !isThreadRunning(); }));
    }

    /// Whether the updater's thread, or one that the toolkit made for it, still runs.
    [[nodiscard]] static bool isThreadRunning() {
        const QDir threads(u"/proc/self/task"_s);
        for (const auto& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile name(threads.filePath(thread + u"/comm"_s));
            if (name.open(QIODevice::ReadOnly)) {
                const auto text = name.readAll().trimmed();
                if (text == "updates" || text.startsWith("QNetworkAccess")) {
                    return true;
                }
            }
        }
        return false;
    }

    void configure(const QByteArray& feed) {
        QFile file(environment.configurationFile);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Updates]\nFeed=" + feed + "\nPublicKey=" + key.publicText() + "\n");
    }

    void serveFeed(const test::FeedItem& item) {
        server.answer(u"/appcast.xml"_s, {.body = test::feedText(test::itemText(item))});
    }

    /// A release 2.0 whose package the server has.
    [[nodiscard]] test::FeedItem release() {
        return {.version = "2.0",
                .url = server.url(u"/orvantile_2.0_amd64.deb"_s).toEncoded(),
                .length = QByteArray::number(package.size()),
                .signature = key.sign(package).toBase64()};
    }

    void serveRelease() {
        serveFeed(release());
        server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package});
    }

    void check() {
        if (!controller) {
            controller = LinuxUpdater(environment).createController(true);
        }
        controller->checkForUpdates();
    }

    [[nodiscard]] static QWidget* window() {
        QWidget* found = nullptr;
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == u"updateWindow" && widget->isVisible()) {
                EXPECT_EQ(found, nullptr) << "two windows";
                found = widget;
            }
        }
        return found;
    }

    [[nodiscard]] static QString label(const QString& name) {
        auto* const shown = window();
        return shown == nullptr ? QString() : shown->findChild<QLabel*>(name)->text();
    }

    [[nodiscard]] static QString title() { return label(u"title"_s); }

    [[nodiscard]] static QString text() { return label(u"text"_s); }

    [[nodiscard]] static QPushButton* button(const QString& name) {
        auto* const shown = window();
        for (auto* const found :
             shown == nullptr ? QList<QPushButton*>() : shown->findChildren<QPushButton*>()) {
            if (found->text() == name && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }

    static void click(const QString& name) {
        auto* const found = button(name);
        ASSERT_NE(found, nullptr) << name.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
    }

    [[nodiscard]] static bool awaitTitle(const QString& wanted) {
        return turnUntil([&] { return title() == wanted; });
    }

    void startDownload() {
        check();
        ASSERT_TRUE(awaitTitle(u"A new version of Orvantile is available"_s)) << text().toStdString();
        click(u"Download and Install"_s);
    }

    void expectDownloadFailure(const QString& reason) {
        startDownload();
        EXPECT_TRUE(awaitTitle(u"The update could not be downloaded"_s)) << title().toStdString();
        EXPECT_TRUE(text().contains(reason)) << text().toStdString();
        EXPECT_TRUE(downloads().isEmpty());
        EXPECT_TRUE(opened.isEmpty());
    }

    void expectCheckFailure(const QString& reason) {
        check();
        EXPECT_TRUE(awaitTitle(u"The check for updates failed"_s)) << title().toStdString();
        EXPECT_TRUE(text().contains(reason)) << text().toStdString();
    }

    [[nodiscard]] QStringList downloads() const {
        return QDir(environment.downloadFolder)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    const test::TestCertificate& certificate = test::TestCertificate::shared();
    QTemporaryDir folder;
    test::SigningKey key;
    test::UpdateServer server{certificate};
    QByteArray package = QByteArray("package ").repeated(50'000);
    UpdaterEnvironment environment;
    QList<QUrl> opened;
    bool opens = true;
    std::unique_ptr<UpdaterController> controller;
};

TEST_F(UpdaterTest, asksNobodyAndShowsNothingBeforeTheFirstCheck) {
    controller = LinuxUpdater(environment).createController(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(UpdaterTest, ignoresChecksUnlessStarted) {
    controller = LinuxUpdater(environment).createController(false);
    check();
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdaterTest, saysThatUpdatesComeWithTheSystemWhenNoFeedIsPackaged) {
    QFile::remove(environment.configurationFile);
    check();
    EXPECT_EQ(title(), u"Updates come with your system"_s);
    EXPECT_TRUE(server.requests().isEmpty());
    click(u"OK"_s);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdaterTest, refusesAPackagedFeedThatIsNotEncrypted) {
    configure("http://127.0.0.1/appcast.xml");
    check();
    EXPECT_EQ(title(), u"Updates cannot be checked"_s);
    EXPECT_EQ(button(u"Try Again"_s), nullptr);
}

TEST_F(UpdaterTest, showsTheCheckAtOnceAndThenThatNothingIsNewer) {
    serveFeed({.version = "1.5"});
    check();
    EXPECT_EQ(title(), u"Checking for updates…"_s);
    EXPECT_EQ(window()->findChild<QProgressBar*>()->maximum(), 0);
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s)) << title().toStdString();
    EXPECT_EQ(text(), u"Version 1.5 is the newest one."_s);
    click(u"OK"_s);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdaterTest, takesAnOlderFeedAsUpToDate) {
    serveFeed({.version = "1.4"});
    check();
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s)) << title().toStdString();
}

TEST_F(UpdaterTest, tellsOfAVersionThatNeedsANewerSystem) {
    serveFeed({.version = "2.0", .minimumSystem = "13"});
    check();
    EXPECT_TRUE(awaitTitle(u"A newer version needs a newer system"_s)) << title().toStdString();
    EXPECT_TRUE(text().contains(u"release 13"_s)) << text().toStdString();
}

TEST_F(UpdaterTest, downloadsASignedPackageAndLeavesItsInstallationToTheDesktop) {
    serveRelease();
    check();
    ASSERT_TRUE(awaitTitle(u"A new version of Orvantile is available"_s)) << text().toStdString();
    EXPECT_TRUE(text().contains(u"Orvantile 2.0"_s));
    EXPECT_TRUE(text().contains(u"1.5"_s));
    EXPECT_EQ(window()->findChild<QTextEdit*>()->toPlainText(), u"New\nOne"_s);
    EXPECT_TRUE(downloads().isEmpty());
    click(u"Download and Install"_s);
    ASSERT_TRUE(awaitTitle(u"Orvantile 2.0 has been downloaded"_s)) << text().toStdString();
    EXPECT_EQ(downloads(), QStringList{u"orvantile_2.0_amd64.deb"_s});
    const QString path = environment.downloadFolder + u"/orvantile_2.0_amd64.deb"_s;
    EXPECT_EQ(opened, QList<QUrl>{QUrl::fromLocalFile(path)});
    click(u"Show in Folder"_s);
    EXPECT_EQ(opened.last(), QUrl::fromLocalFile(environment.downloadFolder));
    click(u"Done"_s);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdaterTest, saysWhereThePackageIsWhenNothingOpensIt) {
    opens = false;
    serveRelease();
    startDownload();
    ASSERT_TRUE(awaitTitle(u"Orvantile 2.0 has been downloaded"_s));
    EXPECT_TRUE(text().contains(u"Open it there to install it."_s)) << text().toStdString();
}

TEST_F(UpdaterTest, neverOpensWhatTheDesktopCouldRun) {
    for (const auto& name : {u"/update.AppImage"_s, u"/update.sh"_s, u"/update.desktop"_s, u"/update"_s}) {
        auto item = release();
        item.url = server.url(name).toEncoded();
        serveFeed(item);
        server.answer(name, {.body = package});
        startDownload();
        ASSERT_TRUE(awaitTitle(u"Orvantile 2.0 has been downloaded"_s));
        EXPECT_TRUE(opened.isEmpty()) << name.toStdString();
        EXPECT_FALSE(QFile::permissions(environment.downloadFolder + name) & QFile::ExeOwner);
        click(u"Done"_s);
    }
}

TEST_F(UpdaterTest, opensTheNotesPageOnRequest) {
    auto item = release();
    item.notesPage = "https://example.org/notes";
    serveFeed(item);
    check();
    ASSERT_TRUE(awaitTitle(u"A new version of Orvantile is available"_s));
    click(u"Read More…"_s);
    EXPECT_EQ(opened, QList<QUrl>{QUrl(u"https://example.org/notes"_s)});
}

TEST_F(UpdaterTest, discardsAPackageOfAnotherLength) {
    serveRelease();
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package.chopped(1)});
    expectDownloadFailure(u"not as long as announced"_s);
    click(u"Close"_s);
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package + 'x', .announcesLength = false});
    expectDownloadFailure(u"not as long as announced"_s);
}

TEST_F(UpdaterTest, discardsAPackageThatItsMakerHasNotSigned) {
    serveRelease();
    auto forged = package;
    forged[1000] = '!';
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = forged});
    expectDownloadFailure(u"does not carry the signature"_s);
}

TEST_F(UpdaterTest, discardsAPackageSignedByAnother) {
    auto item = release();
    item.signature = test::SigningKey().sign(package).toBase64();
    serveFeed(item);
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package});
    expectDownloadFailure(u"does not carry the signature"_s);
}

TEST_F(UpdaterTest, survivesPackagesThatAreCutEndlessOrMissing) {
    serveRelease();
    const auto name = u"/orvantile_2.0_amd64.deb"_s;
    server.answer(name, {.body = package, .ending = Ending::cut});
    expectDownloadFailure(u"connection was lost"_s);
    click(u"Close"_s);
    server.answer(name, {.body = package, .ending = Ending::endless});
    expectDownloadFailure(u"not as long as announced"_s);
    click(u"Close"_s);
    server.answer(name, {.body = "gone", .status = "404 Not Found"});
    expectDownloadFailure(u"did not have what was asked for"_s);
    click(u"Close"_s);
    server.answer(name, {.status = "302 Found", .fields = "Location: http://127.0.0.1/x\r\n"});
    expectDownloadFailure(u"not secure"_s);
}

TEST_F(UpdaterTest, triesADownloadAgain) {
    serveRelease();
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package, .ending = Ending::cut});
    expectDownloadFailure(u"connection was lost"_s);
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package});
    click(u"Try Again"_s);
    EXPECT_TRUE(awaitTitle(u"Orvantile 2.0 has been downloaded"_s)) << text().toStdString();
    EXPECT_EQ(downloads().size(), 1);
}

TEST_F(UpdaterTest, leavesNothingOfACancelledDownload) {
    serveRelease();
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package, .ending = Ending::silence});
    startDownload();
    ASSERT_EQ(title(), u"Downloading Orvantile 2.0…"_s);
    ASSERT_TRUE(turnUntil([this] { return server.requests().size() == 2; }));
    click(u"Cancel"_s);
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(turnUntil([this] { return server.openConnections() == 0; }));
    EXPECT_TRUE(turnUntil([this] { return downloads().isEmpty(); }));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(UpdaterTest, reportsAFolderThatTakesNoDownload) {
    serveRelease();
    environment.downloadFolder = u"/proc/orvantile"_s;
    startDownload();
    EXPECT_TRUE(awaitTitle(u"The update could not be downloaded"_s));
    EXPECT_TRUE(text().contains(u"could not be saved"_s)) << text().toStdString();
}

TEST_F(UpdaterTest, reportsFeedsThatAreMissingUnreadableOrBombs) {
    expectCheckFailure(u"did not have what was asked for"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = "oops", .status = "500 Internal Server Error"});
    expectCheckFailure(u"did not have what was asked for"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = "<rss version='2.0'><channel>"});
    expectCheckFailure(u"could not be understood"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = "<!DOCTYPE rss [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;&a;'>]>" +
                                              test::feedText("&b;")});
    expectCheckFailure(u"could not be understood"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = QByteArray(1000, ' '), .ending = Ending::endless});
    expectCheckFailure(u"more than an update can be"_s);
    click(u"Close"_s);
    server.answer(u"/appcast.xml"_s, {.body = test::feedText({}), .ending = Ending::cut});
    expectCheckFailure(u"connection was lost"_s);
}

TEST_F(UpdaterTest, reportsServersThatAreGoneSlowOrNotGenuine) {
    environment.policy.feed = {100'000, 5s, 200ms, 100};
    server.answer(u"/appcast.xml"_s, {.body = test::feedText({}), .ending = Ending::trickle});
    expectCheckFailure(u"took too long"_s);
    controller.reset();
    environment.policy.authorities = {test::TestCertificate().certificate};
    expectCheckFailure(u"No secure connection"_s);
    controller.reset();
    server.close();
    expectCheckFailure(u"could not be reached"_s);
}

TEST_F(UpdaterTest, checksAgainAfterAFailure) {
    expectCheckFailure(u"did not have what was asked for"_s);
    serveFeed({.version = "1.5"});
    click(u"Try Again"_s);
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s));
    check();
    EXPECT_EQ(title(), u"Checking for updates…"_s) << "a result gives way to another check";
    EXPECT_TRUE(awaitTitle(u"Orvantile is up to date"_s));
    EXPECT_EQ(server.requests().size(), 3);
}

TEST_F(UpdaterTest, runsOneCheckAtATime) {
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

TEST_F(UpdaterTest, cancelsWhenItsWindowIsClosedOrEscapeIsPressed) {
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

TEST_F(UpdaterTest, judgesLaboriousFeedsOutsideTheMainThread) {
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
