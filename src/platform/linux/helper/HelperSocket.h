#pragma once

#include "platform/linux/desktop/FileDescriptor.h"
#include "platform/linux/helper/HelperReport.h"

#include <QSocketNotifier>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <sys/types.h>

namespace orvantile::platform::helper {

/// The socket on which programs with the helper report. Only processes of the same user are heard; whose
/// report it is, the kernel says. Where the socket cannot be made nothing is heard. Main thread only.
class HelperSocket {
public:
    /// Process that has reported, and what.
    using Handler = std::function<void(std::int32_t processIdentifier, const HelperReport& report)>;

    /// Makes a socket of the agreed name in a private folder of `runtimeDirectory`. The socket of an earlier
    /// copy is replaced: the latest is the one that hears.
    HelperSocket(const std::filesystem::path& runtimeDirectory, Handler handler);
    HelperSocket(const HelperSocket&) = delete;
    HelperSocket& operator=(const HelperSocket&) = delete;
    ~HelperSocket();

    [[nodiscard]] bool isOpen() const { return socket.isOpen(); }

private:
    void receive();
    bool receiveOne();

    std::filesystem::path path;
    desktop::FileDescriptor socket;
    ino_t inode = 0; ///< of our socket's name
    Handler handler;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace orvantile::platform::helper
