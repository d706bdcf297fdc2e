#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/applications/ApplicationUnits.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/X11Windows.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace orvella {

/// The applications that have windows in an X11 session, in the order in which these were opened, and then those that
/// run in systemd units of their own, in any session. There is one entry for each; panels, tray programs, background
/// helpers and this program have none.
///
/// Of a Wayland session only the units are known: the windows that X11 knows there are only those of older programs,
/// which would be a wrong list. Where there are no units either, as in many small sessions, the list is empty. So it is
/// in a Flatpak, which sees neither the units nor the desktop entries of the session.
class LinuxRunningApplications final : public RunningApplications {
public:
    /// `applicationFolders` are the folders with the desktop entries of installed applications.
    LinuxRunningApplications(const QProcessEnvironment& environment, const QStringList& applicationFolders,
        ApplicationUnits units = ApplicationUnits());

    [[nodiscard]] std::vector<RunningApplication> list() const override;

private:
    using Application = DesktopEntries::Application;

    [[nodiscard]] std::vector<const Application*> applicationsOfUnits() const;
    [[nodiscard]] RunningApplication described(
        const X11Windows::Window& window, const std::vector<const Application*>& ofUnits) const;
    [[nodiscard]] RunningApplication described(const Application& application) const;

    bool m_isInFlatpak;
    bool m_isWaylandSession;
    QString m_locale;
    ApplicationUnits m_units;
    mutable DesktopEntries m_entries;
};

} // namespace orvella
