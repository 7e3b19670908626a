#include "unit/updates/UpdateServer.h"

#include <QSslConfiguration>
#include <QSslSocket>
#include <QTimer>
#include <memory>
#include <stdexcept>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int trickleInterval = 20; // ms
constexpr qint64 enoughInFlight = 262'144;

} // namespace

UpdateServer::UpdateServer(std::optional<TestCertificate> certificate_)
    : certificate(std::move(certificate_)) {
    if (!listen(QHostAddress::LocalHost)) {
        throw std::runtime_error("no port on the loopback address");
    }
}

QUrl UpdateServer::url(const QString& path) const {
    return QUrl(
        u"%1://127.0.0.1:%2%3"_s.arg(certificate ? u"https"_s : u"http"_s).arg(serverPort()).arg(path));
}

void UpdateServer::incomingConnection(qintptr descriptor) {
    auto* const socket = std::make_unique<QSslSocket>(this).release();
    socket->setSocketDescriptor(descriptor);
    ++open;
    connect(socket, &QSslSocket::disconnected, this, [this, socket] {
        --open;
        socket->deleteLater();
    });
    connect(socket, &QSslSocket::readyRead, this, [this, socket] { receive(*socket); });
    if (certificate) {
        auto security = QSslConfiguration::defaultConfiguration();
        security.setLocalCertificate(certificate->certificate);
        security.setPrivateKey(certificate->key);
        security.setPeerVerifyMode(QSslSocket::VerifyNone);
        socket->setSslConfiguration(security);
        socket->startServerEncryption();
    }
}

void UpdateServer::receive(QSslSocket& socket) {
    const QByteArray head = socket.property("head").toByteArray() + socket.readAll();
    socket.setProperty("head", head);
    if (!head.contains("\r\n\r\n")) {
        return;
    }
    socket.setProperty("head", QByteArray());
    heads.append(head);
    const auto path = QString::fromLatin1(head.split(' ').value(1));
    serve(socket, answers.value(path, Answer{.body = "not here", .status = "404 Not Found"}));
}

void UpdateServer::serve(QSslSocket& socket, const Answer& answer_) {
    using Ending = Answer::Ending;
    if (answer_.ending == Ending::noAnswer) {
        return;
    }
    QByteArray head = "HTTP/1.1 " + answer_.status + "\r\nConnection: close\r\n" + answer_.fields;
    if (answer_.ending == Ending::endlessHead) {
        send(socket, head);
        sendRepeatedly(socket, "X-Filler: " + QByteArray(1000, 'x') + "\r\n");
        return;
    }
    if (answer_.announcesLength && answer_.ending != Ending::endless) {
        head += "Content-Length: " + QByteArray::number(answer_.body.size()) + "\r\n";
    }
    send(socket, head + "\r\n");
    const auto half = answer_.body.first(answer_.body.size() / 2);
    switch (answer_.ending) {
    case Ending::cut:
        send(socket, half);
        socket.disconnectFromHost();
        break;
    case Ending::silence:
        send(socket, half);
        break;
    case Ending::trickle:
        trickle(socket, answer_.body);
        break;
    case Ending::endless:
        sendRepeatedly(socket, answer_.body);
        break;
    default:
        send(socket, answer_.body);
        socket.disconnectFromHost();
        break;
    }
}

void UpdateServer::sendRepeatedly(QSslSocket& socket, const QByteArray& piece) {
    const auto fill = [this, &socket, piece] {
        while (socket.isOpen() && socket.bytesToWrite() + socket.encryptedBytesToWrite() < enoughInFlight) {
            send(socket, piece);
        }
    };
    connect(&socket, &QSslSocket::bytesWritten, &socket, fill, Qt::QueuedConnection);
    connect(&socket, &QSslSocket::encryptedBytesWritten, &socket, fill, Qt::QueuedConnection);
    fill();
}

void UpdateServer::trickle(QSslSocket& socket, const QByteArray& bytes) {
    auto* const timer = std::make_unique<QTimer>(&socket).release();
    connect(timer, &QTimer::timeout, &socket, [this, &socket, bytes, position = qsizetype(0)]() mutable {
        if (position < bytes.size()) {
            send(socket, bytes.mid(position++, 1));
        }
    });
    timer->start(trickleInterval);
}

void UpdateServer::send(QSslSocket& socket, const QByteArray& bytes) {
    sent += bytes.size();
    socket.write(bytes);
}

} // namespace orvantile::test
