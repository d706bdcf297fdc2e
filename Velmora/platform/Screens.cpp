#include "platform/Screens.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace orvella {

namespace {

ScreenArea area(const QScreen& screen)
{
    return {screen.geometry(), screen.availableGeometry()};
}

} // namespace

QList<ScreenArea> Screens::areas()
{
    QList<ScreenArea> result;
    for (const auto* const screen : QGuiApplication::screens())
        result.append(area(*screen));
    return result;
}

ScreenArea Screens::home()
{
    const auto* const under = QGuiApplication::screenAt(QCursor::pos());
    const auto* const screen = under ? under : QGuiApplication::primaryScreen();
    return screen ? area(*screen) : ScreenArea {};
}

bool Screens::isInBar(QPoint place)
{
    const auto* const screen = QGuiApplication::screenAt(place);
    return screen && !screen->availableGeometry().contains(place);
}

} // namespace orvella
