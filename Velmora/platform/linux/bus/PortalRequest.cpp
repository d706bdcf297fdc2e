#include "platform/linux/bus/PortalRequest.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QRandomGenerator>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kInterface = "org.freedesktop.portal.Request"_L1;

/// Where the portal's documentation says that the request will be.
QString pathFor(const QDBusConnection& bus, const QString& token)
{
    auto sender = bus.baseService().sliced(1);
    return kPath + u"/request/"_s + sender.replace(u'.', u'_') + u'/' + token;
}

} // namespace

PortalRequest::PortalRequest(QDBusConnection bus, const Question& question)
    : m_bus(std::move(bus))
{
    if (!m_bus.isConnected()) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (end())
                    Q_EMIT failed();
            },
            Qt::QueuedConnection);
        return;
    }
    m_owners.setConnection(m_bus);
    m_owners.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    m_owners.addWatchedService(kService);
    connect(&m_owners, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        if (end())
            Q_EMIT failed();
    });
    const auto token = u"orvella%1"_s.arg(QRandomGenerator::global()->generate());
    // Before the question: the answer may come before the reply to it.
    follow(pathFor(m_bus, token));
    ask(question, token);
}

void PortalRequest::close()
{
    if (end())
        m_bus.send(QDBusMessage::createMethodCall(kService, m_path, kInterface, u"Close"_s));
}

void PortalRequest::responded(uint response, const QVariantMap& results)
{
    if (end())
        Q_EMIT answered(response, results);
}

void PortalRequest::follow(const QString& path)
{
    const auto former = std::exchange(m_path, path);
    if (former == path)
        return;
    const auto slot = SLOT(responded(uint, QVariantMap));
    if (!former.isEmpty())
        m_bus.disconnect({}, former, kInterface, u"Response"_s, this, slot);
    m_bus.connect({}, path, kInterface, u"Response"_s, this, slot);
}

void PortalRequest::ask(const Question& question, const QString& token)
{
    auto call = QDBusMessage::createMethodCall(kService, kPath, question.interface, question.method);
    auto options = question.options;
    options.insert(u"handle_token"_s, token);
    call.setArguments(question.arguments + QVariantList {options});
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *finished;
        if (reply.isValid())
            // Portals before 0.9 choose the path themselves.
            follow(reply.value().path());
        else if (end())
            Q_EMIT failed();
    });
}

bool PortalRequest::end()
{
    return !std::exchange(m_hasEnded, true);
}

} // namespace orvella
