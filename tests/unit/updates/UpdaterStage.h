#pragma once

#include "platform/linux/desktop/updates/LinuxUpdater.h"

#include "unit/updates/FeedText.h"
#include "unit/updates/SigningKey.h"
#include "unit/updates/UpdateServer.h"

#include <QPushButton>
#include <QTemporaryDir>
#include <QWidget>
#include <gmock/gmock.h>
#include <memory>

namespace orvantile::test {

/// The whole updater with its window against a server on this machine.
class UpdaterStage : public ::testing::Test {
public:
    UpdaterStage(const UpdaterStage&) = delete;
    UpdaterStage& operator=(const UpdaterStage&) = delete;

protected:
    UpdaterStage();
    ~UpdaterStage() override;

    /// Packages this feed with the program.
    void configure(const QByteArray& feed);

    void serveFeed(const FeedItem& item);

    /// A release 2.0 whose package `serveRelease` serves.
    [[nodiscard]] FeedItem release();
    void serveRelease();

    void check();

    /// The updater's window while it shows; there is never a second.
    [[nodiscard]] static QWidget* window();

    [[nodiscard]] static QString title() { return label(QStringLiteral("title")); }

    [[nodiscard]] static QString text() { return label(QStringLiteral("text")); }

    /// The button of the window that says this and shows.
    [[nodiscard]] static QPushButton* button(const QString& name);
    static void click(const QString& name);

    [[nodiscard]] static bool awaitTitle(const QString& wanted);

private:
    /// Whether the updater's thread, or one that the toolkit made for it, still runs.
    [[nodiscard]] static bool isThreadRunning();

    [[nodiscard]] static QString label(const QString& name);

    const TestCertificate& certificate = TestCertificate::shared();
    QTemporaryDir folder;

protected:
    SigningKey key;
    UpdateServer server{certificate};
    QByteArray package = QByteArray("package ").repeated(50'000);
    platform::desktop::UpdaterEnvironment environment;
    QList<QUrl> opened;
    bool opens = true; ///< whether the desktop opens what it is given
    std::unique_ptr<platform::UpdaterController> controller;
};

} // namespace orvantile::test
