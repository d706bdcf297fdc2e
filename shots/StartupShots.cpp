#include "StartupShots.h"

#include "World.h"
#include "ui/LaunchWindowController.h"

#include <QWidget>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kSize(640, 724);
constexpr QPoint kWindow(40, 28);
/// What stands for the title bar of the window manager.
constexpr int kTitleBar = 36;

Shot shot(const QString& name, DesktopLook::Scheme scheme, bool isOn)
{
    World world(scheme);
    if (isOn) {
        world.platform.settings.values = {{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true},
            {u"appSignalConsent"_s, true}, {u"autoOpenAds"_s, true}};
    }
    auto& state = world.start();
    LaunchWindowController window(*world.look, state, world.platform.lend());
    window.show();
    settle();

    Page page(kSize, scheme);
    page.fill({kWindow, QSize(window.window().width(), kTitleBar)}, world.look->theme().window);
    page.addCaption(u"Orvella"_s, kWindow + QPoint(window.window().width() / 2 - 20, 22));
    page.fill({kWindow + QPoint(0, kTitleBar - 1), QSize(window.window().width(), 1)}, world.look->theme().divider);
    page.addWidget(window.window(), kWindow + QPoint(0, kTitleBar));
    return {name, page.image()};
}

} // namespace

std::vector<Shot> startupShots(DesktopLook::Scheme scheme)
{
    return {shot(u"startup-fresh"_s, scheme, false), shot(u"startup-on"_s, scheme, true)};
}

} // namespace orvella
