#include "fleet/Device.h"

namespace orvella::fleet {

Device::Device(Surroundings surroundings, qint64 number, Clock::duration roundTrip)
    : m_surroundings(surroundings)
    , m_keyring("token-" + QByteArray::number(number))
    , m_connection(surroundings.clock, surroundings.service, roundTrip, static_cast<quint64>(number))
{
}

void Device::start()
{
    stop();
    auto& shared = m_surroundings.shared;
    const Platform platform {m_surroundings.clock, m_settings, m_keyring, shared.loginItem, shared.locale,
        shared.device, shared.applications, shared.browser, shared.statusItem, shared.windows, shared.look,
        shared.foreground, shared.updater, shared.report, shared.proxies};
    m_state = std::make_unique<AppState>(platform, m_connection);
    m_state->bootstrap();
}

} // namespace orvella::fleet
