#include "platform/linux/InstanceLock.h"

#include "platform/linux/AtomicFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace orvella {

InstanceLock::InstanceLock(QString path)
    : m_path(std::move(path))
{
}

InstanceLock::~InstanceLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

bool InstanceLock::take()
{
    if (m_path.isEmpty() || m_descriptor >= 0 || !AtomicFile(m_path).makeFolder())
        return true;
    constexpr mode_t kUserOnly = 0600;
    m_descriptor = open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kUserOnly);
    if (m_descriptor < 0 || flock(m_descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return true;
    close(std::exchange(m_descriptor, -1));
    return false;
}

} // namespace orvella
