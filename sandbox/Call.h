#pragma once

#include <QString>

#include <array>

namespace orvella::sandbox {

/// The calls of the service.
enum class Call { registration, heartbeat, preferences, available, start, complete, click, wallet };

/// How a call is reached, and what it is called on the command line.
struct CallRoute {
    Call call;
    QStringView name;
    QStringView path;
    bool isPost;
    bool isAuthorized;
};

inline constexpr std::array kCallRoutes {
    CallRoute {Call::registration, u"register", u"/api/mac/device/register", true, false},
    CallRoute {Call::heartbeat, u"heartbeat", u"/api/mac/device/heartbeat", true, true},
    CallRoute {Call::preferences, u"preferences", u"/api/mac/preferences", true, true},
    CallRoute {Call::available, u"available", u"/api/mac/ads/available", true, true},
    CallRoute {Call::start, u"start", u"/api/mac/ads/session/start", true, true},
    CallRoute {Call::complete, u"complete", u"/api/mac/ads/session/complete", true, true},
    CallRoute {Call::click, u"click", u"/api/mac/ads/click", true, true},
    CallRoute {Call::wallet, u"wallet", u"/api/mac/wallet", false, true},
};

/// The call behind a path, or null.
[[nodiscard]] inline const CallRoute* findCall(QStringView path)
{
    for (const auto& route : kCallRoutes) {
        if (route.path == path)
            return &route;
    }
    return nullptr;
}

} // namespace orvella::sandbox
