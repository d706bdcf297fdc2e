#include "platform/linux/instance/DBusInstance.h"

#include "base/ApplicationId.h"
#include "platform/linux/instance/DBusApplicationAdaptor.h"
#include "platform/linux/instance/DBusReportAdaptor.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMilliseconds = 2000;
/// A keyring that does not answer is given up before.
constexpr int kReportPatienceMilliseconds = 15000;
constexpr auto kInterface = "org.freedesktop.Application"_L1;
constexpr auto kToken = "activation-token"_L1;
constexpr auto kStartupId = "desktop-startup-id"_L1;

QString nameFor(const std::optional<QString>& profile)
{
    if (!profile)
        return kApplicationId;
    constexpr qsizetype kDigits = 16;
    const auto hash = QCryptographicHash::hash(profile->toUtf8(), QCryptographicHash::Sha256).toHex().left(kDigits);
    return kApplicationId + u".Profile"_s + QString::fromLatin1(hash);
}

/// The object that the Desktop Entry Specification derives from a name.
QString pathFor(const QString& name)
{
    auto path = u'/' + name;
    return path.replace(u'.', u'/').replace(u'-', u'_');
}

QVariantMap platformData(const QProcessEnvironment& environment)
{
    QVariantMap data;
    const auto insert = [&](const QString& key, const QString& variable) {
        if (const auto value = environment.value(variable); !value.isEmpty())
            data.insert(key, value);
    };
    insert(kToken, u"XDG_ACTIVATION_TOKEN"_s);
    insert(kStartupId, u"DESKTOP_STARTUP_ID"_s);
    return data;
}

} // namespace

DBusInstance::DBusInstance(QDBusConnection bus, Options options)
    : m_bus(std::move(bus))
    , m_report(new DBusReportAdaptor(this, m_bus))
    , m_options(std::move(options))
    , m_lock(m_options.lockFile)
    , m_name(nameFor(m_options.profile))
    , m_path(pathFor(m_name))
{
    new DBusApplicationAdaptor(this, [this](Request request, const QVariantMap& data) { receive(request, data); });
}

DBusInstance::~DBusInstance()
{
    m_bus.unregisterObject(m_path);
    if (m_isOwner)
        m_bus.unregisterService(m_name);
}

bool DBusInstance::claim(Request request)
{
    const auto isFirst = isFirstOnBus(request);
    if (isFirst == false)
        return false;
    // Where the bus is there, this is for a later program that finds none.
    const bool hasLock = m_lock.take();
    return isFirst.value_or(hasLock);
}

std::optional<bool> DBusInstance::isFirstOnBus(Request request)
{
    // Whoever sees the name can call at once.
    if (!m_bus.isConnected() || !m_bus.registerObject(m_path, this, QDBusConnection::ExportAdaptors))
        return std::nullopt;
    // An owner may end between the request and the call. One that ends over and over is none.
    constexpr int kAttempts = 3;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        m_isOwner = requestName();
        if (m_isOwner) {
            takeWhatTheBusHasKept();
            return true;
        }
        if (tellOwner(request) || hasOwner()) {
            m_bus.unregisterObject(m_path);
            return false;
        }
    }
    return std::nullopt;
}

void DBusInstance::watch(std::function<void(Request)> requested)
{
    m_requested = std::move(requested);
    if (!m_requests.empty())
        QMetaObject::invokeMethod(this, &DBusInstance::handOver, Qt::QueuedConnection);
}

void DBusInstance::offerReport(std::function<QCoro::Task<QString>()> report)
{
    m_report->answerWith(std::move(report));
}

Instance::Running DBusInstance::running() const
{
    if (!m_bus.isConnected() || !hasOwner())
        return {};
    auto call = QDBusMessage::createMethodCall(m_name, m_path, DBusReportAdaptor::interfaceName(), u"Diagnose"_s);
    call.setAutoStartService(false);
    const QDBusReply<QString> reply = m_bus.call(call, QDBus::Block, kReportPatienceMilliseconds);
    return {true, reply.isValid() ? std::optional(reply.value()) : std::nullopt};
}

bool DBusInstance::requestName()
{
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = m_bus.interface()->registerService(
        m_name, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

bool DBusInstance::hasOwner() const
{
    const QDBusReply<bool> reply = m_bus.interface()->isServiceRegistered(m_name);
    return reply.isValid() && reply.value();
}

bool DBusInstance::tellOwner(Request request) const
{
    if (request == Request::nothing)
        return hasOwner();
    const auto action = DBusApplicationAdaptor::actionFor(request);
    auto call =
        QDBusMessage::createMethodCall(m_name, m_path, kInterface, action ? u"ActivateAction"_s : u"Activate"_s);
    if (action)
        call << *action << QVariantList();
    call << platformData(m_options.environment);
    call.setAutoStartService(false);
    return m_bus.call(call, QDBus::Block, kPatienceMilliseconds).type() == QDBusMessage::ReplyMessage;
}

void DBusInstance::takeWhatTheBusHasKept()
{
    // What the bus has started the program for it delivers together with the name, so before the answer to any later
    // question.
    static_cast<void>(hasOwner());
    m_isStarting = true;
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    m_isStarting = false;
}

void DBusInstance::receive(Request request, const QVariantMap& data)
{
    auto token = data.value(kToken).toString();
    if (token.isEmpty())
        token = data.value(kStartupId).toString();
    if (m_options.takeActivationToken && !token.isEmpty())
        m_options.takeActivationToken(std::move(token));
    if (m_isStarting && request == Request::reopen)
        return;
    m_requests.push_back(request);
    // The caller has its answer first.
    QMetaObject::invokeMethod(this, &DBusInstance::handOver, Qt::QueuedConnection);
}

void DBusInstance::handOver()
{
    if (!m_requested)
        return;
    for (const auto request : std::exchange(m_requests, {})) {
        // A copy, because the listener may replace itself.
        const auto requested = m_requested;
        requested(request);
    }
}

} // namespace orvella
