#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <utility>

namespace orvella {

/// A desktop's status area on the session bus: it lists the items that register and talks to them as a panel does. It
/// has a connection of its own, so that the bus sees it as another program.
class FakeStatusArea final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    FakeStatusArea();
    ~FakeStatusArea() override;

    /// Offers itself to the items.
    [[nodiscard]] bool start();
    /// Answers the next registrations with an error, as a watcher that has its name but is not ready yet.
    void refuse(bool refuses) { m_refuses = refuses; }
    /// Calls this whenever an item registers, at that very moment.
    void whenRegistered(std::function<void()> registered) { m_registered = std::move(registered); }

    /// Says that a panel has come that shows items.
    void announceHost();
    /// Goes away, as a panel that ends or crashes.
    void stop();

    /// The names under which items registered since the start, each as often as it did; refused ones too.
    [[nodiscard]] QStringList items() const { return m_items; }

    [[nodiscard]] bool hasHost() const { return true; }

    [[nodiscard]] int protocolVersion() const { return 0; }

    /// The signals that the items sent since the last call, by name.
    [[nodiscard]] QStringList takeSignals();
    /// Waits until everything that the item has sent until now is here.
    void synchronise(const QString& item);

    /// A property of an item, as it comes over the bus; invalid where there is none.
    [[nodiscard]] QVariant read(const QString& item, const QString& name);
    /// Calls a method of an item and waits for the answer.
    QDBusMessage call(const QString& item, const QString& method, const QVariantList& arguments);

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& service);
    void heard(const QDBusMessage& signal);

private:
    QDBusMessage ask(const QDBusMessage& question);

    QString m_connectionName;
    QDBusConnection m_bus;
    QStringList m_items;
    QStringList m_signals;
    std::function<void()> m_registered;
    bool m_refuses = false;
};

} // namespace orvella
