#pragma once

#include "support/desktop/ChildProcess.h"
#include "support/desktop/XConnection.h"

#include <QProcessEnvironment>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <optional>

namespace orvantile::test {

enum class WindowManager { none, openbox, xfwm4, kwin };

/// What a private session is made of.
struct SessionOptions {
    QSize screen{1280, 800}; ///< pixels
    WindowManager windowManager = WindowManager::openbox;
    bool compositor = false; ///< picom
    bool sessionBus = true;
    bool accessibility = true; ///< the accessibility bus, switched on; needs the session bus
    QString keyboardLayout = QStringLiteral("us"); ///< as setxkbmap names it; several with commas
    QString keyboardOptions{};
    QString locale = QStringLiteral("C.UTF-8"); ///< generated privately when it is another
    QStringList serverArguments{};              ///< further arguments of the X server
};

/// A desktop of its own for one test: X server, window manager, buses, an empty home. Everything ends with
/// this object, what was started by its members as well. Constructor and members throw std::runtime_error
/// with the reason when something is missing or does not get ready.
class PrivateSession {
public:
    explicit PrivateSession(SessionOptions options = {});
    PrivateSession(const PrivateSession&) = delete;
    PrivateSession& operator=(const PrivateSession&) = delete;
    ~PrivateSession();

    [[nodiscard]] const QString& display() const { return displayName; }

    [[nodiscard]] QString home() const { return directory.filePath(QStringLiteral("home")); }

    [[nodiscard]] QString configuration() const { return home() + QStringLiteral("/.config"); }

    [[nodiscard]] QString runtimeDirectory() const { return directory.filePath(QStringLiteral("run")); }

    /// The environment of programs in this session.
    [[nodiscard]] const QProcessEnvironment& environment() const { return variables; }

    /// Sets a variable for programs started from now on.
    void setVariable(const QString& name, const QString& value);

    /// Puts the session's variables into this very process, for tests that make their own windows. Call it
    /// before the toolkit's application object exists.
    void enter() const;

    [[nodiscard]] std::unique_ptr<ChildProcess> start(const QString& program,
                                                      const QStringList& arguments = {}) const;

    /// A file in the home directory, with its folders. Returns its path.
    QString writeFile(const QString& relativePath, const QByteArray& contents) const;

    void startWindowManager(WindowManager which);
    void stopWindowManager();

    void startCompositor();
    void stopCompositor();

    void startSessionBus();
    void stopSessionBus();

    /// Starts the accessibility bus and switches accessibility on for the session.
    void startAccessibility();

    /// Ends the accessibility bus with everything on it; the session bus stays.
    void stopAccessibility();

    [[nodiscard]] QString sessionBusAddress() const;

    /// Starts the accessibility bus unless it runs.
    [[nodiscard]] QString accessibilityBusAddress() const;
    [[nodiscard]] bool accessibilityEnabled() const;
    void setAccessibilityEnabled(bool enabled) const;

    void setKeyboardLayout(const QString& layout, const QString& options = {}) const;

    /// Kills the X server under everybody.
    void stopServer();

private:
    void prepareDirectories();
    void prepareLocale(const QString& locale);
    void startServer(const SessionOptions& options);
    void endStragglers() const;

    QTemporaryDir directory;
    QProcessEnvironment variables;
    QString displayName;
    std::unique_ptr<ChildProcess> server;
    std::unique_ptr<ChildProcess> sessionBus;
    std::unique_ptr<ChildProcess> windowManager;
    std::unique_ptr<ChildProcess> compositor;
};

} // namespace orvantile::test
