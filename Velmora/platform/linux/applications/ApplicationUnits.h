#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace orvella {

/// The units of the viewer's session that applications run in, read from the control groups of systemd's user manager.
/// There are some where the desktop gives each application a unit of its own, as GNOME and KDE Plasma do, whatever
/// draws their windows.
class ApplicationUnits final {
public:
    /// `processes` and `controlGroups` are where the system shows its processes and its groups.
    explicit ApplicationUnits(
        QString processes = QStringLiteral("/proc"), QString controlGroups = QStringLiteral("/sys/fs/cgroup"));

    /// For each unit that has processes now, the desktop file IDs that it may stand for, the likeliest first; in the
    /// order of these. Read afresh; empty where there is no such manager, or the groups are not version 2.
    [[nodiscard]] std::vector<QStringList> running() const;

private:
    QString m_processes;
    QString m_controlGroups;
};

} // namespace orvella
