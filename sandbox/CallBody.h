#pragma once

#include "base/Json.h"
#include "sandbox/Device.h"

#include <QString>
#include <QStringList>

#include <expected>

/// The bodies of the calls, read strictly. A problem is one sentence; an empty one says that all is well.
namespace orvella::sandbox::CallBody {

struct Start {
    QString campaignId;
    QString creativeId;
    bool anonymousMode = false;
    QString language;
    QStringList matchedCategories;
};

/// Name, version, language and settings of a device that registers.
[[nodiscard]] std::expected<Device, QString> registration(const Json& body);

// Each of these writes what it reads into the device.
[[nodiscard]] QString heartbeat(const Json& body, Device& device);
[[nodiscard]] QString availability(const Json& body, Device& device);
[[nodiscard]] QString preferences(const Json& body, Device& device);

[[nodiscard]] std::expected<Start, QString> start(const Json& body);

/// The session's identifier.
[[nodiscard]] std::expected<QString, QString> session(const Json& body);

} // namespace orvella::sandbox::CallBody
