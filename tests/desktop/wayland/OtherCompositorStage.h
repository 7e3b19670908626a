#pragma once

#include "desktop/preferences/PreferencesControls.h"
#include "support/wayland/OtherWaylandSession.h"

#include <memory>

namespace orvantile::test {

/// The program on a compositor other than sway, with a screen reader that works its preferences.
class OtherCompositorStage : public PreferencesControls {
public:
    /// `settings`: lines of the program's settings file.
    OtherCompositorStage(OtherWaylandSession::Compositor compositor, const QByteArray& settings);

    [[nodiscard]] const AccessibleClient& reader() const override { return client; }

    [[nodiscard]] OtherWaylandSession& session() { return desktop; }

    void startOrvantile();

    [[nodiscard]] ChildProcess& orvantile() { return *product; }

    /// What the program has to complain about.
    [[nodiscard]] std::string complaints() const { return product->standardError().toStdString(); }

    /// Waits until the preferences are on the screen.
    [[nodiscard]] bool awaitPreferences() const;

    [[nodiscard]] bool awaitPreferencesClosed() const;

    /// Has the preferences show the HUD.
    [[nodiscard]] bool pressTestButton();

private:
    OtherWaylandSession desktop;
    AccessibleClient client;
    std::unique_ptr<ChildProcess> product;
};

} // namespace orvantile::test
