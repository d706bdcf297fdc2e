#pragma once

#include "platform/linux/instance/DBusInstance.h"

#include <QDBusConnection>
#include <QProcessEnvironment>
#include <QTest>

#include <memory>
#include <optional>

namespace orvella {

/// A first program that has not claimed its name yet, for a test to derive from.
class InstanceFixture {
protected:
    using Request = Instance::Request;
    using Requests = QList<Request>;

    void start()
    {
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection);
        QVERIFY(m_bus.isConnected());
        m_first = instance({});
        m_tokens.clear();
        m_requests.clear();
    }

    void finish()
    {
        m_first.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(kConnection);
    }

    void init()
    {
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection);
        QVERIFY(m_bus.isConnected());
        m_first = instance({});
        m_tokens.clear();
        m_requests.clear();
    }

    std::unique_ptr<DBusInstance> instance(const std::optional<QString>& profile)
    {
        return std::make_unique<DBusInstance>(m_bus,
            DBusInstance::Options {
                profile, QProcessEnvironment(), [this](const QString& token) { m_tokens.append(token); }});
    }

    void watch()
    {
        m_first->watch([this](Request request) { m_requests.append(request); });
    }

    std::unique_ptr<DBusInstance> m_first;
    QStringList m_tokens;
    Requests m_requests;

private:
    static inline const QString kConnection = QStringLiteral("first");

    QDBusConnection m_bus {QString()};
};

} // namespace orvella
