#pragma once

#include "core/AppState.h"
#include "simulation/World.h"

namespace orvella::simulation {

/// The money that is shown is that of the service's latest answer, and it is asked for exactly where there is a reason.
class MoneyRules final {
public:
    MoneyRules(const World& world, const AppState& state);

    // What has happened.
    void walletSent();
    /// Whether it is the answer that counts from now on; none where it has failed.
    bool walletAnswered(int number, const std::optional<WalletResponse>& wallet);
    /// The service has answered a poll, so that what it could not say before is asked again.
    void pollAnswered(bool isVerdictAwaited);
    /// A view is over; it has earned nothing where there is nothing.
    void viewEnded(std::optional<double> earnedCents);
    /// A view was closed that may have been complete, or may be found so within a minute, or its verdict got lost:
    /// there is a cycle before that minute is over and one after it.
    void viewMayHaveBeenPaid() { m_allowedWallets = 2; }

    [[nodiscard]] qint64 availableCents() const { return m_wallet.wallet.availableCents; }

    void check(bool hasStarted) const;

private:
    [[nodiscard]] bool isAllShown() const;
    [[nodiscard]] bool isMissing() const;

    const World& m_world;
    const AppState& m_state;
    WalletResponse m_wallet;
    int m_walletNumber = 0;
    /// The latest question for the wallet that has had no answer.
    int m_failedNumber = 0;
    int m_inFlight = 0;
    /// How many requests for the wallet there is a reason for: the start, the end of a view, a wallet to make up for.
    int m_owed = 1;
    /// Whether one more is allowed.
    int m_allowedWallets = 0;
    std::optional<double> m_lastEarnedCents;
    /// How many credits for views of earlier runs were there when all that was credited was last shown.
    qint64 m_shownLateCredits;
};

} // namespace orvella::simulation
