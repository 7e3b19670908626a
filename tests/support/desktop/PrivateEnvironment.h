#pragma once

#include "support/desktop/ChildProcess.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace orvantile::test {

/// What private desktops of every kind have in common: an empty home, message buses, an environment of their
/// own for the programs started in them. Everything ends with this object, what was started by its members as
/// well. Constructor and members throw std::runtime_error with the reason when something is missing or does
/// not get ready.
class PrivateEnvironment {
public:
    PrivateEnvironment(const PrivateEnvironment&) = delete;
    PrivateEnvironment& operator=(const PrivateEnvironment&) = delete;
    virtual ~PrivateEnvironment();

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

protected:
    /// A locale other than C.UTF-8 is generated privately.
    explicit PrivateEnvironment(const QString& locale);

private:
    void prepareDirectories();
    void prepareLocale(const QString& locale);
    void endStragglers() const;

    QTemporaryDir directory;
    QProcessEnvironment variables;
    std::unique_ptr<ChildProcess> sessionBus;
};

} // namespace orvantile::test
