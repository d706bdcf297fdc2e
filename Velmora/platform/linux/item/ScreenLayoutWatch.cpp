#include "platform/linux/item/ScreenLayoutWatch.h"

#include <QGuiApplication>
#include <QScreen>

namespace orvella {

ScreenLayoutWatch::ScreenLayoutWatch()
{
    for (auto* screen : QGuiApplication::screens())
        follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        follow(screen);
        Q_EMIT changed();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenLayoutWatch::changed);
}

void ScreenLayoutWatch::follow(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &ScreenLayoutWatch::changed);
    connect(screen, &QScreen::availableGeometryChanged, this, &ScreenLayoutWatch::changed);
}

} // namespace orvella
