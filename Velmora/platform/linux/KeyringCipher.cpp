#include "platform/linux/KeyringCipher.h"

#include <openssl/bn.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <QCryptographicHash>
#include <QMessageAuthenticationCode>

#include <memory>

namespace orvella {

namespace {

using Number = std::unique_ptr<BIGNUM, decltype([](BIGNUM* number) { BN_clear_free(number); })>;
using Arithmetic = std::unique_ptr<BN_CTX, decltype([](BN_CTX* context) { BN_CTX_free(context); })>;
using Cipher = std::unique_ptr<EVP_CIPHER_CTX, decltype([](EVP_CIPHER_CTX* cipher) { EVP_CIPHER_CTX_free(cipher); })>;

constexpr int kNumberSize = 128;
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

/// The prime of the second Oakley group (RFC 2409, section 6.2). Its generator is 2.
Number prime()
{
    return Number(BN_get_rfc2409_prime_1024(nullptr));
}

Number number(const QByteArray& array)
{
    return Number(BN_bin2bn(bytes(array), static_cast<int>(array.size()), nullptr));
}

QByteArray written(const Number& number)
{
    QByteArray array(kNumberSize, Qt::Uninitialized);
    BN_bn2binpad(number.get(), bytes(array), kNumberSize);
    return array;
}

QByteArray power(const Number& base, const Number& exponent)
{
    const Arithmetic arithmetic(BN_CTX_secure_new());
    const Number result(BN_new());
    BN_set_flags(exponent.get(), BN_FLG_CONSTTIME);
    if (BN_mod_exp(result.get(), base.get(), exponent.get(), prime().get(), arithmetic.get()) != 1)
        qFatal("OpenSSL cannot compute a power.");
    return written(result);
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
    const Number secret(BN_new());
    if (BN_priv_rand_range(secret.get(), prime().get()) != 1)
        qFatal("OpenSSL has no random numbers.");
    const Number generator(BN_new());
    BN_set_word(generator.get(), 2);
    m_privateKey = written(secret);
    m_publicKey = power(generator, secret);
}

bool KeyringCipher::agree(const QByteArray& publicKeyOfService)
{
    const auto theirs = number(publicKeyOfService);
    const auto last = prime();
    BN_sub_word(last.get(), 1);
    // By the others the shared number would be 0, 1 or its negative, whatever our own.
    if (BN_cmp(theirs.get(), BN_value_one()) <= 0 || BN_cmp(theirs.get(), last.get()) >= 0)
        return false;
    m_key = keyFrom(power(theirs, number(m_privateKey)));
    m_privateKey.fill(0);
    return true;
}

KeyringCipher::Sealed KeyringCipher::sealed(const Secret& secret) const
{
    const auto& plain = secret.reveal();
    Sealed result {.parameters = QByteArray(kBlockSize, Qt::Uninitialized),
        .value = QByteArray(plain.size() + kBlockSize, Qt::Uninitialized)};
    const Cipher cipher(EVP_CIPHER_CTX_new());
    int head = 0;
    int tail = 0;
    const bool isDone = RAND_bytes(bytes(result.parameters), kBlockSize) == 1
        && EVP_EncryptInit_ex(cipher.get(), EVP_aes_128_cbc(), nullptr, bytes(m_key), bytes(result.parameters)) == 1
        && EVP_EncryptUpdate(cipher.get(), bytes(result.value), &head, bytes(plain), static_cast<int>(plain.size()))
            == 1
        && EVP_EncryptFinal_ex(cipher.get(), bytes(result.value) + head, &tail) == 1;
    if (!isDone)
        qFatal("OpenSSL cannot encrypt.");
    result.value.truncate(head + tail);
    return result;
}

std::optional<Secret> KeyringCipher::opened(const Sealed& secret) const
{
    if (secret.parameters.size() != kBlockSize)
        return std::nullopt;
    QByteArray plain(secret.value.size() + kBlockSize, Qt::Uninitialized);
    const Cipher cipher(EVP_CIPHER_CTX_new());
    int head = 0;
    int tail = 0;
    const bool isDone =
        EVP_DecryptInit_ex(cipher.get(), EVP_aes_128_cbc(), nullptr, bytes(m_key), bytes(secret.parameters)) == 1
        && EVP_DecryptUpdate(
               cipher.get(), bytes(plain), &head, bytes(secret.value), static_cast<int>(secret.value.size()))
            == 1
        && EVP_DecryptFinal_ex(cipher.get(), bytes(plain) + head, &tail) == 1;
    if (!isDone)
        return std::nullopt;
    plain.truncate(head + tail);
    return Secret(plain);
}

} // namespace orvella
