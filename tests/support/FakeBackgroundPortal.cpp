#include "support/FakeBackgroundPortal.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QUuid>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kRequest = "org.freedesktop.portal.Request"_L1;

} // namespace

FakeBackgroundPortal::FakeBackgroundPortal()
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName))
{
}

FakeBackgroundPortal::~FakeBackgroundPortal()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void FakeBackgroundPortal::start()
{
    if (!m_bus.registerVirtualObject(kPath, this, QDBusConnection::SubPath) || !m_bus.registerService(kService))
        qFatal("There is another portal on the bus.");
}

void FakeBackgroundPortal::stop()
{
    m_bus.unregisterService(kService);
    m_bus.unregisterObject(kPath);
}

QString FakeBackgroundPortal::path(qsizetype request) const
{
    if (!ownPath.isEmpty())
        return ownPath;
    auto sender = m_calls.at(request).service().sliced(1);
    return kPath + u"/request/"_s + sender.replace(u'.', u'_') + u'/'
        + m_requests.at(request).value(u"handle_token"_s).toString();
}

void FakeBackgroundPortal::answer(qsizetype request, uint response, const QVariantMap& results)
{
    auto signal =
        QDBusMessage::createTargetedSignal(m_calls.at(request).service(), path(request), kRequest, u"Response"_s);
    signal << response << results;
    m_bus.send(signal);
    if (reply == Reply::afterTheAnswer)
        m_bus.send(m_calls.at(request).createReply(QVariant::fromValue(QDBusObjectPath(path(request)))));
}

bool FakeBackgroundPortal::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    if (message.interface() == kRequest && message.member() == u"Close") {
        m_closed.append(message.path());
        return true;
    }
    if (message.interface() != u"org.freedesktop.portal.Background" || message.member() != u"RequestBackground"
        || message.signature() != u"sa{sv}")
        return false;
    m_calls.append(message);
    m_requests.append(qdbus_cast<QVariantMap>(message.arguments().at(1)));
    if (reply == Reply::beforeTheAnswer)
        m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path(m_calls.size() - 1)))));
    if (reply == Reply::refused)
        m_bus.send(message.createErrorReply(QDBusError::AccessDenied, u"no"_s));
    return true;
}

} // namespace orvella
