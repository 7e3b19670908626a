#pragma once

#include <QSslCertificate>
#include <QSslKey>

namespace orvantile::test {

/// A self-made certificate for the loopback addresses. Throws std::runtime_error when openssl cannot make it.
struct TestCertificate {
    TestCertificate();

    /// One for all tests that do not need their own.
    [[nodiscard]] static const TestCertificate& shared();

    QSslCertificate certificate;
    QSslKey key;
};

} // namespace orvantile::test
