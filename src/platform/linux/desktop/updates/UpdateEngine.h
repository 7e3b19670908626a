#pragma once

#include "platform/linux/desktop/updates/AvailableUpdate.h"
#include "platform/linux/desktop/updates/PackageFile.h"
#include "platform/linux/desktop/updates/Transfer.h"
#include "platform/linux/desktop/updates/UpdateConfiguration.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <functional>
#include <memory>
#include <variant>

namespace orvantile::platform::desktop {

/// What an update check of this installation depends on.
struct UpdateSetup {
    UpdateConfiguration configuration;
    UpdatePolicy policy;
    InstalledCopy copy;
    QString downloadFolder;
};

/// The package's path.
using DownloadResult = std::variant<QString, UpdateFailure>;

/// Fetches and judges feeds and packages, one at a time: a new request ends the one before without a word.
/// One thread, with an event loop; it blocks on files, keys and long feeds, so not the main one.
class UpdateEngine {
public:
    explicit UpdateEngine(UpdateSetup setup_);

    void check(std::function<void(CheckResult)> done);

    /// `progress` is told the bytes that have arrived, at most about ten times a second.
    void download(AvailableUpdate update, std::function<void(qint64)> progress,
                  std::function<void(DownloadResult)> done);

private:
    [[nodiscard]] std::optional<UpdateFailure> store(const QByteArray& piece,
                                                     const std::function<void(qint64)>& progress);

    UpdateSetup setup;
    QNetworkAccessManager network;
    QByteArray feed;
    std::unique_ptr<PackageFile> package;
    qint64 stored = 0;
    QElapsedTimer sinceProgress;
    std::unique_ptr<Transfer> transfer;
};

} // namespace orvantile::platform::desktop
