#include "platform/linux/instance/InstanceLock.h"

#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/Uninterrupted.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <utility>

namespace orvella {

InstanceLock::InstanceLock(QString path)
    : m_path(std::move(path))
{
}

bool InstanceLock::take()
{
    if (m_path.isEmpty() || m_file || !AtomicFile(m_path).makeFolder())
        return true;
    const auto name = QFile::encodeName(m_path);
    constexpr mode_t kUserOnly = 0600;
    m_file.emplace(
        uninterrupted([&] { return ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kUserOnly); }));
    if (m_file->isOpen() && uninterrupted([&] { return ::flock(m_file->number(), LOCK_EX | LOCK_NB); }) != 0
        && errno == EWOULDBLOCK) {
        m_file.reset();
        return false;
    }
    return true;
}

} // namespace orvella
