#pragma once

#include <functional>

class QAbstractButton;

namespace orvella {

/// Has a box or a switch assign what the viewer makes of it. `value` is the part of the state that it stands for.
void assignToggles(QAbstractButton& control, std::function<bool()> value, std::function<void(bool)> assign);

} // namespace orvella
