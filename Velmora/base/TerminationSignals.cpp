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
std::atomic_flag hasAlarm;

constexpr auto kSignals = {SIGTERM, SIGINT, SIGHUP};
constexpr unsigned kPatienceSeconds = 1;

extern "C" void leave(int)
{
    _exit(0);
}

extern "C" void wakeUp(int)
{
    // Whatever holds the main loop up, or the end of the program after it. A later signal does not put it off.
    if (!hasAlarm.test_and_set())
        alarm(kPatienceSeconds);
    const int formerError = errno;
    const char anything = 0;
    // It does not wait: a full pipe has already woken the main loop.
    [[maybe_unused]] const auto written = write(wakeUpEnd.load(), &anything, 1);
    errno = formerError;
}

struct sigaction actionOf(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    return action;
}

bool isIgnored(int signal)
{
    struct sigaction present = {};
    sigaction(signal, nullptr, &present);
    return present.sa_handler == SIG_IGN;
}

} // namespace

void TerminationSignals::endAtOnce()
{
    const auto action = actionOf(leave);
    for (const int signal : kSignals) {
        if (!isIgnored(signal))
            sigaction(signal, &action, nullptr);
    }
}

TerminationSignals::TerminationSignals()
{
    int ends[2];
    if (pipe(ends) != 0)
        qFatal("There is no pipe left for the signals that end the program.");
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    hasAlarm.clear();
    m_readEnd = ends[0];
    m_writeEnd = ends[1];
    wakeUpEnd = m_writeEnd;

    auto* notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier] {
        notifier->setEnabled(false);
        // Deliberate: not quit(), which an open window may refuse.
        QCoreApplication::exit(0);
    });

    // It stays: the end of the program after the main loop may be held up, too.
    const auto atTheAlarm = actionOf(leave);
    sigaction(SIGALRM, &atTheAlarm, nullptr);
    for (const int signal : kSignals)
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
    if (isIgnored(signal))
        return;
    Former former {signal, {}};
    const auto action = actionOf(wakeUp);
    sigaction(signal, &action, &former.action);
    m_former.push_back(former);
}

} // namespace orvella
