#pragma once

#include "base/Clock.h"
#include "platform/SecretStore.h"
#include "platform/linux/secrets/FromKeyring.h"

#include <QDBusConnection>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace orvella {

class KeyringSession;

/// The viewer's keyring behind the Secret Service of the session bus (freedesktop.org Secret Service API 0.2).
///
/// Items carry the attributes `service` and `account` and are found by these two alone, whoever stored them.
///
/// What is locked is unlocked first, by the service's own prompt, which belongs to the store: flows that need it while
/// it is up wait for the same one, and it stays up when a flow that waits for it is stopped. Once the viewer has
/// refused, nothing is asked again in this run until the items or the default collection are found unlocked: then the
/// viewer has thought better of it elsewhere, and a later lock is a new one.
///
/// A service that is not there, or silent for `kAnswerLimit`, is absent at once. A call that fails otherwise, and a
/// service that was there before and is not now, are tried again after each of a few pauses; then the service counts as
/// absent, too.
class KeyringSecretStore final : public SecretStore {
public:
    /// How long one call may stay without an answer.
    static constexpr auto kAnswerLimit = std::chrono::seconds(10);

    explicit KeyringSecretStore(Clock& clock, QDBusConnection bus = QDBusConnection::sessionBus());

    KeyringSecretStore(const KeyringSecretStore&) = delete;
    KeyringSecretStore& operator=(const KeyringSecretStore&) = delete;
    /// Ends what is under way. A prompt that is up stays.
    ~KeyringSecretStore() override;

    [[nodiscard]] QDBusConnection bus() const { return m_bus; }

    // The answers in full: the trouble is `absent`, `refused`, `stopped` or, where no item was found, `noCollection`.
    QCoro::Task<FromKeyring<std::optional<Secret>>> readItem(QString service, QString account, std::stop_token stop);
    QCoro::Task<FromKeyring<>> addItem(QString service, QString account, Secret value);
    QCoro::Task<FromKeyring<>> removeItem(QString service, QString account);
    /// Removes the items but the one with this secret; none where that one is not there.
    QCoro::Task<FromKeyring<>> removeOtherItems(QString service, QString account, Secret kept);

    QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) override;
    QCoro::Task<Finding> look(QString service, QString account) override;
    QCoro::Task<> add(QString service, QString account, Secret value) override;
    QCoro::Task<> remove(QString service, QString account) override;

private:
    struct Question;
    using Session = std::shared_ptr<KeyringSession>;
    /// Names an object of the service.
    using Path = QString;
    enum class Wanted { anyItem, everyItem };
    template <class T = std::monostate> using Attempt = std::function<QCoro::Task<FromKeyring<T>>(std::stop_token)>;

    template <class T> QCoro::Task<FromKeyring<T>> persist(Attempt<T> attempt, std::stop_token stop);
    QCoro::Task<FromKeyring<std::optional<Secret>>> readOnce(QString service, QString account, std::stop_token stop);
    QCoro::Task<FromKeyring<>> addOnce(QString service, QString account, Secret value, std::stop_token stop);
    QCoro::Task<FromKeyring<>> removeOnce(QString service, QString account, std::stop_token stop);
    QCoro::Task<FromKeyring<>> removeOthersOnce(QString service, QString account, Secret kept, std::stop_token stop);
    QCoro::Task<FromKeyring<>> removeAll(std::vector<Path> items, std::stop_token stop);

    QCoro::Task<FromKeyring<Session>> session(std::stop_token stop);
    QCoro::Task<FromKeyring<std::vector<Path>>> find(
        QString service, QString account, Wanted wanted, std::stop_token stop);
    QCoro::Task<FromKeyring<std::vector<Path>>> lockedDefault(Session session, std::stop_token stop);
    QCoro::Task<FromKeyring<Path>> openCollection(Session session, std::stop_token stop);
    QCoro::Task<FromKeyring<>> unlock(Session session, std::vector<Path> objects, std::stop_token stop);
    QCoro::Task<FromKeyring<>> askViewer(Attempt<> question, std::stop_token stop);
    QCoro::Task<> ask(Attempt<> question, std::shared_ptr<Question> asked);

    Clock& m_clock;
    QDBusConnection m_bus;
    std::stop_source m_end;
    Session m_session;
    /// What the viewer is being asked.
    std::shared_ptr<Question> m_question;
    bool m_hasRefused = false;
    bool m_wasThere = false;
};

} // namespace orvella
