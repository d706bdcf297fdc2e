#pragma once

#include "core/AppState.h"
#include "fleet/Connection.h"
#include "fleet/OneToken.h"
#include "support/FakePlatform.h"

namespace orvella::fleet {

/// One device with the program's real core: its own settings, keyring, connection and state, over system services that
/// all devices share.
class Device final {
public:
    struct Surroundings {
        Clock& clock;
        ModelService& service;
        FakePlatform& shared;
    };

    Device(Surroundings surroundings, qint64 number, Clock::duration roundTrip);

    /// Starts the program, or starts it again.
    void start();
    void stop() { m_state.reset(); }

    [[nodiscard]] bool isRunning() const { return m_state != nullptr; }

private:
    Surroundings m_surroundings;
    FakeSettings m_settings;
    OneToken m_keyring;
    Connection m_connection;
    std::unique_ptr<AppState> m_state;
};

} // namespace orvella::fleet
