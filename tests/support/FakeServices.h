#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QHash>
#include <QMutex>
#include <QStringList>
#include <QThread>
#include <QVariant>

namespace orvella {

/// Services of the desktop, the login manager among them, on the test's session bus. They live in a thread of their
/// own, as the one who asks waits without running its main loop.
class FakeServices final : public QDBusVirtualObject {
public:
    FakeServices();
    ~FakeServices() override;

    /// Makes a service answer with this value: every call, or the one that is written "path interface.method".
    void answer(const QString& service, const QVariant& value) { answer(service, {}, value); }

    void answer(const QString& service, const QString& call, const QVariant& value);
    /// Makes a service answer with an error.
    void refuse(const QString& service, const QString& call = {});
    /// Has a service there that never answers.
    void keepSilent(const QString& service, const QString& call = {});

    /// What was asked, each as "path interface.method(arguments)".
    [[nodiscard]] QStringList questions() const;

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    [[nodiscard]] QString introspect(const QString& path) const override { return path; }

private:
    enum class Manner { answers, refuses, keepsSilent };

    struct Behaviour {
        Manner manner = Manner::keepsSilent;
        QVariant value;
    };

    void offer(const QString& service, const QString& call, const Behaviour& behaviour);

    QString m_connectionName;
    QDBusConnection m_bus;
    QThread m_thread;
    mutable QMutex m_mutex;
    /// By service and by call.
    QHash<QString, Behaviour> m_behaviours;
    QStringList m_questions;
};

} // namespace orvella
