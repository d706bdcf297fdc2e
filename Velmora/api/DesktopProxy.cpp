#include "api/DesktopProxy.h"

#include "platform/Proxies.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>
#include <vector>

namespace orvella {

namespace {

/// As libcurl has it: the scheme's own variable is read in capitals too, but not http's, which a CGI program's caller
/// could set. An empty one counts as none.
bool environmentNamesProxyFor(const QString& scheme)
{
    std::vector<const char*> variables {"all_proxy", "ALL_PROXY"};
    if (scheme == u"https")
        variables.insert(variables.end(), {"https_proxy", "HTTPS_PROXY"});
    else
        variables.push_back("http_proxy");
    return std::ranges::any_of(variables, [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
}

/// RFC 6761, section 6.3; RFC 1122, section 3.2.1.3; RFC 4291, sections 2.5.3 and 2.5.5.2.
bool isThisComputer(const QString& host)
{
    static const QRegularExpression own(
        QStringLiteral(R"(^(([^.]+\.)*localhost\.?|(::ffff:)?127\.\d+\.\d+\.\d+|::1)$)"),
        QRegularExpression::CaseInsensitiveOption);
    return own.match(host).hasMatch();
}

} // namespace

std::optional<QUrl> desktopProxy(const QUrl& address, const Proxies& proxies, std::stop_token stop)
{
    if (environmentNamesProxyFor(address.scheme()) || isThisComputer(address.host()))
        return std::nullopt;
    return proxies.wantedFor(address, std::move(stop));
}

} // namespace orvella
