#pragma once

#include "platform/linux/desktop/updates/ReleaseNotes.h"
#include "platform/linux/desktop/updates/UpdateFailure.h"
#include "platform/linux/desktop/updates/UpdatePolicy.h"
#include "platform/linux/desktop/updates/Version.h"

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>
#include <variant>

namespace orvantile::platform::desktop {

/// A newer release that this system can take.
struct AvailableUpdate {
    QString version; ///< as the user sees it
    ReleaseNotes notes;
    QUrl notesPage; ///< https, or empty
    QUrl package;
    qint64 length = 0; ///< bytes
    QByteArray signature;
};

struct UpToDate {};

/// The newest release asks for a newer system and nothing else is newer than this copy.
struct SystemTooOld {
    QString version;
    QString minimumSystem;
};

using CheckResult = std::variant<AvailableUpdate, UpToDate, SystemTooOld, UpdateFailure>;

/// What the choice depends on beside the feed.
struct InstalledCopy {
    Version version;
    std::optional<Version> system; ///< the system's release, such as 12; nothing when it has none
};

/// Chooses from `feed` the newest release for this copy. Releases for other operating systems and of named
/// channels are left out; pre-releases are for those who run one. A newer release whose package is missing,
/// unsigned, of no stated length or at an address that `policy` forbids makes the feed unreadable: an
/// unusable update must not look like none. Any thread.
[[nodiscard]] CheckResult chooseUpdate(const QByteArray& feed, const InstalledCopy& copy,
                                       const UpdatePolicy& policy);

} // namespace orvantile::platform::desktop
