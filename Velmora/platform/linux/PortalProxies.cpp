#include "platform/linux/PortalProxies.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

struct Kind {
    /// As the portal writes it.
    QLatin1StringView name;
    /// As libcurl writes it.
    QLatin1StringView scheme;
    int usualPort;
};

constexpr std::array kKinds {
    Kind {"http"_L1, "http"_L1, 80},
    Kind {"https"_L1, "https"_L1, 443},
    // Which version it is, the desktop does not say; names are the proxy's to look up.
    Kind {"socks"_L1, "socks5h"_L1, 1080},
    Kind {"socks4"_L1, "socks4"_L1, 1080},
    Kind {"socks4a"_L1, "socks4a"_L1, 1080},
    Kind {"socks5"_L1, "socks5"_L1, 1080},
    Kind {"socks5h"_L1, "socks5h"_L1, 1080},
};

/// An empty address stands for no proxy, and nothing for a proxy that cannot be used.
std::optional<QUrl> proxyOf(const QString& text)
{
    if (text.compare("direct://"_L1, Qt::CaseInsensitive) == 0)
        return QUrl();
    QUrl proxy(text);
    const auto* const kind = std::ranges::find(kKinds, proxy.scheme(), &Kind::name);
    if (kind == kKinds.end() || !proxy.isValid() || proxy.host().isEmpty())
        return std::nullopt;
    proxy.setScheme(kind->scheme);
    proxy.setPort(proxy.port(kind->usualPort));
    return proxy.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

std::optional<QUrl> firstOf(const QDBusPendingReply<QStringList>& answer)
{
    if (!answer.isValid())
        return std::nullopt;
    for (const auto& text : answer.value()) {
        if (auto proxy = proxyOf(text))
            return proxy;
    }
    return std::nullopt;
}

QDBusMessage questionFor(const QUrl& address)
{
    QUrl server;
    server.setScheme(address.scheme());
    server.setHost(address.host());
    server.setPort(address.port());
    server.setPath(u"/"_s);
    auto question = QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s,
        u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.ProxyResolver"_s, u"Lookup"_s);
    question << server.toString(QUrl::FullyEncoded);
    question.setAutoStartService(false);
    return question;
}

} // namespace

PortalProxies::PortalProxies(QDBusConnection bus, std::chrono::milliseconds patience)
    : m_bus(std::move(bus))
    , m_patience(patience)
{
}

std::optional<QUrl> PortalProxies::wantedFor(QUrl address, std::stop_token stop) const
{
    if (!m_bus.isConnected() || stop.stop_requested())
        return std::nullopt;
    // A blocking call cannot be ended by a stop.
    QEventLoop wait;
    const QDBusPendingCallWatcher answer(m_bus.asyncCall(questionFor(address), static_cast<int>(m_patience.count())));
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &wait, &QEventLoop::quit);
    {
        const std::stop_callback onStop(
            stop, [&wait] { QMetaObject::invokeMethod(&wait, "quit", Qt::QueuedConnection); });
        wait.exec();
    }
    return answer.isFinished() ? firstOf(answer) : std::nullopt;
}

std::optional<QUrl> PortalProxies::wantedFor(const QUrl& address) const
{
    if (!m_bus.isConnected())
        return std::nullopt;
    return firstOf(m_bus.call(questionFor(address), QDBus::Block, static_cast<int>(m_patience.count())));
}

} // namespace orvella
