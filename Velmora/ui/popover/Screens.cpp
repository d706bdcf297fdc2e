#include "ui/popover/Screens.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace orvella {

namespace {

ScreenRoom room(const QScreen& screen)
{
    return {screen.geometry(), screen.availableGeometry()};
}

} // namespace

QList<ScreenRoom> Screens::rooms()
{
    QList<ScreenRoom> result;
    for (const auto* const screen : QGuiApplication::screens())
        result.append(room(*screen));
    return result;
}

ScreenRoom Screens::home()
{
    const auto* const under = QGuiApplication::screenAt(QCursor::pos());
    const auto* const screen = under ? under : QGuiApplication::primaryScreen();
    return screen ? room(*screen) : ScreenRoom {};
}

bool Screens::isInBar(QPoint place)
{
    const auto* const screen = QGuiApplication::screenAt(place);
    return screen && !screen->availableGeometry().contains(place);
}

} // namespace orvella
