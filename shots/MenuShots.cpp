#include "MenuShots.h"

#include "World.h"
#include "ui/MenuPopoverView.h"
#include "ui/popover/Popover.h"
#include "ui/popover/StatusItemAnchor.h"

#include <QScrollArea>
#include <QScrollBar>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kSize(420, 620);
constexpr int kItem = 210;

void prepareRich(World& world)
{
    world.platform.settings.values = {{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true},
        {u"appSignalConsent"_s, true}, {u"autoOpenAds"_s, true}, {u"showLaunchWindowAtStartup"_s, false}};
}

void enrich(AppState& state)
{
    state.linked = true;
    state.lifetimeCents = 4812;
    state.availableCents = 637;
    state.pendingCents = 175;
    state.paidCents = 4000;
    state.lastEarnedCents = 12.5;
    auto ad = anAd();
    ad.body = u"Ship your side project in 30 seconds. Previews for every branch, databases next to your users and no "
              "yearly contract."_s;
    state.availableAd = ad;
    state.lastError = u"Error transferring https://example.com/api/mac/wallet - server replied: Service Unavailable"_s;
}

Shot shot(const QString& name, DesktopLook::Scheme scheme, bool isRich, bool isScrolled)
{
    World world(scheme);
    world.platform.loginItem.current = LoginItem::Status::enabled;
    world.platform.statusItem.placed = QRect(kItem, 0, 1, Page::kBarHeight);
    if (isRich)
        prepareRich(world);
    auto& state = world.start();
    if (isRich)
        enrich(state);
    else
        state.verificationUri = u"https://service.example/activate"_s;
    Popover popover(*world.look, world.platform.windows, world.platform.clock, Popover::Behaviour::transient,
        new MenuPopoverView(*world.look, state, world.platform.lend(), {[] {}, [] {}}),
        statusItemAnchor(world.platform.statusItem));
    settle();
    popover.open(Popover::Keyboard::taken);
    settle();
    if (isScrolled) {
        auto* const position = popover.findChild<QScrollArea*>()->verticalScrollBar();
        position->setValue(position->maximum());
        settle();
    }

    Page page(kSize, scheme);
    page.addBar(Page::Bar::above, kItem, isRich);
    page.addWindow(popover);
    return {name, page.image()};
}

} // namespace

std::vector<Shot> menuShots(DesktopLook::Scheme scheme)
{
    return {
        shot(u"menu-fresh"_s, scheme, false, false),
        shot(u"menu-rich-top"_s, scheme, true, false),
        shot(u"menu-rich-bottom"_s, scheme, true, true),
    };
}

} // namespace orvella
