#include "support/wayland/SwayControl.h"

#include "support/desktop/Deadline.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <cstring>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr char magic[] = {'i', '3', '-', 'i', 'p', 'c'};

enum MessageType : quint32 { runCommand = 0, getOutputs = 3, getTree = 4 };

QString focusedIn(const QJsonObject& node) {
    if (node[u"focused"_s].toBool() && node[u"pid"_s].isDouble()) {
        return node[u"name"_s].toString();
    }
    for (const auto& children : {u"nodes"_s, u"floating_nodes"_s}) {
        for (const auto& child : node[children].toArray()) {
            if (const auto found = focusedIn(child.toObject()); !found.isEmpty()) {
                return found;
            }
        }
    }
    return {};
}

void readFully(int descriptor, char* to, qsizetype length) {
    const QDeadlineTimer deadline(patience);
    while (length > 0) {
        if (!awaitReadable(descriptor, deadline)) {
            throw std::runtime_error("sway does not answer");
        }
        const auto count = ::read(descriptor, to, static_cast<std::size_t>(length));
        if (count <= 0) {
            throw std::runtime_error("sway has closed its control socket");
        }
        to += count;
        length -= count;
    }
}

} // namespace

SwayControl::SwayControl(const QString& socketPath)
    : socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto path = QFile::encodeName(socketPath);
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        throw std::runtime_error("the path of sway's control socket is too long");
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("cannot connect to sway's control socket");
    }
}

QByteArray SwayControl::ask(quint32 type, const QByteArray& payload) const {
    const auto length = static_cast<quint32>(payload.size());
    QByteArray message(magic, sizeof magic);
    message.append(reinterpret_cast<const char*>(&length), sizeof length);
    message.append(reinterpret_cast<const char*>(&type), sizeof type);
    message.append(payload);
    if (::write(socket.get(), message.constData(), static_cast<std::size_t>(message.size())) !=
        message.size()) {
        throw std::runtime_error("cannot write to sway's control socket");
    }
    char header[sizeof magic + 2 * sizeof(quint32)];
    readFully(socket.get(), header, sizeof header);
    quint32 size = 0;
    std::memcpy(&size, header + sizeof magic, sizeof size);
    QByteArray answer(static_cast<qsizetype>(size), '\0');
    readFully(socket.get(), answer.data(), answer.size());
    return answer;
}

void SwayControl::run(const QString& command) const {
    const auto answer = ask(runCommand, command.toUtf8());
    for (const auto& result : QJsonDocument::fromJson(answer).array()) {
        if (!result.toObject()[u"success"_s].toBool()) {
            throw std::runtime_error("sway refuses “" + command.toStdString() + "”: " + answer.toStdString());
        }
    }
}

QJsonDocument SwayControl::outputs() const {
    return QJsonDocument::fromJson(ask(getOutputs, {}));
}

QJsonDocument SwayControl::tree() const {
    return QJsonDocument::fromJson(ask(getTree, {}));
}

QString SwayControl::focusedTitle() const {
    return focusedIn(tree().object());
}

} // namespace orvantile::test
