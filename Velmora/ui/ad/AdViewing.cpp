#include "ui/ad/AdViewing.h"

#include "api/APIClient.h"
#include "base/WebAddress.h"
#include "platform/Browser.h"

namespace orvella {

using namespace std::chrono_literals;

namespace {

constexpr auto kTick = 1s;
constexpr auto kGracePeriod = 3s;

/// Deliberate: the exact amount takes precedence over the whole cents.
double exactCents(const std::optional<double>& exact, qint64 whole)
{
    return exact.value_or(static_cast<double>(whole));
}

std::optional<double> earnedCents(const CompletionResponse& verdict)
{
    if (!verdict.completed)
        return std::nullopt;
    return exactCents(verdict.viewerEarnCentsExact, verdict.viewerEarnCents);
}

} // namespace

AdViewing::AdViewing(
    AvailableAd ad, APIClient& api, bool anonymousMode, Clock& clock, Browser& browser, Actions actions)
    : m_ad(std::move(ad))
    , m_api(api)
    , m_anonymousMode(anonymousMode)
    , m_clock(clock)
    , m_browser(browser)
    , m_actions(std::move(actions))
{
    remaining = m_ad.requiredSeconds;
}

AdViewing::~AdViewing()
{
    m_view.request_stop();
    m_lifetime.request_stop();
}

double AdViewing::earningsCents() const
{
    return exactCents(m_ad.viewerEarnCentsExact, m_ad.viewerEarnCents);
}

void AdViewing::start()
{
    if (std::exchange(m_hasStarted, true))
        return;
    startAndCountdown(m_view.get_token());
}

void AdViewing::cancel()
{
    m_view.request_stop();
}

QCoro::Task<> AdViewing::startAndCountdown(std::stop_token stop)
{
    const auto verdict = co_await watch(stop);
    if (stop.stop_requested() || dismissed() || (!verdict && verdict.error().isCancellation()))
        co_return;
    if (verdict) {
        completed = verdict->completed;
    } else {
        remaining = 0;
        m_actions.onFailed(verdict.error());
    }
    m_actions.onFinished(verdict ? earnedCents(*verdict) : std::nullopt);
    co_await closeAfterCompletionGracePeriod(stop);
}

QCoro::Task<Result<CompletionResponse>> AdViewing::watch(std::stop_token stop)
{
    const auto started = co_await m_api.startSession(m_ad, m_anonymousMode, stop);
    if (stop.stop_requested() || dismissed())
        co_return failed(Failure::Kind::cancelled);
    if (!started)
        co_return std::unexpected(started.error());
    session = *started;
    while (remaining() >= 1) {
        co_await m_clock.sleep(kTick, stop);
        if (stop.stop_requested() || dismissed())
            co_return failed(Failure::Kind::cancelled);
        remaining = remaining() - 1;
    }
    m_awaitsVerdict = true;
    auto verdict = co_await m_api.complete(started->sessionId, stop);
    if (!stop.stop_requested())
        m_awaitsVerdict = !verdict;
    co_return verdict;
}

QCoro::Task<> AdViewing::closeAfterCompletionGracePeriod(std::stop_token stop)
{
    co_await m_clock.sleep(kGracePeriod, stop);
    if (!stop.stop_requested() && !dismissed())
        m_actions.close();
}

QCoro::Task<> AdViewing::openAd()
{
    if (!session()) {
        openPage(m_ad.targetUrl);
        co_return;
    }
    const auto stop = m_lifetime.get_token();
    const auto click = co_await m_api.click(session()->sessionId, stop);
    if (stop.stop_requested() || !click)
        co_return;
    openPage(click->targetUrl);
}

void AdViewing::openPage(const QString& address)
{
    const auto page = webAddress(address);
    if (page && m_browser.open(*page))
        m_actions.keepOpenAfterLink();
}

void AdViewing::dismiss()
{
    if (dismissed())
        return;
    dismissed = true;
    m_actions.dismiss();
}

} // namespace orvella
