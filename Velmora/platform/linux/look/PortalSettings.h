#pragma once

#include "platform/linux/look/LookWishes.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace orvella {

/// The desktop's settings as its portal hands them out: by namespace, then by key.
using PortalSettings = QMap<QString, QVariantMap>;

/// The namespaces that say how things are to look.
[[nodiscard]] QStringList lookNamespaces();

/// What these settings say of it. A value of an unexpected kind says nothing.
[[nodiscard]] LookWishes portalWishes(const PortalSettings& settings);

} // namespace orvella
