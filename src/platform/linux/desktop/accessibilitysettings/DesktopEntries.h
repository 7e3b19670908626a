#pragma once

#include "platform/linux/desktop/accessibilitysettings/DesktopEntry.h"

#include <QProcessEnvironment>
#include <optional>

namespace orvantile::platform::desktop {

struct FoundEntry {
    QString path;
    DesktopEntry entry;
};

/// The entry of that file name in the data folders that the environment names, the user's own first: the
/// first one counts, even when it is there to hide the others. Absent when it is hidden or what it starts is
/// not installed.
[[nodiscard]] std::optional<FoundEntry> findEntry(const QString& fileName,
                                                  const QProcessEnvironment& environment);

} // namespace orvantile::platform::desktop
