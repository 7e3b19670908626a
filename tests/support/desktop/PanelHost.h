#pragma once

#include "support/desktop/PrivateSession.h"

#include <QString>
#include <memory>

namespace orvantile::test {

/// A panel program that shows status items, and nothing else in this configuration.
enum class PanelHost {
    xfce,  ///< items on the session bus, and the classic tray
    lxqt,  ///< items on the session bus
    tint2, ///< the classic tray
};

[[nodiscard]] QString nameOf(PanelHost host);

/// Writes the panel's configuration and starts it.
[[nodiscard]] std::unique_ptr<ChildProcess> startPanel(PrivateSession& session, PanelHost host);

} // namespace orvantile::test
