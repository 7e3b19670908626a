#include "helper/qt/ActionReporter.h"

#include "helper/qt/MenuMembership.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QVariant>
#include <QtGui/QKeySequence>
#include <algorithm>
#include <cerrno>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <type_traits>
#include <unistd.h>

namespace orvantile::helper {
namespace {

/// Qt 5 has plain numbers, Qt 6 a type of its own.
template <typename Key>
std::uint32_t codeOf(Key key) {
    if constexpr (std::is_integral_v<Key>) {
        return static_cast<std::uint32_t>(key);
    } else {
        return static_cast<std::uint32_t>(key.toCombined());
    }
}

} // namespace

ActionReporter::ActionReporter(QObject* parent) : QObject(parent) {
    const QByteArray path = qgetenv("XDG_RUNTIME_DIR") + '/' + socketFolder + '/' + socketName;
    if (!path.startsWith('/') || static_cast<std::size_t>(path.size()) >= sizeof(receiver.sun_path)) {
        return;
    }
    receiver.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), receiver.sun_path);
    descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);

    struct stat status {};

    if (descriptor >= 0 && fstat(descriptor, &status) == 0) {
        identity = status.st_ino;
        QCoreApplication::instance()->installEventFilter(this);
    }
}

ActionReporter::~ActionReporter() {
    if (ownsDescriptor()) {
        close(descriptor);
    }
}

bool ActionReporter::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::Shortcut:
        reportShortcut(*object, *static_cast<QShortcutEvent*>(event));
        break;
    case QEvent::Show:
        if (!event->spontaneous() && object->inherits("QMenu") && !object->inherits("QTornOffMenu")) {
            menuShown(object);
        }
        break;
    case QEvent::Hide:
        hidden(object);
        break;
    default:
        break;
    }
    return false;
}

void ActionReporter::reportShortcut(const QObject& object, const QShortcutEvent& event) const {
    if (event.isAmbiguous() || !object.inherits("QAction") || !livesInMenu(object)) {
        return;
    }
    MessageHeader header;
    header.enabled = object.property("enabled").toBool() ? 1 : 0;
    const QKeySequence& sequence = event.key();
    for (int index = 0; index < sequence.count() && header.keyCount < header.keys.size(); ++index) {
        header.keys[header.keyCount++] = codeOf(sequence[static_cast<unsigned>(index)]);
    }
    // No character of the text takes more than three bytes.
    send(MessageHeader::actionFired, header,
         object.property("text").toString().left(static_cast<int>(longestText / 3)).toUtf8());
}

void ActionReporter::menuShown(const QObject* object) {
    const auto end = openMenus.begin() + openCount;
    if (openCount < openMenus.size() && std::find(openMenus.begin(), end, object) == end) {
        openMenus[openCount++] = object;
        send(MessageHeader::menusChanged);
    }
}

void ActionReporter::hidden(const QObject* object) {
    const auto end = openMenus.begin() + openCount;
    const auto found = std::find(openMenus.begin(), end, object);
    if (found != end) {
        std::move(found + 1, end, found);
        --openCount;
        send(MessageHeader::menusChanged);
    }
}

/// A program may close descriptors that it does not know, and open others of the same number.
bool ActionReporter::ownsDescriptor() const {
    struct stat status {};

    return descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode) &&
           status.st_ino == identity;
}

void ActionReporter::send(std::uint8_t kind, MessageHeader header, const QByteArray& text) const {
    const int programsError = errno;
    if (ownsDescriptor()) {
        header.kind = kind;
        header.openMenus = static_cast<std::uint8_t>(openCount);
        std::array<iovec, 2> parts{
            {{&header, sizeof(header)},
             {const_cast<char*>(text.constData()), static_cast<std::size_t>(text.size())}}};
        msghdr message{};
        message.msg_name = const_cast<sockaddr_un*>(&receiver);
        message.msg_namelen = sizeof(receiver);
        message.msg_iov = parts.data();
        message.msg_iovlen = parts.size();
        static_cast<void>(sendmsg(descriptor, &message, MSG_DONTWAIT | MSG_NOSIGNAL));
    }
    errno = programsError;
}

} // namespace orvantile::helper
