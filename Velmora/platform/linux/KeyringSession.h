#pragma once

#include "base/Clock.h"
#include "base/Secret.h"
#include "platform/linux/FromKeyring.h"
#include "platform/linux/GLibCall.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>

#include <memory>
#include <stop_token>
#include <vector>

using SecretService = struct _SecretService;

namespace orvella {

/// One session with the Secret Service: its calls, each as it is, without a decision.
///
/// A call that stays without an answer for the limit fails with `silent`; prompts are waited for without a limit. A
/// prompt that is dismissed faster than a viewer could was not seen by one: `failed`, not `refused`. The caller keeps
/// the session until its call has ended. Objects of the service are named by their D-Bus paths.
///
/// The object interface of libsecret would hide the prompts inside its calls; here they must be told apart from a call
/// that hangs. So prompting calls are sent as the Secret Service specification (0.2) has them, the rest is libsecret's.
class KeyringSession final {
public:
    using Path = QByteArray;

    struct Found {
        std::vector<Path> unlocked;
        std::vector<Path> locked;
    };

    /// Connects and agrees on how secrets travel, starting the service where the bus can.
    static QCoro::Task<FromKeyring<std::shared_ptr<KeyringSession>>> open(
        Clock& clock, Clock::duration limit, std::stop_token stop);

    KeyringSession(Clock& clock, Clock::duration limit, GLibPointer<SecretService> service);
    KeyringSession(const KeyringSession&) = delete;
    KeyringSession& operator=(const KeyringSession&) = delete;
    ~KeyringSession();

    /// The service that answered at first still runs.
    [[nodiscard]] bool isCurrent() const;

    /// The items with these two attributes, whatever others they have.
    QCoro::Task<FromKeyring<Found>> search(QString service, QString account, std::stop_token stop);
    QCoro::Task<FromKeyring<Secret>> secret(Path item, std::stop_token stop);
    QCoro::Task<FromKeyring<>> createItem(
        Path collection, QString service, QString account, Secret value, std::stop_token stop);
    QCoro::Task<FromKeyring<>> deleteItem(Path item, std::stop_token stop);

    /// The collection that takes new items; empty where there is none yet.
    QCoro::Task<FromKeyring<Path>> defaultCollection(std::stop_token stop);
    /// Asks the viewer for a password.
    QCoro::Task<FromKeyring<>> createDefaultCollection(std::stop_token stop);
    QCoro::Task<FromKeyring<bool>> isLocked(Path collection, std::stop_token stop);
    /// Asks the viewer, where the service finds it necessary.
    QCoro::Task<FromKeyring<>> unlock(std::vector<Path> objects, std::stop_token stop);

private:
    using Variant = GLibPointer<GVariant>;

    QCoro::Task<FromKeyring<Variant>> call(Path object, const char* interface, const char* method,
        const char* replyType, Variant arguments, std::stop_token stop);
    QCoro::Task<FromKeyring<>> agreement(Path prompt, std::stop_token stop);
    [[nodiscard]] GDBusConnection* connection() const;

    Clock& m_clock;
    Clock::duration m_limit;
    GLibPointer<SecretService> m_service;
    /// The unique bus name of the service.
    QByteArray m_owner;
};

} // namespace orvella
