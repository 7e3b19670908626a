#pragma once

#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>
#include <wayland-server-core.h>

namespace orvantile::test {

/// The server side of the Wayland protocol without any globals, on a thread of its own.
class ServerThread {
public:
    /// Throws std::runtime_error when it cannot listen. It serves from `start` on.
    ServerThread();
    ServerThread(const ServerThread&) = delete;
    ServerThread& operator=(const ServerThread&) = delete;
    ~ServerThread();

    /// The path of the socket.
    [[nodiscard]] QString path() const { return folder.filePath(QStringLiteral("socket")); }

    /// Only for work on the thread, and before `start`.
    [[nodiscard]] wl_display* display() const { return server.get(); }

    void start();

    /// Ends the thread and all clients.
    void stop();

    /// Does `task` on the thread and waits for it. Not from the thread itself.
    void run(const std::function<void()>& task);

private:
    struct Destroy {
        void operator()(wl_display* display) const { wl_display_destroy(display); }
    };

    void takeWork();

    QTemporaryDir folder;
    std::unique_ptr<wl_display, Destroy> server;
    int wake = -1;
    wl_event_source* work = nullptr; ///< of `wake`
    std::mutex mutex;
    std::vector<std::function<void()>> waiting; ///< guarded by `mutex`
    std::thread thread;
};

} // namespace orvantile::test
