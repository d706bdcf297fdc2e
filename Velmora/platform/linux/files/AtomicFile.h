#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvella {

/// A small file that is only ever replaced as a whole: after a crash or on a full disk there is the old content or the
/// new one, never a part. Where the path is a symbolic link, the link stays and its target is the file.
class AtomicFile final {
public:
    explicit AtomicFile(QString path);

    /// Where the content really is. Nothing where links lead in a circle.
    [[nodiscard]] std::optional<QString> target() const;

    /// Makes the folder of the target where there is none, for the user alone (0700). False where that is not possible.
    [[nodiscard]] bool makeFolder() const;

    /// Removes what processes have left that were killed while they wrote the file. What one is writing now stays: it
    /// is locked.
    void removeLeftOvers() const;

    /// Removes what was left over, writes to "<target>.unfinished-XXXXXX", syncs, renames that over the target and
    /// syncs the folder. The file is the user's alone (0600), and so are the folders that had to be made (0700). Fails
    /// with `refused`, also where something other than a file is in the place; what was there then stays.
    [[nodiscard]] Result<void> replace(const QByteArray& content) const;

private:
    QString m_path;
};

} // namespace orvella
