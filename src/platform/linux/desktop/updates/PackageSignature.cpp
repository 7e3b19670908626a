#include "platform/linux/desktop/updates/PackageSignature.h"

#include <sodium.h>

namespace orvantile::platform::desktop {
namespace {

const unsigned char* unsignedBytes(const char* bytes) {
    return reinterpret_cast<const unsigned char*>(bytes);
}

} // namespace

static_assert(PublicKey::signatureLength == crypto_sign_BYTES);

std::optional<PublicKey> PublicKey::parse(const QByteArray& text) {
    const auto decoded =
        QByteArray::fromBase64Encoding(text.trimmed(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || (*decoded).size() != qsizetype(crypto_sign_PUBLICKEYBYTES)) {
        return std::nullopt;
    }
    return PublicKey(*decoded);
}

bool PublicKey::verifies(QByteArrayView message, const QByteArray& signature) const {
    if (signature.size() != signatureLength || sodium_init() < 0) {
        return false;
    }
    return crypto_sign_verify_detached(
               unsignedBytes(signature.constData()), unsignedBytes(message.constData()),
               static_cast<unsigned long long>(message.size()), unsignedBytes(bytes.constData())) == 0;
}

} // namespace orvantile::platform::desktop
