#pragma once

#include "base/Clock.h"
#include "updates/PackageId.h"
#include "updates/PackageTrouble.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>
#include <QVariant>

#include <coroutine>
#include <expected>
#include <functional>
#include <optional>
#include <stop_token>

class QDBusPendingCallWatcher;

namespace orvella {

/// What PackageKit is to do.
struct PackageRequest {
    /// A method of org.freedesktop.PackageKit.Transaction, and what it takes.
    QString method;
    QVariantList arguments;
    /// Whether the system may ask the viewer for a password.
    bool mayAsk = false;
    /// How long it may be silent before it counts as hung, or as kept from its turn by other programs. While the viewer
    /// is asked it is silent for good reason.
    Clock::duration patience = std::chrono::minutes(2);
};

/// How far it is.
struct PackageProgress {
    enum class Activity { preparing, waiting, asking, downloading, installing };

    Activity activity = Activity::preparing;
    /// Of the activity; nothing where it is not known.
    std::optional<int> percent;

    friend bool operator==(const PackageProgress&, const PackageProgress&) = default;
};

/// A package that a transaction told of, and PackageKit's PkInfoEnum about it.
struct ToldPackage {
    uint info = 0;
    PackageId id;
};

/// One transaction with PackageKit, awaited in a coroutine.
///
/// It ends when PackageKit has finished, is gone or is silent for too long, or when a stop is requested, which
/// withdraws it: PackageKit then ends it as far as it can be ended without harm. A stop resumes the flow at once.
class PackageTransaction final : public QObject {
    Q_OBJECT

public:
    using Answer = std::expected<QList<ToldPackage>, PackageTrouble>;
    using Watch = std::function<void(const PackageProgress&)>;

    PackageTransaction(
        QDBusConnection bus, Clock& clock, PackageRequest request, std::stop_token stop, Watch watch = {});
    ~PackageTransaction() override;

    [[nodiscard]] bool await_ready() const noexcept { return m_stop.stop_requested(); }

    void await_suspend(std::coroutine_handle<> waiting);
    [[nodiscard]] Answer await_resume();

private Q_SLOTS:
    void receiveProperties(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
    void receivePackage(uint info, const QString& id, const QString& summary);
    void receiveError(uint code, const QString& details);
    void receiveItem();
    void receiveFinish(uint exit, uint milliseconds);

private:
    void whenAnswered(const QDBusMessage& question, void (PackageTransaction::*receive)(const QDBusMessage&));
    void receiveTransaction(const QDBusMessage& answer);
    void receiveAcceptance(const QDBusMessage& answer);
    void subscribe();
    void begin();

    void waitOn();
    void stopTimer();
    void withdraw();
    void end(Answer answer);
    void resume();

    QDBusConnection m_bus;
    Clock& m_clock;
    PackageRequest m_request;
    std::stop_token m_stop;
    Watch m_watch;

    std::coroutine_handle<> m_waiting;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
    std::optional<Clock::TimerId> m_timer;
    /// The one who has the transaction, by its unique name, and the transaction's path.
    QString m_owner;
    QString m_path;
    QDBusServiceWatcher m_owners;

    uint m_status = 0;
    uint m_percent = 101;
    QList<ToldPackage> m_told;
    std::optional<PackageTrouble> m_trouble;
    std::optional<Answer> m_answer;
};

} // namespace orvella
