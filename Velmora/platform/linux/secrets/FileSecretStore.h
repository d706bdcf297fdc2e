#pragma once

#include "platform/BackgroundThread.h"
#include "platform/SecretStore.h"
#include "platform/linux/secrets/SecretFile.h"

namespace orvella {

/// Keeps secrets in a file that only its owner can read, where there is no keyring. See `SecretFile`.
///
/// The file is read and written on a thread of the store. A change that has begun is made, also when the store goes
/// away, which waits for it.
class FileSecretStore final : public SecretStore {
public:
    /// The folder is made when the first item is added.
    explicit FileSecretStore(const QString& folder);

    QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) override;
    QCoro::Task<Finding> look(QString service, QString account) override;
    /// Replaces an item of the same service and account.
    QCoro::Task<> add(QString service, QString account, Secret value) override;
    QCoro::Task<> remove(QString service, QString account) override;

private:
    SecretFile m_file;
    BackgroundThread m_thread;
};

} // namespace orvella
