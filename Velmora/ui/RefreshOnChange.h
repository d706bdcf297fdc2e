#pragma once

#include "base/Published.h"

#include <QWidget>

#include <functional>

namespace orvella {

/// Has a view brought up to date after what it shows has changed: once for all that changes at a time.
///
/// The observed tells before it changes; what it is then is known when the loop turns again.
void refreshOnChange(QWidget& view, const Observable& observed, std::function<void()> refresh);

/// The same while the view is shown: nothing is laid out for nobody. It has to bring itself up to date when it is
/// shown.
void refreshWhileShown(QWidget& view, const Observable& observed, std::function<void()> refresh);

} // namespace orvella
