#pragma once

#include "platform/linux/files/Descriptor.h"

#include <QString>

#include <optional>

namespace orvella {

/// A file that one process at a time has locked. The lock goes with the process, however that ends.
class InstanceLock final {
public:
    /// An empty path is nobody's file.
    explicit InstanceLock(QString path);

    /// False where another one has it. True where the file cannot be made: then nothing tells the two apart.
    [[nodiscard]] bool take();

private:
    QString m_path;
    std::optional<Descriptor> m_file;
};

} // namespace orvella
