#include "ui/AssignToggles.h"

#include <QAbstractButton>

#include <utility>

namespace orvella {

void assignToggles(QAbstractButton& control, std::function<bool()> value, std::function<void(bool)> assign)
{
    // Not the click: assistive technology toggles without one. What the state has already comes from a refresh.
    QObject::connect(&control, &QAbstractButton::toggled, &control,
        [value = std::move(value), assign = std::move(assign)](bool isOn) {
            // What is refused is announced like any assignment, and the refresh that follows puts the control back.
            if (isOn != value())
                assign(isOn);
        });
}

} // namespace orvella
