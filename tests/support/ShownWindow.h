#pragma once

#include <QApplication>
#include <QWidget>

namespace orvella {

/// The window of this object name that is shown, or null.
[[nodiscard]] inline QWidget* shownWindow(const QString& name)
{
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name && window->isVisible())
            return window;
    }
    return nullptr;
}

} // namespace orvella
