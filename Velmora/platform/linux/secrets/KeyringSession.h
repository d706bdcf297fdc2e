#pragma once

#include "base/Clock.h"
#include "base/Secret.h"
#include "platform/linux/secrets/FromKeyring.h"
#include "platform/linux/secrets/KeyringCipher.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace orvella {

/// One session with the Secret Service: its calls, each as it is, without a decision.
///
/// A call that stays without an answer for the limit fails with `silent`; prompts are waited for without a limit. A
/// prompt that is dismissed faster than a viewer could was not seen by one: `failed`, not `refused`. The caller keeps
/// the session until its call has ended. Objects of the service are named by their D-Bus paths.
///
/// The calls are those of the freedesktop.org Secret Service API, 0.2. Secrets travel encrypted, but with a service
/// that does not know how.
class KeyringSession final {
public:
    using Path = QString;

    struct Found {
        std::vector<Path> unlocked;
        std::vector<Path> locked;
    };

    /// Connects and agrees on how secrets travel, starting the service where the bus can.
    static QCoro::Task<FromKeyring<std::shared_ptr<KeyringSession>>> open(
        Clock& clock, Clock::duration limit, QDBusConnection bus, std::stop_token stop);

    /// What service and program have agreed on.
    struct Agreement {
        /// The unique bus name of the service.
        QString owner;
        /// What the service calls this session.
        Path session;
        /// Nothing where secrets travel as they are.
        std::optional<KeyringCipher> cipher;
    };

    KeyringSession(Clock& clock, Clock::duration limit, QDBusConnection bus, Agreement agreement);
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
    /// A method of the service's objects and the types of its answer.
    struct Method {
        QLatin1StringView interface;
        QLatin1StringView name;
        QLatin1StringView answer;
    };

    /// Nothing where the service does not know the method.
    static QCoro::Task<FromKeyring<std::optional<Agreement>>> agreeOn(Clock& clock, Clock::duration limit,
        QDBusConnection bus, std::optional<KeyringCipher> cipher, std::stop_token stop);
    QCoro::Task<FromKeyring<QVariantList>> call(
        Path object, Method method, QVariantList arguments, std::stop_token stop);
    QCoro::Task<FromKeyring<>> agreement(Path prompt, std::stop_token stop);

    Clock& m_clock;
    Clock::duration m_limit;
    QDBusConnection m_bus;
    Agreement m_agreement;
    QDBusServiceWatcher m_owners;
    bool m_isOwnerGone = false;
};

} // namespace orvella
