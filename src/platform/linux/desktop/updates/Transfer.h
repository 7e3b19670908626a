#pragma once

#include "platform/linux/desktop/updates/UpdateFailure.h"
#include "platform/linux/desktop/updates/UpdatePolicy.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

namespace orvantile::platform::desktop {

/// One bounded download. Lives in the thread of its manager and needs an event loop there. Destroying it
/// ends the transfer without a word.
class Transfer {
public:
    /// Takes a piece of the body. A failure ends the transfer with it.
    using Sink = std::function<std::optional<UpdateFailure>(const QByteArray& piece)>;

    /// Called once. May destroy the transfer.
    using Done = std::function<void(std::optional<UpdateFailure> failure)>;

    /// Asks for `url` at once. `sink` and `done` are called on later turns only.
    Transfer(QNetworkAccessManager& network_, const UpdatePolicy& policy_, const TransferLimits& limits_,
             const QUrl& url, Sink sink_, Done done_);
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    ~Transfer() { drop(); }

private:
    void receive();
    void checkProgress();
    void request(const QUrl& url);
    void replyFinished();
    void finish(std::optional<UpdateFailure> failure);
    [[nodiscard]] UpdateFailure failureOfReply() const;

    void drop();

    struct DeleteLater {
        void operator()(QNetworkReply* ended) const { ended->deleteLater(); }
    };

    QNetworkAccessManager& network;
    UpdatePolicy policy;
    TransferLimits limits;
    Sink sink;
    Done done;
    qint64 received = 0;
    qint64 receivedAtLastLook = 0;
    int redirections = 0;
    std::unique_ptr<QNetworkReply, DeleteLater> reply;
    QTimer whole;
    QTimer window;
};

} // namespace orvantile::platform::desktop
