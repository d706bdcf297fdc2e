#include "updates/PackageTransaction.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QLocale>

#include <limits>
#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kService = "org.freedesktop.PackageKit"_L1;
constexpr auto kTransaction = "org.freedesktop.PackageKit.Transaction"_L1;
constexpr auto kProperties = "org.freedesktop.DBus.Properties"_L1;

// Patience is counted by the clock, so that the bus needs none of its own.
constexpr int kWithoutLimit = std::numeric_limits<int>::max();

constexpr uint kSuccess = 1;
constexpr uint kWaitingForAuthorization = 31;

/// From PackageKit's PkStatusEnum.
PackageProgress::Activity activityOf(uint status)
{
    using enum PackageProgress::Activity;
    switch (status) {
    case 1: // wait
    case 30: // waiting-for-lock
        return waiting;
    case kWaitingForAuthorization:
        return asking;
    case 8: // download
        return downloading;
    case 9: // install
    case 10: // update
    case 11: // cleanup
    case 16: // commit
    case 36: // run-hook
        return installing;
    default:
        return preparing;
    }
}

/// In the queue, or before another program's lock, nothing is said for as long as the other one takes.
PackageTrouble::Kind kindOfSilence(uint status)
{
    const bool isQueued = activityOf(status) == PackageProgress::Activity::waiting;
    return isQueued ? PackageTrouble::Kind::busy : PackageTrouble::Kind::silent;
}

} // namespace

PackageTransaction::PackageTransaction(
    QDBusConnection bus, Clock& clock, PackageRequest request, std::stop_token stop, Watch watch)
    : m_bus(std::move(bus))
    , m_clock(clock)
    , m_request(std::move(request))
    , m_stop(std::move(stop))
    , m_watch(std::move(watch))
{
}

PackageTransaction::~PackageTransaction()
{
    stopTimer();
}

void PackageTransaction::await_suspend(std::coroutine_handle<> waiting)
{
    m_waiting = waiting;
    if (m_bus.isConnected()) {
        waitOn();
        whenAnswered(QDBusMessage::createMethodCall(
                         kService, u"/org/freedesktop/PackageKit"_s, kService, u"CreateTransaction"_s),
            &PackageTransaction::receiveTransaction);
    } else {
        // A call would never be answered.
        end(std::unexpected(PackageTrouble {PackageTrouble::Kind::absent, {}}));
    }
    m_onStop.emplace(m_stop, [this] {
        withdraw();
        resume();
    });
}

PackageTransaction::Answer PackageTransaction::await_resume()
{
    return m_answer ? std::move(*m_answer) : std::unexpected(PackageTrouble {PackageTrouble::Kind::cancelled, {}});
}

void PackageTransaction::whenAnswered(
    const QDBusMessage& question, void (PackageTransaction::*receive)(const QDBusMessage&))
{
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(question, kWithoutLimit), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, receive](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        (this->*receive)(finished->reply());
    });
}

void PackageTransaction::receiveTransaction(const QDBusMessage& answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage) {
        end(std::unexpected(troubleOfBus(answer.errorName())));
        return;
    }
    m_owner = answer.service();
    m_path = answer.arguments().value(0).value<QDBusObjectPath>().path();
    if (m_path.isEmpty()) {
        end(std::unexpected(PackageTrouble {}));
        return;
    }
    subscribe();
    begin();
}

/// By the unique name: nobody else can speak for the transaction, and a service that is started anew does not know it.
void PackageTransaction::subscribe()
{
    m_bus.connect(m_owner, m_path, kProperties, u"PropertiesChanged"_s, this,
        SLOT(receiveProperties(QString, QVariantMap, QStringList)));
    m_bus.connect(m_owner, m_path, kTransaction, u"Package"_s, this, SLOT(receivePackage(uint, QString, QString)));
    m_bus.connect(m_owner, m_path, kTransaction, u"ErrorCode"_s, this, SLOT(receiveError(uint, QString)));
    m_bus.connect(m_owner, m_path, kTransaction, u"ItemProgress"_s, this, SLOT(receiveItem()));
    m_bus.connect(m_owner, m_path, kTransaction, u"Finished"_s, this, SLOT(receiveFinish(uint, uint)));
    m_owners.setConnection(m_bus);
    m_owners.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    m_owners.addWatchedService(m_owner);
    connect(&m_owners, &QDBusServiceWatcher::serviceUnregistered, this,
        [this] { end(std::unexpected(PackageTrouble {PackageTrouble::Kind::gone, {}})); });
}

void PackageTransaction::begin()
{
    auto hints = QDBusMessage::createMethodCall(m_owner, m_path, kTransaction, u"SetHints"_s);
    hints << QStringList {u"locale=%1.UTF-8"_s.arg(QLocale().name()), u"background=false"_s,
        m_request.mayAsk ? u"interactive=true"_s : u"interactive=false"_s};
    // A service that does not take them works all the same.
    m_bus.send(hints);
    auto call = QDBusMessage::createMethodCall(m_owner, m_path, kTransaction, m_request.method);
    call.setArguments(m_request.arguments);
    whenAnswered(call, &PackageTransaction::receiveAcceptance);
}

void PackageTransaction::receiveAcceptance(const QDBusMessage& answer)
{
    if (answer.type() == QDBusMessage::ReplyMessage)
        return;
    auto trouble = troubleOfBus(answer.errorName());
    // There was one a moment ago.
    if (trouble.kind == PackageTrouble::Kind::absent)
        trouble.kind = PackageTrouble::Kind::gone;
    end(std::unexpected(std::move(trouble)));
}

void PackageTransaction::receiveProperties(
    const QString& interface, const QVariantMap& changed, const QStringList& /*invalidated*/)
{
    if (interface != kTransaction)
        return;
    m_status = changed.value(u"Status"_s, m_status).toUInt();
    m_percent = changed.value(u"Percentage"_s, m_percent).toUInt();
    waitOn();
    if (m_watch && !m_answer) {
        const bool isKnown = m_percent <= 100;
        m_watch({activityOf(m_status), isKnown ? std::optional(static_cast<int>(m_percent)) : std::nullopt});
    }
}

void PackageTransaction::receivePackage(uint info, const QString& id, const QString& /*summary*/)
{
    waitOn();
    if (auto package = PackageId::parse(id))
        m_told.append({info, std::move(*package)});
}

void PackageTransaction::receiveError(uint code, const QString& details)
{
    waitOn();
    // The first one is the reason for the others.
    if (!m_trouble)
        m_trouble = troubleOfCode(code, details);
}

void PackageTransaction::receiveItem()
{
    waitOn();
}

void PackageTransaction::receiveFinish(uint exit, uint /*milliseconds*/)
{
    if (exit == kSuccess)
        end(std::move(m_told));
    else
        end(std::unexpected(m_trouble.value_or(troubleOfExit(exit))));
}

/// Whatever comes from PackageKit shows that it is alive.
void PackageTransaction::waitOn()
{
    stopTimer();
    // Where nobody may be asked, it is not the viewer who is waited for.
    if (m_answer || (m_request.mayAsk && m_status == kWaitingForAuthorization))
        return;
    m_timer = m_clock.startTimer(m_request.patience, [this] {
        m_timer.reset();
        withdraw();
        end(std::unexpected(PackageTrouble {kindOfSilence(m_status), {}}));
    });
}

void PackageTransaction::stopTimer()
{
    if (const auto timer = std::exchange(m_timer, std::nullopt))
        m_clock.stopTimer(*timer);
}

/// A transaction that has not been begun goes away by itself.
void PackageTransaction::withdraw()
{
    if (!m_path.isEmpty() && !m_answer)
        m_bus.send(QDBusMessage::createMethodCall(m_owner, m_path, kTransaction, u"Cancel"_s));
}

/// The flow goes on once the loop turns again, as it takes this object with it, whose slot or child is speaking.
void PackageTransaction::end(Answer answer)
{
    if (m_answer)
        return;
    m_answer = std::move(answer);
    stopTimer();
    QMetaObject::invokeMethod(this, &PackageTransaction::resume, Qt::QueuedConnection);
}

void PackageTransaction::resume()
{
    if (const auto flow = std::exchange(m_waiting, nullptr))
        flow.resume();
}

} // namespace orvella
