#include "ui/RefreshOnChange.h"

#include <memory>
#include <utility>

namespace orvella {

void refreshOnChange(QWidget& view, const Observable& observed, std::function<void()> refresh)
{
    const auto follow = [&view, isDue = std::make_shared<bool>(false), refresh = std::move(refresh)] {
        if (std::exchange(*isDue, true))
            return;
        QMetaObject::invokeMethod(
            &view,
            [isDue, refresh] {
                *isDue = false;
                refresh();
            },
            Qt::QueuedConnection);
    };
    QObject::connect(&observed, &Observable::willChange, &view, follow);
}

void refreshWhileShown(QWidget& view, const Observable& observed, std::function<void()> refresh)
{
    refreshOnChange(view, observed, [&view, refresh = std::move(refresh)] {
        if (view.isVisible())
            refresh();
    });
}

} // namespace orvella
