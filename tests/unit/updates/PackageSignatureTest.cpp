#include "platform/linux/desktop/updates/PackageSignature.h"

#include "unit/updates/SigningKey.h"

#include <gtest/gtest.h>

namespace orvantile::platform::desktop {
namespace {

TEST(PackageSignatureTest, verifiesThePublishedTestVectors) {
    // RFC 8032, section 7.1, tests 1 and 3.
    const auto empty = PublicKey::parse(
        QByteArray::fromHex("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a").toBase64());
    ASSERT_TRUE(empty);
    EXPECT_TRUE(
        empty->verifies({}, QByteArray::fromHex("e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e06"
                                                "5224901555fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe"
                                                "24655141438e7a100b")));
    const auto third = PublicKey::parse(
        QByteArray::fromHex("fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025").toBase64());
    ASSERT_TRUE(third);
    EXPECT_TRUE(
        third->verifies(QByteArray::fromHex("af82"),
                        QByteArray::fromHex("6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5"
                                            "ac3ac18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc027be"
                                            "ceea1ec40a")));
}

TEST(PackageSignatureTest, refusesEveryChangedBit) {
    const test::SigningKey signer;
    const QByteArray message = "the package";
    const auto signature = signer.sign(message);
    const auto key = PublicKey::parse(signer.publicText());
    ASSERT_TRUE(key);
    ASSERT_TRUE(key->verifies(message, signature));
    for (int bit = 0; bit < signature.size() * 8; ++bit) {
        auto changed = signature;
        changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ (1 << (bit % 8)));
        EXPECT_FALSE(key->verifies(message, changed)) << bit;
    }
    EXPECT_FALSE(key->verifies(QByteArray(message + 'x'), signature));
    EXPECT_FALSE(key->verifies(message.chopped(1), signature));
    const auto other = PublicKey::parse(test::SigningKey().publicText());
    ASSERT_TRUE(other);
    EXPECT_FALSE(other->verifies(message, signature));
}

TEST(PackageSignatureTest, refusesSignaturesAndKeysOfOtherLengths) {
    const test::SigningKey signer;
    const auto key = PublicKey::parse(signer.publicText());
    ASSERT_TRUE(key);
    const auto signature = signer.sign("x");
    for (const auto& wrong : QByteArrayList{QByteArray(), signature.chopped(1), signature + 'x'}) {
        EXPECT_FALSE(key->verifies("x", wrong));
    }
    for (const auto& text : QByteArrayList{QByteArray(), QByteArray("????"), QByteArray(31, 'k').toBase64(),
                                           QByteArray(33, 'k').toBase64(), signer.publicText() + "!"}) {
        EXPECT_FALSE(PublicKey::parse(text)) << text.toStdString();
    }
    EXPECT_TRUE(PublicKey::parse(' ' + signer.publicText() + '\n'));
}

} // namespace
} // namespace orvantile::platform::desktop
