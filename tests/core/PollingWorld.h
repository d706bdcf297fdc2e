#pragma once

#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <map>
#include <memory>

namespace orvella {

/// The state of a device that is registered, with a service that answers everything.
struct PollingWorld {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;

    explicit PollingWorld(const std::map<QString, Json>& settings = {})
    {
        platform.settings.values = settings;
        platform.secrets.put(Keychain::kService, "token");
        transport.answerEverything();
        state = std::make_unique<AppState>(platform.lend(), transport);
    }

    void poll()
    {
        state->pollForAd();
        settle();
    }

    [[nodiscard]] Json::Object lastBody(const QString& path) const { return transport.requests(path).back().body; }
};

} // namespace orvella
