#pragma once

#include "desktop/applications/Stage.h"

namespace orvantile::test {

/// Folder of plugins that the toolkit searches for the helper, for the major version of Qt.
[[nodiscard]] QString helperFolder(int version);

/// The program with menus, built with that major version of Qt. Its fence changes nothing.
[[nodiscard]] Application menuApplication(int version);

/// Where the helper sends to in the session.
[[nodiscard]] QString helperSocket(const PrivateSession& session);

/// Has the session load the helper, as the desktop does once it is switched on: both versions, each program
/// takes its own.
void loadHelper(PrivateSession& session, const QStringList& folders = {helperFolder(5), helperFolder(6)});

} // namespace orvantile::test
