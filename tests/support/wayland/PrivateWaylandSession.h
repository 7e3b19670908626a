#pragma once

#include "support/desktop/CurrentSession.h"
#include "support/desktop/PrivateEnvironment.h"
#include "support/wayland/SwayControl.h"

#include <QSize>
#include <optional>

namespace orvantile::test {

class PrivateWaylandSession;

/// What a private Wayland session is made of.
struct WaylandSessionOptions {
    QSize output{1280, 800}; ///< pixels of each output
    int outputs = 1;
    bool xwayland = false; ///< an X server for older programs
    bool sessionBus = true;
    bool accessibility = true; ///< the accessibility bus, switched on; needs the session bus
    QString locale = QStringLiteral("C.UTF-8");
    const PrivateWaylandSession* host = nullptr; ///< where its outputs are windows, if anywhere
};

/// A Wayland desktop of its own for one test: sway without hardware or as a client of another, buses, an
/// empty home. Everything ends with this object. Constructor and members throw std::runtime_error with the
/// reason when something is missing or does not get ready.
class PrivateWaylandSession final : public PrivateEnvironment {
public:
    explicit PrivateWaylandSession(const WaylandSessionOptions& options = {});
    PrivateWaylandSession(const PrivateWaylandSession&) = delete;
    PrivateWaylandSession& operator=(const PrivateWaylandSession&) = delete;
    ~PrivateWaylandSession() override;

    /// What WAYLAND_DISPLAY names.
    [[nodiscard]] const QString& display() const { return displayName; }

    /// Talks to the compositor as its user would with key bindings.
    [[nodiscard]] SwayControl& sway() { return *control; }

    /// What is on an output, or on all of them, in device pixels.
    [[nodiscard]] QImage screenshot(const QString& output = {}) const;

    /// Kills the compositor under everybody.
    void stopCompositor();

private:
    void startCompositor(const WaylandSessionOptions& options);

    QString displayName;
    std::unique_ptr<ChildProcess> compositor;
    std::optional<SwayControl> control;
};

using CurrentWaylandSession = Current<PrivateWaylandSession>;

} // namespace orvantile::test
