#pragma once

#include "base/Secret.h"

#include <QByteArray>

#include <optional>

namespace orvella {

/// Keeps secrets unseen on their way to and from the keyring, by the one method that the freedesktop.org Secret Service
/// API (0.2) has for it: a key is agreed on by Diffie-Hellman over the second Oakley group, and each secret is
/// encrypted with AES-128. It keeps out whoever records the bus, not whoever stands between the two.
class KeyringCipher final {
public:
    /// A secret on its way.
    struct Sealed {
        /// The initialisation vector, 16 bytes.
        QByteArray parameters;
        QByteArray value;
    };

    /// The method's name.
    static constexpr auto kAlgorithm = "dh-ietf1024-sha256-aes128-cbc-pkcs7";

    /// Chooses a private key, which lives until the agreement.
    KeyringCipher();

    /// What the service has to know: a number of 128 bytes, the greatest first.
    [[nodiscard]] QByteArray publicKey() const { return m_publicKey; }

    /// Takes the service's public key. False where it is none that keeps anything secret.
    [[nodiscard]] bool agree(const QByteArray& publicKeyOfService);

    /// After the agreement.
    [[nodiscard]] Sealed sealed(const Secret& secret) const;
    /// Nothing where it was not sealed with this key.
    [[nodiscard]] std::optional<Secret> opened(const Sealed& secret) const;

private:
    QByteArray m_privateKey;
    QByteArray m_publicKey;
    QByteArray m_key;
};

} // namespace orvella
