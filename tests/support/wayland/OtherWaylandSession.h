#pragma once

#include "support/desktop/PrivateEnvironment.h"

#include <memory>

namespace orvantile::test {

/// A Wayland desktop of its own for one test on a compositor other than sway, without hardware, and with an X
/// server for older programs. Everything ends with this object. Throws std::runtime_error with the reason
/// when something is missing or does not get ready.
class OtherWaylandSession final : public PrivateEnvironment {
public:
    enum class Compositor {
        weston,          ///< has no layer surfaces
        kwin,            ///< has them
        kwinWithEffects, ///< draws with OpenGL, as its effects and pictures of the screen need; starts slowly
    };

    explicit OtherWaylandSession(Compositor kind);
    OtherWaylandSession(const OtherWaylandSession&) = delete;
    OtherWaylandSession& operator=(const OtherWaylandSession&) = delete;
    ~OtherWaylandSession() override;

    /// The path of the compositor's socket.
    [[nodiscard]] QString compositorSocket() const;

    /// Kills the compositor under everybody, and its X server with it.
    void stopCompositor();

    /// What the compositor has to say.
    [[nodiscard]] QByteArray compositorLog() const { return compositor->standardError(); }

private:
    void startWeston();
    void startKWin(bool effects);
    void awaitServer(const QByteArray& before);

    std::unique_ptr<ChildProcess> compositor;
};

} // namespace orvantile::test
