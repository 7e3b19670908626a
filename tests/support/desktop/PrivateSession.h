#pragma once

#include "support/desktop/PrivateEnvironment.h"
#include "support/desktop/XConnection.h"

#include <QSize>

namespace orvantile::test {

enum class WindowManager {
    none,
    openbox,
    xfwm4,
    xfwm4Compositing, ///< is the compositor as well, once that is started
    kwin
};

/// What a private session is made of.
struct SessionOptions {
    QSize screen{1280, 800}; ///< pixels; of the first output, where there are several
    bool outputs = false;    ///< a server whose outputs DUMMY0 … DUMMY15 come and go; the first is on
    WindowManager windowManager = WindowManager::openbox;
    bool compositor = false; ///< the window manager's own where chosen, else picom
    bool sessionBus = true;
    bool accessibility = true; ///< the accessibility bus, switched on; needs the session bus
    QString keyboardLayout = QStringLiteral("us"); ///< as setxkbmap names it; several with commas
    QString keyboardOptions{};
    QString locale = QStringLiteral("C.UTF-8"); ///< generated privately when it is another
    QStringList serverArguments{};              ///< further arguments of the X server
};

/// An X desktop of its own for one test: X server, window manager, buses, an empty home. Everything ends with
/// this object, what was started by its members as well. Constructor and members throw std::runtime_error
/// with the reason when something is missing or does not get ready.
class PrivateSession final : public PrivateEnvironment {
public:
    explicit PrivateSession(SessionOptions options = {});
    PrivateSession(const PrivateSession&) = delete;
    PrivateSession& operator=(const PrivateSession&) = delete;
    ~PrivateSession() override;

    [[nodiscard]] const QString& display() const { return displayName; }

    /// The processes of the session's parts, to be stopped or killed; 0 for one that does not run.
    [[nodiscard]] pid_t serverProcess() const { return processOf(server); }

    [[nodiscard]] pid_t windowManagerProcess() const { return processOf(windowManager); }

    [[nodiscard]] pid_t compositorProcess() const { return processOf(compositor); }

    void startWindowManager(WindowManager which);
    void stopWindowManager();

    void startCompositor();
    void stopCompositor();

    void setKeyboardLayout(const QString& layout, const QString& options = {}) const;

    /// Kills the X server under everybody.
    void stopServer();

private:
    [[nodiscard]] static pid_t processOf(const std::unique_ptr<ChildProcess>& part) {
        return part ? part->processIdentifier() : 0;
    }

    void startServer(const SessionOptions& options);
    [[nodiscard]] std::unique_ptr<ChildProcess> startServerWithOutputs(const SessionOptions& options) const;
    void setOwnCompositing(bool enabled) const;

    QString displayName;
    std::unique_ptr<ChildProcess> server;
    std::unique_ptr<ChildProcess> windowManager;
    std::unique_ptr<ChildProcess> compositor;
    bool compositesItself = false; ///< the window manager
};

} // namespace orvantile::test
