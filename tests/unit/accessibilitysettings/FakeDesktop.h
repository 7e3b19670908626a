#pragma once

#include "platform/linux/desktop/accessibilitysettings/Launch.h"
#include "support/desktop/Deadline.h"
#include "support/desktop/FileDescriptor.h"

#include <QStringList>
#include <QTemporaryDir>
#include <optional>

namespace orvantile::test {

/// Folders with desktop entries and programs that only tell how they were started.
class FakeDesktop {
public:
    FakeDesktop();

    /// A program that can be found in PATH.
    void installProgram(const QString& name) const;

    /// Writes an entry below one of the data folders; `body` follows its first line and type.
    void installEntry(const QString& fileName, const QByteArray& body,
                      const QString& dataFolder = QStringLiteral("system")) const;

    [[nodiscard]] QString path(const QString& relative) const { return directory.filePath(relative); }

    [[nodiscard]] const platform::desktop::Launch& launch() const { return circumstances; }

    void setVariable(const QString& name, const QString& value) {
        circumstances.environment.insert(name, value);
    }

    void setToken(const QString& token) { circumstances.token = token; }

    /// What the next program that was started says: its name, its arguments, then one line each for its
    /// activation token, start-up identifier, Qt platform, folder and blocked signals.
    [[nodiscard]] std::optional<QStringList>
    awaitStarted(QDeadlineTimer deadline = QDeadlineTimer(patience)) const;

    /// Only the command of the next program that was started.
    [[nodiscard]] QString awaitCommand() const;

private:
    QTemporaryDir directory;
    platform::desktop::Launch circumstances;
    FileDescriptor record;
};

} // namespace orvantile::test
