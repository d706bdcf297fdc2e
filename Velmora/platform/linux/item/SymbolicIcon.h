#pragma once

#include <QString>
#include <QStringList>

namespace orvella {

/// The name of the program's symbolic icon, which bars draw in the colour of their own text; empty where it is not
/// installed, because some bars show a blank for a name that they do not find.
///
/// `iconFolders`: the folders with icon themes. `id`: the program's identifier.
[[nodiscard]] QString symbolicIconName(const QStringList& iconFolders, const QString& id);

} // namespace orvella
