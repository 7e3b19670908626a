#pragma once

#include "unit/updates/TestCertificate.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTcpServer>
#include <QUrl>
#include <optional>

class QSslSocket;

namespace orvantile::test {

/// How a server answers one path.
struct Answer {
    enum class Ending {
        close,      ///< everything is sent, then the connection closed
        cut,        ///< half of the body is sent, then the connection closed
        silence,    ///< half of the body is sent, then nothing more
        trickle,    ///< a byte of the body every 20 ms
        endless,    ///< the body again and again
        noAnswer,   ///< not a byte
        endlessHead ///< header fields without end
    };

    QByteArray body{};
    QByteArray status = "200 OK";
    QByteArray fields{}; ///< further header fields, each with its line end
    bool announcesLength = true;
    Ending ending = Ending::close;
};

/// A web server on the loopback address in the thread that made it, with or without encryption.
class UpdateServer final : public QTcpServer {
public:
    /// Encrypted when there is a certificate. Throws std::runtime_error when it cannot listen.
    explicit UpdateServer(std::optional<TestCertificate> certificate_ = {});

    void answer(const QString& path, Answer answer_) { answers[path] = std::move(answer_); }

    [[nodiscard]] QUrl url(const QString& path) const;

    /// The heads of the requests so far, in order.
    [[nodiscard]] const QList<QByteArray>& requests() const { return heads; }

    /// Bytes given to connections so far, heads of answers included.
    [[nodiscard]] qint64 bytesSent() const { return sent; }

    [[nodiscard]] int openConnections() const { return open; }

private:
    void incomingConnection(qintptr descriptor) override;
    void receive(QSslSocket& socket);
    void serve(QSslSocket& socket, const Answer& answer_);
    void sendRepeatedly(QSslSocket& socket, const QByteArray& piece);
    void trickle(QSslSocket& socket, const QByteArray& bytes);
    void send(QSslSocket& socket, const QByteArray& bytes);

    std::optional<TestCertificate> certificate;
    QMap<QString, Answer> answers;
    QList<QByteArray> heads;
    qint64 sent = 0;
    int open = 0;
};

} // namespace orvantile::test
