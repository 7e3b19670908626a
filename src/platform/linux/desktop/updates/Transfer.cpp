#include "platform/linux/desktop/updates/Transfer.h"

#include <QCoreApplication>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <utility>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int mostRedirections = 5;
constexpr int statusOk = 200;
/// The toolkit stops reading from the connection while this much waits for us.
constexpr qint64 readAhead = 262'144;

QNetworkRequest requestFor(const QUrl& url, const UpdatePolicy& policy) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Sizes are counted as they arrive; a compressed body could hide a larger one.
    request.setRawHeader("Accept-Encoding", "identity");
    // The toolkit would add the system's language by itself.
    request.setRawHeader("Accept-Language", "en");
    request.setHeader(QNetworkRequest::UserAgentHeader,
                      QString(u"Orvantile/"_s % QCoreApplication::applicationVersion()));
    auto security = QSslConfiguration::defaultConfiguration();
    security.setProtocol(QSsl::TlsV1_2OrLater);
    security.setPeerVerifyMode(QSslSocket::VerifyPeer);
    if (!policy.authorities.isEmpty()) {
        security.setCaCertificates(policy.authorities);
    }
    request.setSslConfiguration(security);
    return request;
}

} // namespace

void Transfer::drop() {
    if (reply) {
        // Aborting announces the end once more. Only our own connections go: the reply needs the others.
        QObject::disconnect(reply.get(), nullptr, &whole, nullptr);
        reply->abort();
        reply.reset(); // later: it may be what calls us
    }
}

Transfer::Transfer(QNetworkAccessManager& network_, const UpdatePolicy& policy_,
                   const TransferLimits& limits_, const QUrl& url, Sink sink_, Done done_)
    : network(network_),
      policy(policy_),
      limits(limits_),
      sink(std::move(sink_)),
      done(std::move(done_)) {
    whole.setSingleShot(true);
    QObject::connect(&whole, &QTimer::timeout, &whole, [this] { finish(UpdateFailure::timedOut); });
    QObject::connect(&window, &QTimer::timeout, &window, [this] { checkProgress(); });
    whole.start(limits.total);
    window.start(limits.window);
    request(url);
}

void Transfer::request(const QUrl& url) {
    drop();
    if (!policy.permits(url)) {
        QTimer::singleShot(0, &whole, [this] { finish(UpdateFailure::forbiddenAddress); });
        return;
    }
    reply.reset(network.get(requestFor(url, policy)));
    reply->setReadBufferSize(readAhead);
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &whole, [this] { receive(); });
    QObject::connect(reply.get(), &QNetworkReply::finished, &whole, [this] { replyFinished(); });
}

void Transfer::receive() {
    if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != statusOk) {
        return; // an error's page; the end of the reply reports it
    }
    const auto announced = reply->header(QNetworkRequest::ContentLengthHeader);
    if (announced.isValid() && announced.toLongLong() > limits.bytes) {
        finish(UpdateFailure::tooLarge);
        return;
    }
    const auto piece = reply->readAll();
    received += piece.size();
    if (received > limits.bytes) {
        finish(UpdateFailure::tooLarge);
    } else if (const auto failure = sink(piece)) {
        finish(failure);
    }
}

void Transfer::checkProgress() {
    if (received - receivedAtLastLook < limits.bytesPerWindow) {
        finish(UpdateFailure::timedOut);
        return;
    }
    receivedAtLastLook = received;
}

void Transfer::replyFinished() {
    if (reply->error() != QNetworkReply::NoError) {
        finish(failureOfReply());
        return;
    }
    const auto target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (!target.isEmpty()) {
        if (++redirections > mostRedirections) {
            finish(UpdateFailure::refused);
        } else {
            request(reply->url().resolved(target));
        }
        return;
    }
    if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != statusOk) {
        finish(UpdateFailure::refused);
        return;
    }
    if (reply->bytesAvailable() > 0) {
        receive();
    }
    finish(std::nullopt);
}

void Transfer::finish(std::optional<UpdateFailure> failure) {
    if (!done) {
        return; // the sink has ended it already
    }
    whole.stop();
    window.stop();
    drop();
    std::exchange(done, nullptr)(failure);
}

UpdateFailure Transfer::failureOfReply() const {
    switch (reply->error()) {
    case QNetworkReply::SslHandshakeFailedError:
        return UpdateFailure::notSecure;
    case QNetworkReply::RemoteHostClosedError:
        return UpdateFailure::connectionLost;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return UpdateFailure::timedOut;
    case QNetworkReply::InsecureRedirectError:
    case QNetworkReply::ProtocolUnknownError:
        return UpdateFailure::forbiddenAddress;
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::UnknownProxyError:
        return UpdateFailure::unreachable;
    default:
        return UpdateFailure::refused;
    }
}

} // namespace orvantile::platform::desktop
