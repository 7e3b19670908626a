#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

namespace orvantile::platform::desktop {

/// The key that an installation trusts for its updates (Ed25519).
class PublicKey {
public:
    /// Nothing unless `text` is the base64 form of exactly 32 bytes.
    [[nodiscard]] static std::optional<PublicKey> parse(const QByteArray& text);

    /// Whether `signature` is this key's signature of `message`. Takes time with the message's length. Any
    /// thread.
    [[nodiscard]] bool verifies(QByteArrayView message, const QByteArray& signature) const;

    /// Bytes of a signature.
    static constexpr qsizetype signatureLength = 64;

private:
    explicit PublicKey(QByteArray bytes_) : bytes(std::move(bytes_)) {}

    QByteArray bytes;
};

} // namespace orvantile::platform::desktop
