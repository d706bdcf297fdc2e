#pragma once

#include <QDBusAbstractAdaptor>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <functional>

namespace orvella {

/// What launchers and a second program call on the session bus, as the Desktop Entry Specification has it. It belongs
/// to the object that it is made on.
class DBusApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `activated` is called with what the caller says of its platform.
    DBusApplicationAdaptor(QObject* parent, std::function<void(const QVariantMap&)> activated);

public Q_SLOTS:
    void Activate(const QVariantMap& platform_data);
    /// The program opens no files; it comes to the front all the same.
    void Open(const QStringList& uris, const QVariantMap& platform_data);
    /// There are no actions.
    void ActivateAction(const QString& action_name, const QVariantList& parameter, const QVariantMap& platform_data);

private:
    std::function<void(const QVariantMap&)> m_activated;
};

} // namespace orvella
