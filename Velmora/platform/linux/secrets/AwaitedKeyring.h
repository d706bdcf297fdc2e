#pragma once

#include "platform/linux/secrets/KeyringSecretStore.h"

namespace orvella {

class KeyringWait;

/// Reads from a keyring an item that is known to be in it, and waits for the keyring.
///
/// A service that is absent, silent or failing, or that has no default collection, may come to itself: at login one is
/// started beside us, and some have no collection until the viewer opens a database. While there is no service, nothing
/// is done until there is one; one that fails is asked again after growing pauses. After `kLimit` it
/// counts as absent, and is not waited for again until it has answered.
class AwaitedKeyring final {
public:
    /// A viewer who opens the database of a password manager after login has done so by then.
    static constexpr auto kLimit = std::chrono::minutes(10);

    AwaitedKeyring(Clock& clock, KeyringSecretStore& keyring);
    AwaitedKeyring(const AwaitedKeyring&) = delete;
    AwaitedKeyring& operator=(const AwaitedKeyring&) = delete;
    /// Ends what is under way.
    ~AwaitedKeyring();

    /// As `KeyringSecretStore::readItem`.
    QCoro::Task<FromKeyring<std::optional<Secret>>> readItem(QString service, QString account, std::stop_token stop);

private:
    [[nodiscard]] std::shared_ptr<KeyringWait> sharedWait();

    Clock& m_clock;
    KeyringSecretStore& m_keyring;
    std::stop_source m_end;
    /// The one that is under way.
    std::weak_ptr<KeyringWait> m_wait;
    bool m_hasGivenUp = false;
};

} // namespace orvella
