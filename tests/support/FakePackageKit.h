#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QList>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace orvella {

/// PackageKit on the test's session bus. Every transaction ends at once as the test has scripted it, or is held.
class FakePackageKit final : public QDBusVirtualObject {
public:
    struct Package {
        uint info = 0;
        QString id;
    };

    struct Script {
        QList<Package> packages {};
        /// A PkErrorEnum and its text.
        std::optional<std::pair<uint, QString>> error {};
        /// A PkExitEnum; 1 is success.
        uint exit = 1;
        /// The name of a D-Bus error to answer the call with.
        QString refusal {};
        /// Accepts the call and says nothing more.
        bool isHeld = false;
    };

    FakePackageKit();
    ~FakePackageKit() override;

    /// Appears on the bus, or goes from it in the way of a crash.
    void start();
    void stop();

    /// By the method of the transaction; a rehearsal of UpdatePackages is "Simulate".
    QHash<QString, Script> scripts;
    /// Whether it answers no call at all.
    bool isSilent = false;
    /// The name of a D-Bus error to refuse every transaction with.
    QString refusal;

    /// Every call, for example "Resolve(4, orvella)".
    [[nodiscard]] QStringList calls() const { return m_calls; }

    /// Without those that every transaction begins with.
    [[nodiscard]] QStringList requests() const;

    /// What the transaction that is held says.
    void tell(const QVariantMap& properties);
    void tellPackage(const Package& package);
    void tellItem();
    void fail(uint code, const QString& details);
    void finish(uint exit);
    /// Signals of a transaction that comes from somebody else.
    void finishAsStranger(uint exit);

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    [[nodiscard]] QString introspect(const QString& path) const override { return path; }

private:
    void answer(const QDBusMessage& message, const QString& name);
    void signal(const QString& name, const QVariantList& arguments);

    QString m_connectionName;
    QDBusConnection m_bus;
    QStringList m_calls;
    QString m_path;
    int m_transactions = 0;
};

} // namespace orvella
