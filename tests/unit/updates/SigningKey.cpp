#include "unit/updates/SigningKey.h"

#include <sodium.h>
#include <stdexcept>

namespace orvantile::test {
namespace {

unsigned char* bytes(QByteArray& array) {
    return reinterpret_cast<unsigned char*>(array.data());
}

const unsigned char* bytes(const QByteArray& array) {
    return reinterpret_cast<const unsigned char*>(array.constData());
}

} // namespace

SigningKey::SigningKey()
    : publicKey(crypto_sign_PUBLICKEYBYTES, '\0'),
      secretKey(crypto_sign_SECRETKEYBYTES, '\0') {
    if (sodium_init() < 0 || crypto_sign_keypair(bytes(publicKey), bytes(secretKey)) != 0) {
        throw std::runtime_error("no key pair could be made");
    }
}

QByteArray SigningKey::sign(const QByteArray& message) const {
    QByteArray signature(crypto_sign_BYTES, '\0');
    crypto_sign_detached(bytes(signature), nullptr, bytes(message),
                         static_cast<unsigned long long>(message.size()), bytes(secretKey));
    return signature;
}

} // namespace orvantile::test
