#include "AdShots.h"

#include "World.h"
#include "ui/ad/AdWindowController.h"

#include <QApplication>

namespace orvella {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 720;
constexpr int kHeight = 128;
constexpr int kItem = 520;
/// The height of the desktop that the windows find.
constexpr int kDesktopHeight = 900;

const QString kLongBody = u"Brightleaf runs your containers, databases and scheduled jobs next to your users, with "
                          "previews for every branch and no yearly contract"_s;

struct Scene {
    QString name;
    QString body = anAd().body;
    qint64 cents = 12;
    qint64 total = 15;
    qint64 watched = 8;
    Page::Bar bar = Page::Bar::above;
    bool isAnchored = true;
    bool showsDisclosure = false;
    QStringList categories = {};
    int height = kHeight;
};

QPoint originOf(const Scene& scene)
{
    // The desktop of the windows has no bar: what is in its corner belongs below one.
    if (!scene.isAnchored)
        return {0, -Page::kBarHeight};
    return {0, scene.bar == Page::Bar::below ? kDesktopHeight - scene.height : 0};
}

Shot shot(const Scene& scene, DesktopLook::Scheme scheme)
{
    World world(scheme);
    auto ad = anAd();
    ad.body = scene.body;
    ad.viewerEarnCents = scene.cents;
    ad.viewerEarnCentsExact.reset();
    ad.requiredSeconds = scene.total;
    ad.matchedCategories = scene.categories;
    const int barTop = scene.bar == Page::Bar::below ? kDesktopHeight - Page::kBarHeight : 0;
    if (scene.isAnchored)
        world.platform.statusItem.placed = QRect(kItem, barTop, 1, Page::kBarHeight);

    auto& state = world.start();
    AdWindowController panel(
        *world.look, ad, state.api(), true, world.platform.lend(), {[] {}, [](auto) {}, [](const Failure&) {}});
    panel.show(Popover::Keyboard::left);
    world.platform.clock.advance(std::chrono::seconds(scene.watched));
    panel.viewing().showDisclosure = scene.showsDisclosure;
    settle();

    const bool isPaid = panel.viewing().completed();
    Page page({kWidth, scene.height}, scheme, originOf(scene));
    page.addBar(scene.bar, kItem, !isPaid);
    const auto windows = QApplication::topLevelWidgets();
    for (const auto& name : {u"adPanel"_s, u"adDisclosure"_s}) {
        for (auto* const window : windows) {
            if (window->objectName() == name && window->isVisible())
                page.addWindow(*window);
        }
    }
    return {scene.name, page.image()};
}

} // namespace

std::vector<Shot> adShots(DesktopLook::Scheme scheme)
{
    const std::vector<Scene> scenes {
        {.name = u"ad-panel-counting"_s},
        {.name = u"ad-panel-paid"_s, .watched = 15},
        {.name = u"ad-panel-short"_s, .body = u"Try Loam"_s, .cents = 1, .total = 30, .watched = 10},
        {.name = u"ad-panel-long"_s, .body = kLongBody, .cents = 3, .watched = 3},
        {.name = u"ad-panel-bottom-bar"_s, .bar = Page::Bar::below},
        {.name = u"ad-panel-no-anchor"_s, .isAnchored = false},
        {.name = u"ad-panel-disclosure-broad"_s, .showsDisclosure = true, .height = 256},
        {.name = u"ad-panel-disclosure-categories"_s,
            .showsDisclosure = true,
            .categories = {u"developer_tools"_s, u"design"_s},
            .height = 272},
    };
    std::vector<Shot> shots;
    for (const auto& scene : scenes)
        shots.push_back(shot(scene, scheme));
    return shots;
}

} // namespace orvella
