#pragma once

#include <QProcess>
#include <QString>

namespace orvella {

/// A real packagekitd on the test's system bus.
class PackageKitDaemon final {
public:
    PackageKitDaemon();
    PackageKitDaemon(const PackageKitDaemon&) = delete;
    PackageKitDaemon& operator=(const PackageKitDaemon&) = delete;
    ~PackageKitDaemon();

    /// Starts it over the packages that this configuration of APT describes, and answers when it is on the bus. Where
    /// it does not come, what it said is printed.
    [[nodiscard]] bool start(const QString& aptConfiguration);
    /// Ends it as a crash would.
    void kill();

private:
    QProcess m_process;
};

} // namespace orvella
