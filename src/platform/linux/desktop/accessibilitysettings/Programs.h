#pragma once

#include "platform/linux/desktop/accessibilitysettings/Launch.h"

#include <QStringList>
#include <optional>

namespace orvantile::platform::desktop {

/// Where the environment's PATH has the program; a path is taken as it is. Absent when it cannot be run.
[[nodiscard]] std::optional<QString> findProgram(const QString& program,
                                                 const QProcessEnvironment& environment);

/// Starts a program that outlives this one and is nobody's child; `directory` may be empty. No shell is
/// involved. False when there is no such program or it cannot be started. Waits until it runs.
[[nodiscard]] bool startProgram(const QStringList& command, const QString& directory, const Launch& launch);

} // namespace orvantile::platform::desktop
