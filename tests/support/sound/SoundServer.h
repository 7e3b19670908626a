#pragma once

#include "support/desktop/ChildProcess.h"
#include "support/desktop/PrivateEnvironment.h"

#include <QProcess>
#include <QTemporaryDir>
#include <memory>

namespace orvantile::test {

/// A sound server of its own, in whose only output everything disappears, recorded.
class SoundServer {
public:
    /// Points clients in this process to the server that `start` starts.
    SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;
    ~SoundServer();

    /// Throws std::runtime_error when it does not get ready.
    void start();
    void kill();

    /// Points clients that are started in the session from now on to the server.
    void serve(PrivateEnvironment& session) const;

    /// Sends a signal to the server, such as SIGSTOP.
    void signal(int number) const { server->signal(number); }

    /// Starts recording what is played: 48 kHz, 16 bits, mono. Throws when nothing arrives.
    void record();

    /// Reads what has been recorded meanwhile, waiting for some at most until the deadline.
    [[nodiscard]] QByteArray recorded(const QDeadlineTimer& deadline);

private:
    QTemporaryDir directory;
    QProcessEnvironment environment;
    std::unique_ptr<ChildProcess> server;
    std::unique_ptr<QProcess> recorder;
};

} // namespace orvantile::test
