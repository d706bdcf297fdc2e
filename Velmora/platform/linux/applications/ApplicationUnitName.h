#pragma once

#include <QString>
#include <QStringList>

namespace orvella {

/// The desktop file IDs, without ".desktop", that the name of a systemd unit may stand for, the likeliest first. None
/// for a unit that is no application's, and for one that the session started by itself at login.
///
/// The names are those of systemd's "Desktop Environment Integration", app[-LAUNCHER]-ID-RANDOM.scope,
/// app[-LAUNCHER]-ID[@RANDOM].service and the same with ".slice", those that dbus-broker gives what it activates, and
/// those of snaps. Not every launcher escapes what it should, so a name with more dashes is read in more than one way.
[[nodiscard]] QStringList possibleApplicationIds(const QString& unit);

} // namespace orvella
