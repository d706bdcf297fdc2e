#pragma once

#include "platform/linux/secrets/KeyringSecretStore.h"
#include "support/FakeClock.h"
#include "support/FakeSecretService.h"
#include "support/Outcome.h"

#include <QTest>

#include <memory>

namespace orvella {

/// What a test of the store over a played keyring starts from: a keyring that is not there yet, before each function.
class KeyringFixture : public QObject {
    Q_OBJECT

protected:
    using Reading = Outcome<std::optional<Secret>>;

    static inline const QString kService = QStringLiteral("orvella.device-token");
    static inline const QString kAccount = QStringLiteral("default");

    Reading read(std::stop_token stop = {}) { return Reading(store->read(kService, kAccount, stop)); }

    std::unique_ptr<FakeClock> clock;
    std::unique_ptr<FakeSecretService> service;
    std::unique_ptr<KeyringSecretStore> store;

private Q_SLOTS:
    void init();
    void cleanup();
};

} // namespace orvella
