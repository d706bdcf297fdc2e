#pragma once

#include "platform/linux/secrets/FileSecretStore.h"
#include "support/Outcome.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>
#include <sys/stat.h>

namespace orvella {

/// A store whose folder is not there yet, for a test to derive from.
class SecretsFileFixture {
protected:
    static inline const QString kService = QStringLiteral("orvella.device-token");
    static inline const QString kOlderService = QStringLiteral("quillon.device-token");
    static inline const QString kAccount = QStringLiteral("default");

    void start()
    {
        home = std::make_unique<QTemporaryDir>();
        QVERIFY(home->isValid());
        folder = home->filePath(QStringLiteral("state/orvella"));
        path = folder + QStringLiteral("/secrets.json");
        store = std::make_unique<FileSecretStore>(folder);
    }

    void finish()
    {
        store.reset();
        home.reset();
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("The file cannot be read.");
        return file.readAll();
    }

    static void write(const QString& path, const QByteArray& content, mode_t mode = 0600)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()
            || ::fchmod(file.handle(), mode) != 0)
            qFatal("The file cannot be written.");
    }

    void add(const QString& service, const QByteArray& value)
    {
        const Outcome outcome(store->add(service, kAccount, Secret(value)));
        QTRY_VERIFY(outcome.isThere());
    }

    void remove(const QString& service)
    {
        const Outcome outcome(store->remove(service, kAccount));
        QTRY_VERIFY(outcome.isThere());
    }

    std::optional<QByteArray> read(const QString& service)
    {
        const Outcome outcome(store->read(service, kAccount, {}));
        if (!QTest::qWaitFor([&] { return outcome.isThere(); }))
            qFatal("The store does not answer.");
        return *outcome ? std::optional((*outcome)->reveal()) : std::nullopt;
    }

    std::unique_ptr<QTemporaryDir> home;
    QString folder;
    QString path;
    std::unique_ptr<FileSecretStore> store;
};

} // namespace orvella
