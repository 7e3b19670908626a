#pragma once

#include <QByteArray>

namespace orvantile::test {

/// A fresh Ed25519 key pair.
class SigningKey {
public:
    SigningKey();

    [[nodiscard]] QByteArray publicText() const { return publicKey.toBase64(); }

    [[nodiscard]] QByteArray sign(const QByteArray& message) const;

private:
    QByteArray publicKey;
    QByteArray secretKey;
};

} // namespace orvantile::test
