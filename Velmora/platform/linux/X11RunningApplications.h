#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/DesktopEntries.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace orvella {

/// The applications that have windows in an X11 session: one entry for each, without panels, tray programs and this
/// program itself.
///
/// In a Wayland session, and without a display, nobody can be asked; the list is empty. The windows that X11 knows in a
/// Wayland session are only those of older programs, which would be a wrong list.
class X11RunningApplications final : public RunningApplications {
public:
    /// `applicationFolders` are the folders with the desktop entries of installed applications.
    X11RunningApplications(const QProcessEnvironment& environment, const QStringList& applicationFolders);

    [[nodiscard]] std::vector<RunningApplication> list() const override;

private:
    bool m_isWaylandSession;
    QString m_locale;
    mutable DesktopEntries m_entries;
};

} // namespace orvella
