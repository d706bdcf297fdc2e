#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

#include <optional>

/// The desktop that a test with DESKTOP runs on, seen and touched from outside the program.
namespace orvella::VirtualDesktop {

/// What is on this part of the screen; a null image where no picture could be taken. The last one is kept in the home
/// folder as screenshot.png.
[[nodiscard]] QImage screenshot(const QRect& area);

/// The smallest rectangle with all pixels of this colour, give or take what rounding does to edges that are nearly
/// opaque; nothing where there is none.
[[nodiscard]] std::optional<QRect> find(const QImage& picture, const QColor& colour);

/// Moves the real pointer there and presses and releases a button, 1 being the left one.
[[nodiscard]] bool click(QPoint place, int button = 1);

/// Runs a program to its end; false where it is missing or fails.
[[nodiscard]] bool run(const QString& program, const QStringList& arguments);

} // namespace orvella::VirtualDesktop
