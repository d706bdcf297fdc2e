#pragma once

#include "platform/Instance.h"
#include "platform/linux/bus/SealedAdaptor.h"

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace orvella {

/// What launchers and a second program call on the session bus, as the Desktop Entry Specification has it. It belongs
/// to the object that it is made on.
class DBusApplicationAdaptor final : public SealedAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `requested` is called with what is asked for and what the caller says of its platform.
    DBusApplicationAdaptor(QObject* parent, std::function<void(Instance::Request, const QVariantMap&)> requested);

    /// The action's name in the desktop entry; nothing for what is no action.
    [[nodiscard]] static std::optional<QString> actionFor(Instance::Request request);

public Q_SLOTS:
    void Activate(const QVariantMap& platform_data);
    /// The program opens no files; it comes to the front all the same.
    void Open(const QStringList& uris, const QVariantMap& platform_data);
    /// An action that there is not does nothing.
    void ActivateAction(const QString& action_name, const QVariantList& parameter, const QVariantMap& platform_data);

private:
    std::function<void(Instance::Request, const QVariantMap&)> m_requested;
};

} // namespace orvella
