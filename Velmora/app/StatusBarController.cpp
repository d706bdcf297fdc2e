#include "app/StatusBarController.h"

#include "platform/StatusItem.h"

namespace orvella {

namespace {

constexpr int kWidth = 18;
constexpr int kAdWidth = 42;

} // namespace

StatusBarController::StatusBarController(const Platform& platform, Transport& transport)
    : m_platform(platform)
    , m_state(platform, transport)
{
    updateStatusItem(m_state.statusTitle());
    m_platform.statusItem.show([self = QPointer(this)] {
        if (self)
            self->statusItemClicked();
    });
    m_state.statusTitle.subscribe(this, [this](const QString& title) { updateStatusItem(title); });
    QMetaObject::invokeMethod(this, [this] { m_state.bootstrap(); }, Qt::QueuedConnection);
}

void StatusBarController::statusItemClicked()
{
    if (!isAdShown())
        showCurrentAd();
}

void StatusBarController::showCurrentAd()
{
    if (const auto ad = m_state.availableAd())
        showAd(*ad);
}

void StatusBarController::showAd(const AvailableAd& ad)
{
    if (isAdShown())
        return;
    m_adPopover = std::make_unique<AdWindowController>(ad, m_state.api(), m_state.anonymousMode(), m_platform,
        AdWindowController::OwnerActions {
            .onDismiss = [this, ad] { m_state.finishAd(ad); },
            .onFinished =
                [this, ad](std::optional<double> earnedCents) {
                    QMetaObject::invokeMethod(
                        this, [this, ad, earnedCents] { adFinished(ad, earnedCents); }, Qt::QueuedConnection);
                },
        });
    m_adPopover->show(m_platform.statusItem.lastClick());
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
        .text = isAdReady ? QStringLiteral("$ AD") : QStringLiteral("$"),
        .width = isAdReady ? kAdWidth : kWidth,
        .tone = isAdReady ? StatusAppearance::Tone::green : StatusAppearance::Tone::label,
        .description = isAdReady ? tr("Orvella · ad ready") : tr("Orvella · %1 available").arg(title),
    });
}

bool StatusBarController::isAdShown() const
{
    return m_adPopover && m_adPopover->isShown();
}

} // namespace orvella
