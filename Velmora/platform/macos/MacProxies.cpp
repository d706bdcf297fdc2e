#include "platform/macos/MacProxies.h"

#include <QNetworkProxy>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

QUrl addressOf(const QNetworkProxy& proxy, const QString& scheme)
{
    QUrl address;
    address.setScheme(scheme);
    address.setHost(proxy.hostName());
    address.setPort(proxy.port());
    address.setUserName(proxy.user());
    address.setPassword(proxy.password());
    return address;
}

} // namespace

std::optional<QUrl> MacProxies::wantedFor(QUrl address, std::stop_token stop) const
{
    if (stop.stop_requested())
        return std::nullopt;
    return firstUsable(QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(address)));
}

std::optional<QUrl> MacProxies::firstUsable(const QList<QNetworkProxy>& proxies)
{
    for (const auto& proxy : proxies) {
        switch (proxy.type()) {
        case QNetworkProxy::NoProxy:
            return QUrl();
        case QNetworkProxy::HttpProxy:
        case QNetworkProxy::HttpCachingProxy:
            return addressOf(proxy, u"http"_s);
        case QNetworkProxy::Socks5Proxy:
            return addressOf(proxy, u"socks5h"_s);
        case QNetworkProxy::DefaultProxy:
        case QNetworkProxy::FtpCachingProxy:
            break;
        }
    }
    return std::nullopt;
}

} // namespace orvella
