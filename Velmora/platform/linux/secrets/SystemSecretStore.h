#pragma once

#include "platform/linux/secrets/AwaitedKeyring.h"
#include "platform/linux/secrets/FileSecretStore.h"
#include "platform/linux/secrets/KeyringMark.h"
#include "platform/linux/secrets/KeyringSecretStore.h"

#include <map>
#include <set>
#include <utility>

namespace orvella {

/// The viewer's keyring or, where no Secret Service answers, a file that only its owner can read.
///
/// An item of the file moves into the keyring when a read finds that there is a keyring and no such item in it. It
/// leaves the file only after the keyring has been seen to hold it and the mark of that stands. An item that the
/// keyring has already counts, and is never overwritten by one that was stored while the keyring was away: the older
/// may be the one that is linked.
///
/// What was answered or added is remembered for this run. It is the answer while the keyring is refused or absent, so
/// an item that the viewer keeps from the keyring serves until the program ends, and is written nowhere. An item of the
/// file that was answered stays the answer, too, when a keyring with another one appears: what was begun by one device
/// cannot be ended by another. The keyring's counts from the next run on.
///
/// Where the keyring could not be read in this run, an item that it may hold is removed only once another has been
/// added to it: the older may be a good one, and without the other there would be none. A later read that succeeds does
/// not change that; it may come between the removal and the addition.
///
/// An item that is known to lie in the keyring is waited for, so that a keyring that comes after us at login is not
/// taken for none: see `KeyringMark` and `AwaitedKeyring`. The mark goes when the item is removed from the keyring, and
/// when the file serves in the keyring's place. A refusal leaves it, for the item is still there.
class SystemSecretStore final : public SecretStore {
public:
    /// `folder` is where the file and the marks lie.
    SystemSecretStore(Clock& clock, const QString& folder);
    SystemSecretStore(const SystemSecretStore&) = delete;
    SystemSecretStore& operator=(const SystemSecretStore&) = delete;
    ~SystemSecretStore() override;

    QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) override;
    /// What the keyring says. Where it is absent, the file serves.
    QCoro::Task<Finding> look(QString service, QString account) override;
    QCoro::Task<> add(QString service, QString account, Secret value) override;
    QCoro::Task<> remove(QString service, QString account) override;

private:
    /// Service and account.
    using Key = std::pair<QString, QString>;
    enum class Place { keyring, file, memory };

    struct Held {
        Secret value;
        Place place;
    };

    QCoro::Task<FromKeyring<std::optional<Secret>>> askKeyring(Key key, std::stop_token stop);
    [[nodiscard]] bool isInKeyring(const Key& key) const;
    std::optional<Secret> rememberedOr(const Key& key, const std::optional<Secret>& kept);
    QCoro::Task<std::optional<Secret>> withoutKeyring(Key key, std::optional<Secret> kept, KeyringTrouble trouble);
    QCoro::Task<Secret> withItem(Key key, Secret item, std::optional<Secret> kept);
    QCoro::Task<std::optional<Secret>> withoutItem(Key key, std::optional<Secret> kept);
    QCoro::Task<> moveToKeyring(Key key, Secret value);
    QCoro::Task<bool> mark(Key key);
    QCoro::Task<> unmark(Key key);

    std::stop_source m_end;
    /// The items of this run.
    std::map<Key, Held> m_held;
    /// What the keyring holds of these could not be read.
    std::set<Key> m_unclear;
    /// These were found in the keyring and not in the file, and none was added since.
    std::set<Key> m_onlyInKeyring;
    qint64 m_additions = 0;
    /// These were marked, and not unmarked since.
    std::set<Key> m_marked;
    qint64 m_unmarkings = 0;
    FileSecretStore m_file;
    KeyringMark m_mark;
    KeyringSecretStore m_keyring;
    AwaitedKeyring m_awaitedKeyring;
};

} // namespace orvella
