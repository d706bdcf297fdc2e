#pragma once

#include "sandbox/ServiceTime.h"

#include <QString>
#include <QStringList>

namespace orvella::sandbox {

/// The viewer's privacy settings as a device last told them.
struct PrivacySettings {
    bool anonymousMode = true;
    bool appSignalConsent = false;
    bool autoOpenAds = false;

    /// Whether the device may send categories at all.
    [[nodiscard]] bool allowsCategories() const { return appSignalConsent && !anonymousMode; }

    friend bool operator==(const PrivacySettings&, const PrivacySettings&) = default;
};

/// A registered device.
struct Device {
    QString id;
    QString name;
    QString appVersion;
    QString language;
    PrivacySettings settings;
    QStringList categories;
    QString activationCode;
    Moment registeredAt;
    Moment seenAt;
    /// The account that the device belongs to; empty while it is not linked.
    QString viewer;

    [[nodiscard]] bool isLinked() const { return !viewer.isEmpty(); }
};

} // namespace orvella::sandbox
