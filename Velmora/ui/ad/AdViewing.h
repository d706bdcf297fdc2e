#pragma once

#include "api/Records.h"
#include "base/Clock.h"
#include "base/Published.h"

#include <QCoroTask>

namespace orvella {

class APIClient;
class Browser;

/// One viewing of one ad: opens a session with the service, counts the seconds down, has the view credited. The panel
/// shows what it publishes.
class AdViewing final : public Observable {
    Q_OBJECT

public:
    /// What the owner does at the turns of a viewing.
    struct Actions {
        /// The advertiser's page was opened.
        std::function<void()> keepOpenAfterLink;
        /// The viewer closed the ad.
        std::function<void()> dismiss;
        /// The viewing is over; the panel may go.
        std::function<void()> close;
        /// The outcome is known: the cents that were earned, or nothing. Called at most once, never after a dismissal.
        std::function<void(std::optional<double>)> onFinished;
        /// The session or the completion did not succeed, and why. The viewer is not told; comes before `onFinished`.
        std::function<void(const Failure&)> onFailed;
    };

    /// `anonymousMode` is the setting at the moment the ad was opened; later changes do not touch this viewing.
    AdViewing(AvailableAd ad, APIClient& api, bool anonymousMode, Clock& clock, Browser& browser, Actions actions);
    ~AdViewing() override;

    /// What the service answered to the start.
    Published<std::optional<AdSession>> session {this, std::nullopt};
    /// The seconds that are left. Deliberate: counted from the ad's own number, never reset by the session's.
    Published<qint64> remaining {this, 0};
    /// The service's verdict.
    Published<bool> completed {this, false};
    /// The viewer closed the ad.
    Published<bool> dismissed {this, false};
    /// Whether the reasons for this ad are shown.
    Published<bool> showDisclosure {this, false};

    [[nodiscard]] const AvailableAd& ad() const { return m_ad; }

    /// Whether the view was reported as complete, and may have been credited, without an answer that says so: none has
    /// come so far, or none that could be read.
    [[nodiscard]] bool awaitsVerdict() const { return m_awaitsVerdict; }

    /// What the ad pays, in cents: exact where the service says so.
    [[nodiscard]] double earningsCents() const;

    /// The panel came on screen: runs the viewing, once.
    void start();
    /// The panel went away: ends the viewing without a word.
    void cancel();

    /// Goes to the advertiser. The countdown goes on.
    QCoro::Task<> openAd();
    void dismiss();

private:
    QCoro::Task<> startAndCountdown(std::stop_token stop);
    QCoro::Task<Result<CompletionResponse>> watch(std::stop_token stop);
    QCoro::Task<> closeAfterCompletionGracePeriod(std::stop_token stop);
    void openPage(const QString& address);

    AvailableAd m_ad;
    APIClient& m_api;
    bool m_anonymousMode;
    Clock& m_clock;
    Browser& m_browser;
    Actions m_actions;
    bool m_hasStarted = false;
    bool m_awaitsVerdict = false;
    /// Ends with the panel. A flow may come back after this object has gone, so it asks its token before anything else.
    std::stop_source m_view;
    /// A click-through outlives the panel, not this object.
    std::stop_source m_lifetime;
};

} // namespace orvella
