#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

namespace orvella {

/// Runs the main loop until `isSo` answers true, or for half a minute; answers whether it did. Where much goes back and
/// forth within one process it is far quicker than QTest's own waiting, which sleeps between its looks.
template <class Question> [[nodiscard]] bool waitFor(Question isSo)
{
    using namespace std::chrono_literals;
    const QDeadlineTimer deadline(30s);
    QTimer wake;
    wake.start(100ms);
    while (!isSo() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isSo();
}

} // namespace orvella
