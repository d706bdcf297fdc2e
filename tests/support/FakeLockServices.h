#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QHash>
#include <QMutex>
#include <QStringList>
#include <QThread>
#include <QVariant>

namespace orvella {

/// The login manager and the screen savers on the test's session bus. They live in a thread of their own, as the one
/// who asks waits without running its main loop.
class FakeLockServices final : public QDBusVirtualObject {
public:
    FakeLockServices();
    ~FakeLockServices() override;

    /// Makes a service answer every call with this value.
    void answer(const QString& service, const QVariant& value);
    /// Makes a service answer every call with an error.
    void refuse(const QString& service);
    /// Has a service there that never answers.
    void keepSilent(const QString& service);

    /// What was asked, each as "path interface.method(arguments)".
    [[nodiscard]] QStringList questions() const;

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    [[nodiscard]] QString introspect(const QString& path) const override { return path; }

private:
    enum class Manner { answers, refuses, keepsSilent };

    struct Service {
        Manner manner = Manner::keepsSilent;
        QVariant value;
    };

    void offer(const QString& name, const Service& service);

    QString m_connectionName;
    QDBusConnection m_bus;
    QThread m_thread;
    mutable QMutex m_mutex;
    QHash<QString, Service> m_services;
    QStringList m_questions;
};

} // namespace orvella
