#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QString>
#include <QVariantMap>

namespace orvella {

/// The desktop's portal on the test's session bus, as far as it hands out settings.
class FakeSettingsPortal final : public QDBusVirtualObject {
public:
    FakeSettingsPortal();
    ~FakeSettingsPortal() override;

    void start();
    /// Goes away, as a portal that ends or crashes.
    void stop();
    /// Leaves questions unanswered until `answer` is called.
    void hold() { m_isHolding = true; }

    void answer();

    /// Changes a setting and says so.
    void change(const QString& group, const QString& key, const QVariant& value);
    /// Changes a setting while nobody hears of it.
    void put(const QString& group, const QString& key, const QVariant& value) { m_settings[group].insert(key, value); }

    /// How often all settings were asked for.
    [[nodiscard]] int questions() const { return m_questions; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    [[nodiscard]] QString introspect(const QString& path) const override { return path; }

private:
    [[nodiscard]] QDBusMessage settingsFor(const QDBusMessage& question) const;

    QString m_connectionName;
    QDBusConnection m_bus;
    QMap<QString, QVariantMap> m_settings;
    QList<QDBusMessage> m_held;
    bool m_isHolding = false;
    int m_questions = 0;
};

} // namespace orvella
