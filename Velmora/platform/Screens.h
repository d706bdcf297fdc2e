#pragma once

#include <QList>
#include <QRect>

namespace orvella {

/// A screen and the part of it that the desktop's bars leave to windows.
struct ScreenArea {
    QRect whole;
    QRect available;
};

/// The screens of the desktop as they are now, for windows of the program's own. How large windows of others are beside
/// their screens is asked of `ForegroundFacts`, in its units.
class Screens final {
public:
    Screens() = delete;

    [[nodiscard]] static QList<ScreenArea> areas();
    /// The one that the viewer is at, as far as the pointer tells.
    [[nodiscard]] static ScreenArea home();
    /// Whether this place belongs to one of the desktop's bars.
    [[nodiscard]] static bool isInBar(QPoint place);
};

} // namespace orvella
