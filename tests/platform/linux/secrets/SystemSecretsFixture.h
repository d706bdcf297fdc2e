#pragma once

#include "platform/linux/secrets/SystemSecretStore.h"
#include "support/FakeClock.h"
#include "support/Outcome.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

namespace orvella {

/// A store over a keyring that is not there yet and an empty folder, for a test to derive from.
class SystemSecretsFixture {
protected:
    static inline const QString kService = QStringLiteral("orvella.device-token");
    static inline const QString kAccount = QStringLiteral("default");

    void start()
    {
        home = std::make_unique<QTemporaryDir>();
        QVERIFY(home->isValid());
        file = std::make_unique<FileSecretStore>(home->path());
        store = std::make_unique<SystemSecretStore>(clock, home->path());
    }

    void finish()
    {
        store.reset();
        file.reset();
        home.reset();
    }

    void wait(QCoro::Task<> task)
    {
        const Outcome outcome(std::move(task));
        QVERIFY(isOver(outcome));
    }

    std::optional<QByteArray> read(SecretStore& secrets, const QString& service = kService)
    {
        const Outcome outcome(secrets.read(service, kAccount, {}));
        if (!isOver(outcome))
            qFatal("The store does not answer.");
        return *outcome ? std::optional((*outcome)->reveal()) : std::nullopt;
    }

    /// Skips the pauses between two attempts, but no limit of a call.
    template <class T> bool isOver(const Outcome<T>& outcome)
    {
        return QTest::qWaitFor(
            [&] {
                if (const auto pause = clock.nextPause(); pause && *pause < KeyringSecretStore::kAnswerLimit)
                    clock.advance(*pause);
                return outcome.isThere();
            },
            20000);
    }

    FakeClock clock;
    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<FileSecretStore> file;
    std::unique_ptr<SystemSecretStore> store;
};

} // namespace orvella
