#include "unit/updates/UpdaterStage.h"

#include "unit/updates/Waiting.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTest>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

UpdaterStage::UpdaterStage() {
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

UpdaterStage::~UpdaterStage() {
    controller.reset();
    // The threads, the window and the connections go on later turns.
    EXPECT_TRUE(turnUntil(
        [this] { return server.openConnections() == 0 && window() == nullptr && !isThreadRunning(); }));
}

bool UpdaterStage::isThreadRunning() {
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

void UpdaterStage::configure(const QByteArray& feed) {
    QFile file(environment.configurationFile);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Updates]\nFeed=" + feed + "\nPublicKey=" + key.publicText() + "\n");
}

void UpdaterStage::serveFeed(const FeedItem& item) {
    server.answer(u"/appcast.xml"_s, {.body = feedText(itemText(item))});
}

FeedItem UpdaterStage::release() {
    return {.version = "2.0",
            .url = server.url(u"/orvantile_2.0_amd64.deb"_s).toEncoded(),
            .length = QByteArray::number(package.size()),
            .signature = key.sign(package).toBase64()};
}

void UpdaterStage::serveRelease() {
    serveFeed(release());
    server.answer(u"/orvantile_2.0_amd64.deb"_s, {.body = package});
}

void UpdaterStage::check() {
    if (!controller) {
        controller = platform::desktop::LinuxUpdater(environment).createController(true);
    }
    controller->checkForUpdates();
}

QWidget* UpdaterStage::window() {
    QWidget* found = nullptr;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == u"updateWindow" && widget->isVisible()) {
            EXPECT_EQ(found, nullptr) << "two windows";
            found = widget;
        }
    }
    return found;
}

QString UpdaterStage::label(const QString& name) {
    auto* const shown = window();
    return shown == nullptr ? QString() : shown->findChild<QLabel*>(name)->text();
}

QPushButton* UpdaterStage::button(const QString& name) {
    auto* const shown = window();
    for (auto* const found : shown == nullptr ? QList<QPushButton*>() : shown->findChildren<QPushButton*>()) {
        if (found->text() == name && found->isVisible()) {
            return found;
        }
    }
    return nullptr;
}

void UpdaterStage::click(const QString& name) {
    auto* const found = button(name);
    ASSERT_NE(found, nullptr) << name.toStdString();
    QTest::mouseClick(found, Qt::LeftButton);
}

bool UpdaterStage::awaitTitle(const QString& wanted) {
    return turnUntil([&] { return title() == wanted; });
}

} // namespace orvantile::test
