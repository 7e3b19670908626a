#include "unit/updates/FeedText.h"
#include "unit/updates/UpdaterStage.h"
#include "unit/updates/Waiting.h"

#include <QDir>
#include <QFile>
#include <QTextEdit>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using test::turnUntil;
using Ending = test::Answer::Ending;

/// From the offer of a new version to its package.
class UpdateDownloadTest : public test::UpdaterStage {
protected:
    void startDownload() {
        check();
        ASSERT_TRUE(awaitTitle(u"A new version of Orvantile is available"_s)) << text().toStdString();
        click(u"Download and Install"_s);
    }

    void expectFailure(const QString& reason) {
        startDownload();
        EXPECT_TRUE(awaitTitle(u"The update could not be downloaded"_s)) << title().toStdString();
        EXPECT_TRUE(text().contains(reason)) << text().toStdString();
        EXPECT_TRUE(downloads().isEmpty());
        EXPECT_TRUE(opened.isEmpty());
    }

    [[nodiscard]] QStringList downloads() const {
        return QDir(environment.downloadFolder)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(UpdateDownloadTest, downloadsASignedPackageAndLeavesItsInstallationToTheDesktop) {
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

TEST_F(UpdateDownloadTest, saysWhereThePackageIsWhenNothingOpensIt) {
    opens = false;
    serveRelease();
    startDownload();
    ASSERT_TRUE(awaitTitle(u"Orvantile 2.0 has been downloaded"_s));
    EXPECT_TRUE(text().contains(u"Open it there to install it."_s)) << text().toStdString();
}

TEST_F(UpdateDownloadTest, neverOpensWhatTheDesktopCouldRun) {
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

TEST_F(UpdateDownloadTest, discardsAPackageOfAnotherLength) {
    serveRelease();
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package.chopped(1)});
    expectFailure(u"not as long as announced"_s);
    click(u"Close"_s);
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package + 'x', .announcesLength = false});
    expectFailure(u"not as long as announced"_s);
}

TEST_F(UpdateDownloadTest, discardsAPackageThatItsMakerHasNotSigned) {
    serveRelease();
    auto forged = package;
    forged[1000] = '!';
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = forged});
    expectFailure(u"does not carry the signature"_s);
}

TEST_F(UpdateDownloadTest, discardsAPackageSignedByAnother) {
    auto item = release();
    item.signature = test::SigningKey().sign(package).toBase64();
    serveFeed(item);
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package});
    expectFailure(u"does not carry the signature"_s);
}

TEST_F(UpdateDownloadTest, survivesPackagesThatAreCutEndlessOrMissing) {
    serveRelease();
    const auto name = u"/orvantile_2.0_amd64.deb"_s;
    server.answer(name, {.body = package, .ending = Ending::cut});
    expectFailure(u"connection was lost"_s);
    click(u"Close"_s);
    server.answer(name, {.body = package, .ending = Ending::endless});
    expectFailure(u"not as long as announced"_s);
    click(u"Close"_s);
    server.answer(name, {.body = "gone", .status = "404 Not Found"});
    expectFailure(u"did not have what was asked for"_s);
    click(u"Close"_s);
    server.answer(name, {.status = "302 Found", .fields = "Location: http://127.0.0.1/x\r\n"});
    expectFailure(u"not secure"_s);
}

TEST_F(UpdateDownloadTest, triesADownloadAgain) {
    serveRelease();
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package, .ending = Ending::cut});
    expectFailure(u"connection was lost"_s);
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package});
    click(u"Try Again"_s);
    EXPECT_TRUE(awaitTitle(u"Orvantile 2.0 has been downloaded"_s)) << text().toStdString();
    EXPECT_EQ(downloads().size(), 1);
}

TEST_F(UpdateDownloadTest, leavesNothingOfACancelledDownload) {
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

TEST_F(UpdateDownloadTest, reportsAFolderThatTakesNoDownload) {
    serveRelease();
    environment.downloadFolder = u"/proc/orvantile"_s;
    startDownload();
    EXPECT_TRUE(awaitTitle(u"The update could not be downloaded"_s));
    EXPECT_TRUE(text().contains(u"could not be saved"_s)) << text().toStdString();
}

} // namespace
} // namespace orvantile::platform::desktop
