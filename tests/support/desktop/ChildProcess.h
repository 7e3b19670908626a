#pragma once

#include "support/desktop/Deadline.h"
#include "support/desktop/FileDescriptor.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <optional>
#include <sys/types.h>

namespace orvantile::test {

/// How a process is started.
struct Command {
    QString program; ///< a path, or a name looked up in the environment's PATH
    QStringList arguments;
    QProcessEnvironment environment;
    QString outputDirectory; ///< an existing folder; what the process writes goes to files there
};

/// A process of a test, leader of a process group of its own, which is ended with this object. Ends, too,
/// when the test itself is killed.
class ChildProcess {
public:
    /// How a process ended: its exit code, or the signal that killed it as a negative number.
    using ExitStatus = int;

    /// Throws std::runtime_error when the program is missing or cannot be started.
    explicit ChildProcess(const Command& command);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    [[nodiscard]] pid_t processIdentifier() const { return process; }

    [[nodiscard]] bool isRunning();

    /// Waits for the end; absent when the deadline comes first.
    std::optional<ExitStatus> awaitExit(QDeadlineTimer deadline = QDeadlineTimer(patience));

    /// Waits for the next complete line on standard output, without its line break; absent at the deadline or
    /// when the output ends.
    std::optional<QByteArray> awaitLine(QDeadlineTimer deadline = QDeadlineTimer(patience));

    /// Everything written to standard error so far.
    [[nodiscard]] QByteArray standardError() const;

    /// Sends a signal to the process alone.
    void signal(int number) const;

    /// Ends the whole group: asks first, then insists. Harmless when it has ended.
    void end();

private:
    bool collect(bool wait);

    pid_t process = -1;
    FileDescriptor handle; ///< becomes readable when the process ends
    FileDescriptor output;
    QByteArray pending;
    QString errorPath;
    std::optional<ExitStatus> status;
};

} // namespace orvantile::test
