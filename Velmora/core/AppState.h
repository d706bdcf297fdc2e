#pragma once

#include "api/APIClient.h"
#include "core/CreativeSuppression.h"
#include "core/LaunchAtLogin.h"
#include "core/Setting.h"
#include "core/WalletQuestions.h"
#include "platform/Platform.h"
#include "signals/AppSignalClassifier.h"

#include <QCoroTask>

namespace orvella {

/// The status title while an ad is on offer.
inline constexpr QLatin1String kAdTitle {"AD"};

/// Everything that the program shows, and the viewer's settings: the one observable state, told of every change before
/// it happens. Lives on the main thread.
class AppState final : public Observable {
    Q_OBJECT

    // Declared first: the properties below read it while they are made.
    Platform m_platform;

public:
    /// Loads the settings. Registers the program as a login item once, on the very first run.
    AppState(const Platform& platform, Transport& transport);
    ~AppState() override;

    // The wallet.
    Published<qint64> availableCents {this, 0};
    Published<qint64> pendingCents {this, 0};
    Published<qint64> paidCents {this, 0};
    Published<qint64> lifetimeCents {this, 0};
    /// What the last completed ad earned, in cents with a fraction. Written by whoever shows the ads.
    Published<std::optional<double>> lastEarnedCents {this, std::nullopt};

    /// The ad on offer now.
    Published<std::optional<AvailableAd>> availableAd {this, std::nullopt};

    /// Whether the device belongs to a viewer account, and what links it: known only after a registration in this run.
    Published<bool> linked {this, false};
    Published<std::optional<QString>> activationCode {this, std::nullopt};
    Published<std::optional<QString>> verificationUri {this, std::nullopt};

    Setting anonymousMode {
        this, m_platform.settings, QStringLiteral("anonymousMode"), true, [this] { anonymousModeAssigned(); }};
    Setting appSignalConsent {
        this, m_platform.settings, QStringLiteral("appSignalConsent"), false, [this] { appSignalConsentAssigned(); }};
    Setting ageConfirmed {
        this, m_platform.settings, QStringLiteral("ageConfirmed"), false, [this] { ageConfirmedAssigned(); }};
    Setting autoOpenAds {
        this, m_platform.settings, QStringLiteral("autoOpenAds"), false, [this] { autoOpenAdsAssigned(); }};

    /// "AD" while an ad is on offer, "OFF" after a failed registration, else the available balance.
    Published<QString> statusTitle {this, QStringLiteral("$0.00")};
    /// Why the last call failed, for the viewer; the next success clears it.
    Published<std::optional<QString>> lastError {this, std::nullopt};
    /// What the system says; changed through `setLaunchAtLogin` only.
    Published<bool> launchAtLogin {this, false};
    Setting showLaunchWindowAtStartup {this, m_platform.settings, QStringLiteral("showLaunchWindowAtStartup"), true,
        [this] { showLaunchWindowAtStartup.store(); }};

    [[nodiscard]] APIClient& api() { return m_api; }
    /// The pause between two poll cycles in seconds.
    [[nodiscard]] qint64 pollSeconds() const { return m_pollSeconds; }

    /// The start of a run: finds the device token or registers the device, fetches the wallet, starts the poll loop.
    /// Called once. A failed registration ends it for this run.
    QCoro::Task<> bootstrap();

    /// (Re)starts the poll loop; at most one runs.
    void startPolling();
    /// Tells the service that the device is alive.
    QCoro::Task<> heartbeat();
    /// Asks whether there is an ad.
    QCoro::Task<> pollForAd();

    /// The categories the service may learn now, and how many applications they come from.
    [[nodiscard]] AppSignalClassifier::Categories currentConsentedCategories() const;

    [[nodiscard]] bool isSuppressed(const AvailableAd& ad);
    /// Keeps the ad's creative from being offered for a while.
    void suppress(const AvailableAd& ad);

    QCoro::Task<> refreshWallet();
    /// Something may be credited that no answer tells, by a request that is still on its way: the wallet is asked for
    /// after each poll until such a request has run out, and once afterwards.
    void doubtWallet();
    /// Closes an ad the viewer is done with, however it ended.
    void finishAd(const AvailableAd& ad);
    /// Sends the settings as they are when the request is made.
    QCoro::Task<> sendPreferences();
    void setLaunchAtLogin(bool enabled);
    /// Asks the system again: the viewer may have used the desktop's own tools.
    void refreshLaunchAtLogin();

private:
    static QCoro::Task<> poll(QPointer<AppState> self, Clock& clock, std::stop_token stop);

    QCoro::Task<bool> registerDevice(std::stop_token stop);
    QCoro::Task<> heartbeat(std::stop_token stop);
    QCoro::Task<> pollForAd(std::stop_token stop);
    QCoro::Task<> refreshWallet(std::stop_token stop);
    QCoro::Task<> sendPreferences(std::stop_token stop);

    void anonymousModeAssigned();
    void appSignalConsentAssigned();
    void ageConfirmedAssigned();
    void autoOpenAdsAssigned();

    void startSendingPreferences();
    void setPollSeconds(qint64 seconds);
    /// A success clears the last error, a failure becomes it.
    template <class T> void noteOutcome(const Result<T>& answer);
    void offer(const AvailabilityResponse& response);
    void showWallet(const WalletResponse& response);
    [[nodiscard]] APIClient::Preferences preferences() const;
    [[nodiscard]] Json::Object availabilityBody(const AppSignalClassifier::Categories& categories) const;
    [[nodiscard]] QString balanceTitle() const;

    /// Stops every flow but the poll loop when the state goes.
    std::stop_source m_lifetime;
    std::stop_source m_pollTask;
    APIClient m_api;
    Keychain m_keychain;
    qint64 m_pollSeconds;
    WalletQuestions m_walletQuestions;
    CreativeSuppression m_suppressedCreativeIds;
    LaunchAtLogin m_loginItem;
};

} // namespace orvella
