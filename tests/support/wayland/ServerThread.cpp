#include "support/wayland/ServerThread.h"

#include <cstring>
#include <future>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace orvantile::test {
namespace {

/// A socket that listens; the server takes it over.
int listenAt(const QByteArray& path) {
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        return -1;
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor >= 0 &&
        (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
         ::listen(descriptor, 8) != 0)) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

} // namespace

ServerThread::ServerThread() : server(wl_display_create()), wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    const int listening = listenAt(path().toLocal8Bit());
    if (listening < 0 || wake < 0 || wl_display_add_socket_fd(display(), listening) != 0) {
        throw std::runtime_error("no socket for a compositor");
    }
    work = wl_event_loop_add_fd(
        wl_display_get_event_loop(display()), wake, WL_EVENT_READABLE,
        [](int, std::uint32_t, void* data) {
            static_cast<ServerThread*>(data)->takeWork();
            return 0;
        },
        this);
}

ServerThread::~ServerThread() {
    stop();
    wl_event_source_remove(work);
    ::close(wake);
}

void ServerThread::start() {
    thread = std::thread([this] { wl_display_run(display()); });
}

void ServerThread::stop() {
    if (thread.joinable()) {
        run([this] { wl_display_terminate(display()); });
        thread.join();
        wl_display_destroy_clients(display());
    }
}

void ServerThread::run(const std::function<void()>& task) {
    std::promise<void> done;
    {
        const std::scoped_lock lock(mutex);
        waiting.emplace_back([&] {
            task();
            done.set_value();
        });
    }
    ::eventfd_write(wake, 1);
    done.get_future().wait();
}

void ServerThread::takeWork() {
    eventfd_t count = 0;
    ::eventfd_read(wake, &count);
    std::vector<std::function<void()>> due;
    {
        const std::scoped_lock lock(mutex);
        due = std::exchange(waiting, {});
    }
    for (const auto& task : due) {
        task();
    }
}

} // namespace orvantile::test
