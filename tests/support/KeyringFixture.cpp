#include "support/KeyringFixture.h"

namespace orvella {

void KeyringFixture::init()
{
    clock = std::make_unique<FakeClock>();
    service = std::make_unique<FakeSecretService>();
    store = std::make_unique<KeyringSecretStore>(*clock);
}

void KeyringFixture::cleanup()
{
    store.reset();
    QCOMPARE(clock->sleepers(), 0U);
    service.reset();
}

} // namespace orvella
