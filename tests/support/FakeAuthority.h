#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QSet>
#include <QStringList>

namespace orvella {

/// PolicyKit on the test's system bus: it decides as the test wants it, and asks nobody.
class FakeAuthority final : public QDBusVirtualObject {
public:
    FakeAuthority();
    ~FakeAuthority() override;

    /// The actions that are refused, without "org.freedesktop.packagekit."; others are allowed.
    QSet<QString> refused;
    /// The actions that stay undecided, as if the viewer was thinking of the password.
    QSet<QString> held;

    /// What was asked for, each followed by " with password" where one might be asked for.
    [[nodiscard]] QStringList questions() const { return m_questions; }

    /// Allows what stayed undecided.
    void release();

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    [[nodiscard]] QString introspect(const QString& path) const override { return path; }

private:
    void decide(const QDBusMessage& question);

    QString m_connectionName;
    QDBusConnection m_bus;
    QStringList m_questions;
    QList<QDBusMessage> m_undecided;
};

} // namespace orvella
