#pragma once

#include <QList>
#include <QSslCertificate>
#include <QUrl>
#include <chrono>

namespace orvantile::platform::desktop {

/// Bounds of one transfer.
struct TransferLimits {
    qint64 bytes;                     ///< the largest body
    std::chrono::milliseconds total;  ///< the longest time from request to end
    std::chrono::milliseconds window; ///< how often progress is looked at …
    qint64 bytesPerWindow;            ///< … and the least that must have arrived since
};

/// What the updater accepts from the network. The program always uses these defaults: nothing it reads
/// changes them.
struct UpdatePolicy {
    TransferLimits feed{1'048'576, std::chrono::seconds(60), std::chrono::seconds(10), 1};
    TransferLimits package{268'435'456, std::chrono::hours(2), std::chrono::seconds(30), 32'768};

    /// Authorities trusted instead of the system's. Empty: the system's.
    QList<QSslCertificate> authorities{};

    /// Whether this machine's own addresses may be used without encryption.
    bool allowsPlainLoopback = false;

    /// Whether `url` may be fetched: encrypted, with a host and without a user's name.
    [[nodiscard]] bool permits(const QUrl& url) const;
};

} // namespace orvantile::platform::desktop
