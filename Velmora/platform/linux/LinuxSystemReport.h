#pragma once

#include "platform/SystemReport.h"
#include "platform/linux/PortalProxies.h"

#include <QDBusConnection>
#include <QProcessEnvironment>

namespace orvella {

/// The distribution, the desktop, who shows status items, and the proxies.
class LinuxSystemReport final : public SystemReport {
public:
    /// `updater` is the path of the library that looks for updates, be it there or not.
    LinuxSystemReport(const QProcessEnvironment& environment, QDBusConnection sessionBus, QString updater = {});

    /// Waits a tenth of a second at most for each of two answers of the session bus, and starts no service.
    [[nodiscard]] std::vector<Fact> facts() const override;

private:
    [[nodiscard]] QString packaging() const;
    [[nodiscard]] QString session() const;
    [[nodiscard]] QString statusArea() const;
    [[nodiscard]] QString proxies() const;
    [[nodiscard]] QString harmless(const QString& variable) const;
    [[nodiscard]] bool hasStatusNotifierHost() const;

    QProcessEnvironment m_environment;
    QDBusConnection m_sessionBus;
    QString m_updater;
    PortalProxies m_proxies;
};

} // namespace orvella
