#include "api/DesktopProxy.h"

#include "api/ThisComputer.h"
#include "platform/Proxies.h"

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

} // namespace

std::optional<QUrl> desktopProxy(const QUrl& address, const Proxies& proxies, std::stop_token stop)
{
    if (environmentNamesProxyFor(address.scheme()) || isThisComputer(address.host()))
        return std::nullopt;
    return proxies.wantedFor(address, std::move(stop));
}

} // namespace orvella
