#pragma once

#include "base/Secret.h"

#include <QCoroTask>
#include <QString>

#include <optional>
#include <stop_token>

namespace orvella {

/// The viewer's keyring: one item for each service and account.
///
/// Nothing here blocks the main thread. Failures are silent by contract: a store that refuses reads as empty and keeps
/// what it has. While the viewer is being asked to unlock the keyring, calls wait.
///
/// A change goes on when the flow that asked for it is stopped, and ends with the store at the latest. So whoever waits
/// for one may resume when the store is gone, and asks its own stop token before it touches the store again.
class SecretStore {
public:
    /// What a store has to say of an item.
    enum class Finding {
        item,
        noItem,
        /// There may be one; the viewer has not been asked to unlock, or has not answered.
        locked,
        /// The viewer did not want to unlock.
        refused,
        /// There is no store, or it does not answer.
        absent,
    };

    virtual ~SecretStore() = default;

    /// The item's bytes. Nothing where there clearly is no item, where the viewer refuses to unlock or there is no
    /// store and the item is not known from this run, or where `stop` was requested.
    virtual QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) = 0;

    /// What a read would find, without asking the viewer for anything.
    virtual QCoro::Task<Finding> look(QString service, QString account) = 0;

    /// Adds an item. It does not look for an older one: remove that first.
    virtual QCoro::Task<> add(QString service, QString account, Secret value) = 0;

    /// Removes every item of the service and account.
    virtual QCoro::Task<> remove(QString service, QString account) = 0;
};

} // namespace orvella
