#include "platform/linux/secrets/KeyringCipher.h"

#include "platform/linux/secrets/CryptoLibrary.h"

#include <QCryptographicHash>
#include <QMessageAuthenticationCode>

#include <memory>

namespace orvella {

namespace {

using Number = std::unique_ptr<BIGNUM, decltype(&BN_clear_free)>;
using Arithmetic = std::unique_ptr<BN_CTX, decltype(&BN_CTX_free)>;
using Cipher = std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)>;

constexpr int kNumberSize = 128;
/// More than twice the strength of the group, some 80 bits, as RFC 7919 (section 5.2) asks of short exponents. One as
/// long as the prime would take three times as long, at every start.
constexpr int kPrivateKeyBits = 256;
constexpr int kBlockSize = 16;
constexpr int kKeySize = 16;

const unsigned char* bytes(const QByteArray& array)
{
    return reinterpret_cast<const unsigned char*>(array.constData());
}

unsigned char* bytes(QByteArray& array)
{
    return reinterpret_cast<unsigned char*>(array.data());
}

Number number(const CryptoLibrary& crypto)
{
    return {crypto.bnNew(), crypto.bnClearFree};
}

Number number(const CryptoLibrary& crypto, const QByteArray& array)
{
    return {crypto.bnBin2bn(bytes(array), static_cast<int>(array.size()), nullptr), crypto.bnClearFree};
}

/// The prime of the second Oakley group (RFC 2409, section 6.2). Its generator is 2.
Number prime(const CryptoLibrary& crypto)
{
    return {crypto.bnGetRfc2409Prime1024(nullptr), crypto.bnClearFree};
}

QByteArray written(const CryptoLibrary& crypto, const Number& number)
{
    QByteArray array(kNumberSize, Qt::Uninitialized);
    crypto.bnBn2binpad(number.get(), bytes(array), kNumberSize);
    return array;
}

QByteArray power(const CryptoLibrary& crypto, const Number& base, const Number& exponent)
{
    const Arithmetic arithmetic(crypto.bnCtxSecureNew(), crypto.bnCtxFree);
    const auto result = number(crypto);
    crypto.bnSetFlags(exponent.get(), BN_FLG_CONSTTIME);
    if (crypto.bnModExp(result.get(), base.get(), exponent.get(), prime(crypto).get(), arithmetic.get()) != 1)
        qFatal("OpenSSL cannot compute a power.");
    return written(crypto, result);
}

/// HKDF with SHA-256 (RFC 5869), without salt and context. One round of it is enough for the key.
QByteArray keyFrom(const QByteArray& sharedNumber)
{
    const QByteArray noSalt(QCryptographicHash::hashLength(QCryptographicHash::Sha256), 0);
    const auto extracted = QMessageAuthenticationCode::hash(sharedNumber, noSalt, QCryptographicHash::Sha256);
    return QMessageAuthenticationCode::hash(QByteArray(1, 1), extracted, QCryptographicHash::Sha256).first(kKeySize);
}

} // namespace

KeyringCipher::KeyringCipher()
{
    const CryptoLibrary crypto;
    const auto secret = number(crypto);
    if (crypto.bnPrivRand(secret.get(), kPrivateKeyBits, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY) != 1)
        qFatal("OpenSSL has no random numbers.");
    const auto generator = number(crypto);
    crypto.bnSetWord(generator.get(), 2);
    m_privateKey = written(crypto, secret);
    m_publicKey = power(crypto, generator, secret);
}

bool KeyringCipher::agree(const QByteArray& publicKeyOfService)
{
    const CryptoLibrary crypto;
    const auto theirs = number(crypto, publicKeyOfService);
    const auto last = prime(crypto);
    crypto.bnSubWord(last.get(), 1);
    // By the others the shared number would be 0, 1 or its negative, whatever our own.
    if (crypto.bnCmp(theirs.get(), crypto.bnValueOne()) <= 0 || crypto.bnCmp(theirs.get(), last.get()) >= 0)
        return false;
    m_key = keyFrom(power(crypto, theirs, number(crypto, m_privateKey)));
    m_privateKey.fill(0);
    return true;
}

KeyringCipher::Sealed KeyringCipher::sealed(const Secret& secret) const
{
    const CryptoLibrary crypto;
    const auto& plain = secret.reveal();
    Sealed result {.parameters = QByteArray(kBlockSize, Qt::Uninitialized),
        .value = QByteArray(plain.size() + kBlockSize, Qt::Uninitialized)};
    const Cipher cipher(crypto.evpCipherCtxNew(), crypto.evpCipherCtxFree);
    int head = 0;
    int tail = 0;
    const bool isDone = crypto.randBytes(bytes(result.parameters), kBlockSize) == 1
        && crypto.evpEncryptInit(cipher.get(), crypto.evpAes128Cbc(), nullptr, bytes(m_key), bytes(result.parameters))
            == 1
        && crypto.evpEncryptUpdate(
               cipher.get(), bytes(result.value), &head, bytes(plain), static_cast<int>(plain.size()))
            == 1
        && crypto.evpEncryptFinal(cipher.get(), bytes(result.value) + head, &tail) == 1;
    if (!isDone)
        qFatal("OpenSSL cannot encrypt.");
    result.value.truncate(head + tail);
    return result;
}

std::optional<Secret> KeyringCipher::opened(const Sealed& secret) const
{
    if (secret.parameters.size() != kBlockSize)
        return std::nullopt;
    const CryptoLibrary crypto;
    QByteArray plain(secret.value.size() + kBlockSize, Qt::Uninitialized);
    const Cipher cipher(crypto.evpCipherCtxNew(), crypto.evpCipherCtxFree);
    int head = 0;
    int tail = 0;
    const bool isDone =
        crypto.evpDecryptInit(cipher.get(), crypto.evpAes128Cbc(), nullptr, bytes(m_key), bytes(secret.parameters)) == 1
        && crypto.evpDecryptUpdate(
               cipher.get(), bytes(plain), &head, bytes(secret.value), static_cast<int>(secret.value.size()))
            == 1
        && crypto.evpDecryptFinal(cipher.get(), bytes(plain) + head, &tail) == 1;
    if (!isDone)
        return std::nullopt;
    plain.truncate(head + tail);
    return Secret(plain);
}

} // namespace orvella
