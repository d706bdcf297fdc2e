#include "api/ThisComputer.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace orvella {

namespace {

constexpr std::uint8_t kLoopbackNetwork = 127;
constexpr std::size_t kMappedV4 = 12;

} // namespace

bool isThisComputer(const QString& host)
{
    if (host.compare(u"localhost", Qt::CaseInsensitive) == 0 || host.endsWith(u".localhost", Qt::CaseInsensitive))
        return true;
    // What is no address by these rules counts as a name, for which the network is asked.
    const auto text = host.toLatin1();
    if (std::array<std::uint8_t, sizeof(in_addr)> v4 {}; ::inet_pton(AF_INET, text.constData(), v4.data()) == 1)
        return v4.front() == kLoopbackNetwork;
    in6_addr v6 {};
    if (::inet_pton(AF_INET6, text.constData(), &v6) != 1)
        return false;
    return IN6_IS_ADDR_LOOPBACK(&v6) || (IN6_IS_ADDR_V4MAPPED(&v6) && v6.s6_addr[kMappedV4] == kLoopbackNetwork);
}

} // namespace orvella
