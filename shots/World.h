#pragma once

#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "ui/look/Look.h"

#include "core/AppState.h"

namespace orvella {

/// The program's state without a system around it, in one of the two schemes.
struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;
    std::unique_ptr<Look> look;

    explicit World(DesktopLook::Scheme scheme)
    {
        platform.windows.composites = true;
        platform.look.current = scheme;
        transport.answerEverything();
        look = std::make_unique<Look>(platform.look);
    }

    /// With the settings as they are in the platform by now.
    AppState& start()
    {
        state = std::make_unique<AppState>(platform.lend(), transport);
        return *state;
    }
};

} // namespace orvella
