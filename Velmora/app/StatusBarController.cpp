#include "app/StatusBarController.h"

#include "app/AutoOpenGuard.h"
#include "platform/StatusItem.h"
#include "platform/Updater.h"
#include "ui/MenuPopoverView.h"
#include "ui/popover/StatusItemAnchor.h"

#include <QCoreApplication>

namespace orvella {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 18;
constexpr int kAdWidth = 42;
constexpr auto kAutoOpenSpacing = 120s;

/// From the trailing end of the bar, in points.
constexpr qint64 kPreferredPosition = 140;

} // namespace

void StatusBarController::prepareStatusItemPlacement(const Platform& platform)
{
    if (!platform.statusItem.keepsPlaceInSettings())
        return;
    // The names under which macOS keeps them for an item that is called OrvellaStatusItem.
    const auto position = u"NSStatusItem Preferred Position OrvellaStatusItem"_s;
    const auto visible = u"NSStatusItem Visible OrvellaStatusItem"_s;
    if (!platform.settings.contains(position))
        platform.settings.setInteger(position, kPreferredPosition);
    if (!platform.settings.contains(visible))
        platform.settings.setBoolean(visible, true);
}

StatusBarController::StatusBarController(const Platform& platform, Transport& transport)
    : m_platform(platform)
    , m_state(platform, transport)
    , m_look(platform.look)
{
    m_platform.updater.start();
    updateStatusItem(m_state.statusTitle());
    m_platform.statusItem.show({
        .clicked =
            [self = QPointer(this)] {
                if (self)
                    self->statusItemClicked();
            },
        .menuRequested =
            [self = QPointer(this)](QPoint place) {
                if (self)
                    self->showStatusMenu(place);
            },
    });
    m_state.statusTitle.subscribe(this, [this](const QString& title) { updateStatusItem(title); });
    m_state.availableAd.subscribe(this, [this](const std::optional<AvailableAd>& ad) { availableAdChanged(ad); });
    QMetaObject::invokeMethod(this, [this] { m_state.bootstrap(); }, Qt::QueuedConnection);
}

void StatusBarController::statusItemClicked()
{
    // Deliberate: an ad on the screen cannot be toggled or replaced from here, nor is the menu touched.
    if (isAdShown()) {
        if (m_popover)
            m_popover->forgivePress();
        return;
    }
    if (m_popover && m_popover->isShown())
        m_popover->performClose();
    else
        showCurrentAd();
}

void StatusBarController::showCurrentAd()
{
    if (const auto ad = m_state.availableAd())
        showAd(*ad, Popover::Keyboard::taken);
    else
        showMenuPopover();
}

void StatusBarController::openAd()
{
    // One that opened by itself has not taken the keyboard.
    if (isAdShown())
        m_adPopover->activate();
    else
        showCurrentAd();
}

void StatusBarController::showAd(const AvailableAd& ad, Popover::Keyboard keyboard)
{
    if (isAdShown())
        return;
    m_adPopover = std::make_unique<AdWindowController>(m_look, ad, m_state.api(), m_state.anonymousMode(), m_platform,
        AdWindowController::OwnerActions {
            .onDismiss =
                [this, ad] {
                    doubtWalletWithoutVerdict();
                    m_state.finishAd(ad);
                },
            .onFinished =
                [this, ad](std::optional<double> earnedCents) {
                    doubtWalletWithoutVerdict();
                    QMetaObject::invokeMethod(
                        this, [this, ad, earnedCents] { adFinished(ad, earnedCents); }, Qt::QueuedConnection);
                },
            .onFailed = [this](const Failure& failure) { Q_EMIT adFailed(failure); },
        });
    m_adPopover->show(keyboard);
}

void StatusBarController::doubtWalletWithoutVerdict()
{
    if (m_adPopover->viewing().awaitsVerdict())
        m_state.doubtWallet();
}

QCoro::Task<> StatusBarController::adFinished(AvailableAd ad, std::optional<double> earnedCents)
{
    if (earnedCents)
        m_state.lastEarnedCents = earnedCents;
    m_state.finishAd(ad);
    co_await m_state.refreshWallet();
}

void StatusBarController::updateStatusItem(const QString& title)
{
    const bool isAdReady = title == kAdTitle;
    m_platform.statusItem.setAppearance({
        .text = isAdReady ? u"$ AD"_s : u"$"_s,
        .width = isAdReady ? kAdWidth : kWidth,
        .tone = isAdReady ? StatusAppearance::Tone::green : StatusAppearance::Tone::label,
        .description = isAdReady ? tr("Orvella · ad ready") : tr("Orvella · %1 available").arg(title),
    });
}

bool StatusBarController::shouldAutoOpenAd() const
{
    if (!m_state.autoOpenAds())
        return false;
    if (m_lastAutoOpenAt && m_platform.clock.now() - *m_lastAutoOpenAt <= kAutoOpenSpacing)
        return false;
    return AutoOpenGuard::canOpenForegroundWindow(m_platform.foreground);
}

void StatusBarController::showLaunchWindowIfNeeded()
{
    // Deliberate: the stored value itself. Only a stored false hides the window, whatever else may stand there.
    if (m_platform.settings.boolean(u"showLaunchWindowAtStartup"_s).value_or(true))
        showLaunchWindow();
}

void StatusBarController::showLaunchWindow()
{
    if (!m_launchWindow)
        m_launchWindow = std::make_unique<LaunchWindowController>(m_look, m_state, m_platform);
    m_launchWindow->show();
}

bool StatusBarController::isAdShown() const
{
    return m_adPopover && m_adPopover->isShown();
}

void StatusBarController::availableAdChanged(const std::optional<AvailableAd>& ad)
{
    if (!ad || !shouldAutoOpenAd())
        return;
    m_lastAutoOpenAt = m_platform.clock.now();
    showAd(*ad, Popover::Keyboard::left);
}

void StatusBarController::showMenuPopover()
{
    m_state.refreshLaunchAtLogin();
    if (!m_popover)
        m_popover = menuPopover();
    m_popover->open(Popover::Keyboard::taken);
}

std::unique_ptr<Popover> StatusBarController::menuPopover()
{
    const MenuPopoverView::Actions actions {
        .showAd = [this] { showCurrentAd(); },
        .checkForUpdates = [this] { m_platform.updater.checkForUpdates(); },
    };
    auto popover =
        std::make_unique<Popover>(m_look, m_platform.windows, m_platform.clock, Popover::Behaviour::transient,
            new MenuPopoverView(m_look, m_state, m_platform, actions), statusItemAnchor(m_platform.statusItem));
    popover->setObjectName(u"menuPanel"_s);
    popover->setAccessibleName(u"Orvella"_s);
    return popover;
}

void StatusBarController::showStatusMenu(QPoint place)
{
    StatusMenu::Actions actions {
        .showAd = {},
        .showMenuPopover = [this] { showMenuPopover(); },
        .showLaunchWindow = [this] { showLaunchWindow(); },
        // Not `quit`: that asks every window first, and an ad that is shown takes it for its dismissal.
        .quit = [] { QCoreApplication::exit(); },
    };
    // Also while an ad is shown: this is the way to its keyboard without a pointer.
    if (isAdShown() || m_state.availableAd())
        actions.showAd = [this] { openAd(); };
    m_statusMenu = std::make_unique<StatusMenu>(actions);
    m_statusMenu->popup(place);
}

} // namespace orvella
