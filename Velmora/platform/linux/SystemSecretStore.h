#pragma once

#include "platform/linux/FileSecretStore.h"
#include "platform/linux/KeyringSecretStore.h"

namespace orvella {

/// The viewer's keyring or, where no Secret Service answers, a file that only its owner can read.
///
/// An item of the file moves into the keyring when a read finds that there is a keyring and no such item in it. It
/// leaves the file only after the keyring has been seen to hold it. An item that the keyring has already counts, and is
/// never overwritten by one that was stored while the keyring was away: the older may be the one that is linked.
class SystemSecretStore final : public SecretStore {
public:
    /// `folder` is where the file lies.
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
    QCoro::Task<> moveToKeyring(QString service, QString account, Secret value);

    std::stop_source m_end;
    FileSecretStore m_file;
    KeyringSecretStore m_keyring;
};

} // namespace orvella
