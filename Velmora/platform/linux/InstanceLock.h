#pragma once

#include <QString>

namespace orvella {

/// A file that one process at a time has locked. The lock goes with the process, however that ends.
class InstanceLock final {
public:
    /// An empty path is nobody's file.
    explicit InstanceLock(QString path);
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;
    ~InstanceLock();

    /// False where another one has it. True where the file cannot be made: then nothing tells the two apart.
    [[nodiscard]] bool take();

private:
    QString m_path;
    int m_descriptor = -1;
};

} // namespace orvella
