#pragma once

#include <QString>

namespace orvella {

/// The one absolute path of a folder, however it was written: a relative path, one with "..", with a slash at its end
/// or through a symbolic link. The folder need not be there yet.
[[nodiscard]] QString profileFolder(const QString& given);

} // namespace orvella
