#include "platform/linux/desktop/updates/Transfer.h"

#include "unit/updates/UpdateServer.h"
#include "unit/updates/Waiting.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using test::Answer;
using test::turnUntil;
using Ending = Answer::Ending;
using ::testing::HasSubstr;
using ::testing::Not;

class TransferTest : public ::testing::Test {
protected:
    TransferTest() {
        policy.allowsPlainLoopback = true;
        policy.authorities = {certificate.certificate};
        limits = {1'000'000, 10s, 5s, 1};
    }

    /// Runs a transfer to its end; `body` has what arrived.
    std::optional<UpdateFailure> fetch(const QUrl& url) {
        body.clear();
        bool isDone = false;
        std::optional<UpdateFailure> failure;
        const Transfer transfer(
            network, policy, limits, url,
            [this](const QByteArray& piece) {
                body += piece;
                return sinkFailure;
            },
            [&](std::optional<UpdateFailure> outcome) {
                EXPECT_FALSE(isDone) << "ended twice";
                isDone = true;
                failure = outcome;
            });
        EXPECT_FALSE(isDone) << "ended before the call returned";
        EXPECT_TRUE(turnUntil([&] { return isDone; }));
        return failure;
    }

    std::optional<UpdateFailure> fetchPlain(Answer answer) {
        plain.answer(u"/feed"_s, std::move(answer));
        return fetch(plain.url(u"/feed"_s));
    }

    const test::TestCertificate& certificate = test::TestCertificate::shared();
    UpdatePolicy policy;
    TransferLimits limits{};
    test::UpdateServer plain;
    test::UpdateServer secure{certificate};
    QNetworkAccessManager network;
    QByteArray body;
    std::optional<UpdateFailure> sinkFailure;
};

TEST_F(TransferTest, fetchesOverEncryptedConnections) {
    const auto text = QByteArray("0123456789").repeated(90'000);
    secure.answer(u"/feed"_s, {.body = text});
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), std::nullopt);
    EXPECT_EQ(body, text);
}

TEST_F(TransferTest, sendsNothingAboutTheUserOrTheSystem) {
    secure.answer(u"/feed"_s, {.body = "x", .fields = "Set-Cookie: id=1; Path=/\r\n"});
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), std::nullopt);
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), std::nullopt);
    ASSERT_EQ(secure.requests().size(), 2);
    const auto second = secure.requests()[1].toLower().toStdString();
    EXPECT_THAT(second, Not(HasSubstr("cookie")));
    EXPECT_THAT(second, HasSubstr("user-agent: orvantile/"));
    EXPECT_THAT(second, HasSubstr("accept-language: en\r\n"));
    EXPECT_THAT(second, HasSubstr("accept-encoding: identity\r\n"));
}

TEST_F(TransferTest, refusesCertificatesThatNobodyVouchesFor) {
    secure.answer(u"/feed"_s, {.body = "x"});
    policy.authorities = {};
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), UpdateFailure::notSecure);
    policy.authorities = {test::TestCertificate().certificate};
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), UpdateFailure::notSecure);
    EXPECT_TRUE(secure.requests().isEmpty());
}

TEST_F(TransferTest, refusesCertificatesOfAnotherHost) {
    secure.answer(u"/feed"_s, {.body = "x"});
    auto url = secure.url(u"/feed"_s);
    url.setHost(u"127.0.0.2"_s);
    test::UpdateServer everywhere(certificate);
    everywhere.close();
    ASSERT_TRUE(everywhere.listen(QHostAddress(u"127.0.0.2"_s)));
    url.setPort(everywhere.serverPort());
    EXPECT_EQ(fetch(url), UpdateFailure::notSecure);
}

TEST_F(TransferTest, refusesServersThatDoNotEncrypt) {
    auto url = plain.url(u"/feed"_s);
    url.setScheme(u"https"_s);
    plain.answer(u"/feed"_s, {.body = "x"});
    limits.window = 500ms;
    const auto failure = fetch(url);
    EXPECT_TRUE(failure == UpdateFailure::notSecure || failure == UpdateFailure::timedOut)
        << int(failure.value_or(UpdateFailure::tooLarge));
    EXPECT_TRUE(body.isEmpty());
}

TEST_F(TransferTest, asksForNothingThatThePolicyForbids) {
    policy.allowsPlainLoopback = false;
    EXPECT_EQ(fetchPlain({.body = "x"}), UpdateFailure::forbiddenAddress);
    EXPECT_EQ(fetch(QUrl(u"file:///etc/passwd"_s)), UpdateFailure::forbiddenAddress);
    EXPECT_EQ(fetch(QUrl()), UpdateFailure::forbiddenAddress);
    EXPECT_TRUE(plain.requests().isEmpty());
}

TEST_F(TransferTest, followsRedirectionsToPermittedAddressesOnly) {
    secure.answer(u"/there"_s, {.body = "there"});
    const auto redirection = [](const QByteArray& target) {
        return Answer{.body = "moved", .status = "302 Found", .fields = "Location: " + target + "\r\n"};
    };
    secure.answer(u"/feed"_s, redirection("/there"));
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), std::nullopt);
    EXPECT_EQ(body, "there");
    secure.answer(u"/feed"_s, redirection(secure.url(u"/there"_s).toEncoded()));
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), std::nullopt);
    EXPECT_EQ(body, "there");

    policy.allowsPlainLoopback = false;
    plain.answer(u"/there"_s, {.body = "there"});
    const auto before = plain.requests().size();
    for (const auto& target : {plain.url(u"/there"_s).toEncoded(), QByteArray("file:///etc/passwd"),
                               QByteArray("ftp://127.0.0.1/x"), QByteArray("data:text/plain,x"),
                               QByteArray("https://user:pw@127.0.0.1/")}) {
        secure.answer(u"/feed"_s, redirection(target));
        EXPECT_EQ(fetch(secure.url(u"/feed"_s)), UpdateFailure::forbiddenAddress) << target.toStdString();
        EXPECT_TRUE(body.isEmpty());
    }
    EXPECT_EQ(plain.requests().size(), before);
}

TEST_F(TransferTest, givesUpOnCirclesAndOnRedirectionsToNowhere) {
    EXPECT_EQ(fetchPlain({.status = "302 Found", .fields = "Location: /feed\r\n"}), UpdateFailure::refused);
    EXPECT_EQ(plain.requests().size(), 6);
    EXPECT_NE(fetchPlain({.status = "302 Found"}), std::nullopt);
}

TEST_F(TransferTest, reportsAnswersThatAreNotTheFile) {
    for (const auto* const status :
         {"404 Not Found", "500 Internal Server Error", "503 Busy", "403 No", "401 Who", "204 No Content",
          "206 Partial Content", "304 Not Modified"}) {
        EXPECT_EQ(fetchPlain({.body = "page", .status = status}), UpdateFailure::refused) << status;
        EXPECT_TRUE(body.isEmpty()) << status;
    }
}

TEST_F(TransferTest, reportsServersThatAreNotThere) {
    const auto url = plain.url(u"/feed"_s);
    plain.close();
    EXPECT_EQ(fetch(url), UpdateFailure::unreachable);
}

TEST_F(TransferTest, reportsCutConnections) {
    EXPECT_EQ(fetchPlain({.body = QByteArray(1000, 'x'), .ending = Ending::cut}),
              UpdateFailure::connectionLost);
}

TEST_F(TransferTest, givesUpOnSilence) {
    limits.window = 200ms;
    EXPECT_EQ(fetchPlain({.body = QByteArray(1000, 'x'), .ending = Ending::silence}),
              UpdateFailure::timedOut);
    EXPECT_EQ(fetchPlain({.ending = Ending::noAnswer}), UpdateFailure::timedOut);
    EXPECT_TRUE(turnUntil([this] { return plain.openConnections() == 0; }));
}

TEST_F(TransferTest, givesUpOnTricklesByRateAndByTime) {
    const auto text = QByteArray(1'000'000, 'x');
    limits = {1'000'000, 10s, 300ms, 1000};
    EXPECT_EQ(fetchPlain({.body = text, .ending = Ending::trickle}), UpdateFailure::timedOut);
    limits = {1'000'000, 600ms, 300ms, 1};
    EXPECT_EQ(fetchPlain({.body = text, .ending = Ending::trickle}), UpdateFailure::timedOut);
}

TEST_F(TransferTest, stopsBodiesThatAreTooLarge) {
    limits.bytes = 100'000;
    EXPECT_EQ(fetchPlain({.body = QByteArray(100'001, 'x')}), UpdateFailure::tooLarge);
    EXPECT_TRUE(body.isEmpty()) << "the announced length was enough to know";
    EXPECT_EQ(fetchPlain({.body = QByteArray(100'001, 'x'), .announcesLength = false}),
              UpdateFailure::tooLarge);
    EXPECT_EQ(fetchPlain({.body = QByteArray(1000, 'x'), .ending = Ending::endless}),
              UpdateFailure::tooLarge);
    EXPECT_LE(body.size(), 100'000 + 262'144);
    EXPECT_EQ(fetchPlain({.body = QByteArray(100'000, 'x')}), std::nullopt);
    EXPECT_EQ(body.size(), 100'000);
}

TEST_F(TransferTest, stopsHeadsWithoutEnd) {
    limits.window = 300ms;
    // Encrypted: the toolkit does not let go of an unencrypted head while more of it keeps coming.
    secure.answer(u"/feed"_s, {.ending = Ending::endlessHead});
    EXPECT_EQ(fetch(secure.url(u"/feed"_s)), UpdateFailure::timedOut);
    EXPECT_TRUE(turnUntil([this] { return secure.openConnections() == 0; }));
}

TEST_F(TransferTest, endsWithWhatTheSinkReports) {
    sinkFailure = UpdateFailure::storageFull;
    EXPECT_EQ(fetchPlain({.body = QByteArray(900'000, 'x')}), UpdateFailure::storageFull);
}

TEST_F(TransferTest, isSilentOnceDestroyed) {
    plain.answer(u"/feed"_s, {.body = QByteArray(1000, 'x'), .ending = Ending::silence});
    bool isTold = false;
    auto transfer = std::make_unique<Transfer>(
        network, policy, limits, plain.url(u"/feed"_s),
        [&](const QByteArray& piece) {
            body += piece;
            return std::optional<UpdateFailure>();
        },
        [&](std::optional<UpdateFailure>) { isTold = true; });
    ASSERT_TRUE(turnUntil([this] { return body.size() == 500; }));
    transfer.reset();
    EXPECT_TRUE(turnUntil([this] { return plain.openConnections() == 0; }));
    EXPECT_FALSE(isTold);
}

} // namespace
} // namespace orvantile::platform::desktop
