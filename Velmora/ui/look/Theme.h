#pragma once

#include <QColor>

class QPalette;

namespace orvella {

/// The colours of one look. Every text has a contrast of at least 4.5:1 on what it stands on, WCAG 2.
struct Theme {
    bool isDark = false;

    /// The background of popovers, of the startup window, of a card in a popover.
    QColor surface;
    QColor window;
    QColor card;

    QColor text;
    QColor secondaryText;
    /// The label of a control that cannot be used.
    QColor disabledText;
    /// A link, progress, the ring around what has the keyboard.
    QColor ink;
    /// Money that is the viewer's.
    QColor green;
    QColor red;

    /// The prominent button and what is switched on.
    QColor accent;
    QColor accentHovered;
    QColor accentPressed;
    QColor onAccent;
    /// A switch that is off, the edge of an empty check box.
    QColor controlOff;
    QColor box;
    QColor button;
    QColor buttonHovered;
    QColor buttonPressed;
    QColor buttonEdge;

    QColor divider;
    QColor outline;
    /// Behind an icon under the pointer.
    QColor hover;
    QColor scrollBar;
    /// The two layers of the shadow under a popover.
    QColor nearShadow;
    QColor farShadow;

    [[nodiscard]] static Theme light();
    [[nodiscard]] static Theme dark();
    /// The desktop's own colours, for viewers who need its contrast.
    [[nodiscard]] static Theme highContrast(const QPalette& palette);
};

} // namespace orvella
