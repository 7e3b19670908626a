#include "platform/linux/helper/HelperSocket.h"

#include "helper/qt/HelperMessage.h"
#include "platform/linux/helper/MessageDecoder.h"

#include <QByteArrayView>
#include <algorithm>
#include <array>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <utility>

namespace orvantile::platform::helper {
namespace {

using desktop::FileDescriptor;
using orvantile::helper::longestText;
using orvantile::helper::MessageHeader;

/// Enough for a burst; whoever sends more than that at once does not hold up the main loop.
constexpr int mostPerTurn = 32;

/// Makes the folder where needed and sees to it that it is ours alone.
bool preparePrivateFolder(const std::filesystem::path& folder) {
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        return false;
    }
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));

    struct stat status {};

    return opened.isOpen() && ::fstat(opened.get(), &status) == 0 && status.st_uid == ::getuid() &&
           ((status.st_mode & 07777) == 0700 || ::fchmod(opened.get(), 0700) == 0);
}

/// The inode of a socket of that name; absent when there is none, or something else.
std::optional<ino_t> socketAt(const std::filesystem::path& path) {
    struct stat status {};

    return ::lstat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode) ? std::optional(status.st_ino)
                                                                           : std::nullopt;
}

FileDescriptor bindTo(const std::filesystem::path& path) {
    sockaddr_un address{};
    const auto& name = path.native();
    if (name.size() >= sizeof(address.sun_path)) {
        return {};
    }
    address.sun_family = AF_UNIX;
    std::ranges::copy(name, address.sun_path);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    constexpr int yes = 1;
    if (!socket.isOpen() || ::setsockopt(socket.get(), SOL_SOCKET, SO_PASSCRED, &yes, sizeof(yes)) != 0) {
        return {};
    }
    if (socketAt(path)) {
        ::unlink(path.c_str());
    }
    // The call takes every kind of address by this type.
    const auto* any = reinterpret_cast<const sockaddr*>(&address);
    return ::bind(socket.get(), any, sizeof(address)) == 0 ? std::move(socket) : FileDescriptor();
}

/// Who has sent the message, according to the kernel.
std::optional<ucred> senderOf(msghdr& message) {
    for (auto* header = CMSG_FIRSTHDR(&message); header != nullptr; header = CMSG_NXTHDR(&message, header)) {
        if (header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_CREDENTIALS &&
            header->cmsg_len == CMSG_LEN(sizeof(ucred))) {
            ucred sender{};
            std::memcpy(&sender, CMSG_DATA(header), sizeof(sender));
            return sender;
        }
    }
    return std::nullopt;
}

} // namespace

HelperSocket::HelperSocket(const std::filesystem::path& runtimeDirectory, Handler handler_)
    : handler(std::move(handler_)) {
    const auto folder = runtimeDirectory / orvantile::helper::socketFolder;
    if (!runtimeDirectory.is_absolute() || !preparePrivateFolder(folder)) {
        return;
    }
    path = folder / orvantile::helper::socketName;
    socket = bindTo(path);
    if (socket.isOpen()) {
        inode = socketAt(path).value_or(0);
        notifier = std::make_unique<QSocketNotifier>(socket.get(), QSocketNotifier::Read);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { receive(); });
    }
}

HelperSocket::~HelperSocket() {
    if (socket.isOpen() && inode != 0 && socketAt(path) == inode) {
        ::unlink(path.c_str());
    }
}

void HelperSocket::receive() {
    for (int received = 0; received < mostPerTurn && receiveOne(); ++received) {
    }
}

bool HelperSocket::receiveOne() {
    std::array<char, sizeof(MessageHeader) + longestText> bytes{};
    // Room for the credentials and nothing else: descriptors that somebody sends along are refused.
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    iovec part{bytes.data(), bytes.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const auto size = ::recvmsg(socket.get(), &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (size < 0) {
        return false;
    }
    const auto sender = senderOf(message);
    if ((message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0 || !sender || sender->uid != ::getuid() ||
        sender->pid <= 0) {
        return true;
    }
    if (const auto report = decodeMessage({bytes.data(), size})) {
        handler(sender->pid, *report);
    }
    return true;
}

} // namespace orvantile::platform::helper
