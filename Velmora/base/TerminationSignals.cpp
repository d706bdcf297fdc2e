#include "base/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace orvella {

namespace {

// A signal handler can reach nothing but what is there for the whole process, and may use no more of it than this.
std::atomic<int> wakeUpEnd {-1};
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void wakeUp(int)
{
    const int formerError = errno;
    const char anything = 0;
    // It does not wait: a full pipe has already woken the main loop.
    [[maybe_unused]] const auto written = write(wakeUpEnd.load(), &anything, 1);
    errno = formerError;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    int ends[2];
    if (pipe(ends) != 0)
        qFatal("There is no pipe left for the signals that end the program.");
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    m_readEnd = ends[0];
    m_writeEnd = ends[1];
    wakeUpEnd = m_writeEnd;

    auto* notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier] {
        notifier->setEnabled(false);
        // Deliberate: not quit(), which an open window may refuse.
        QCoreApplication::exit(0);
    });

    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        handle(signal);
}

TerminationSignals::~TerminationSignals()
{
    for (const auto& former : m_former)
        sigaction(former.signal, &former.action, nullptr);
    wakeUpEnd = -1;
    close(m_readEnd);
    close(m_writeEnd);
}

void TerminationSignals::handle(int signal)
{
    Former former {signal, {}};
    sigaction(signal, nullptr, &former.action);
    if (former.action.sa_handler == SIG_IGN)
        return;

    struct sigaction action = {};
    action.sa_handler = wakeUp;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
    m_former.push_back(former);
}

} // namespace orvella
