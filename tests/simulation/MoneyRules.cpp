#include "simulation/MoneyRules.h"

#include "simulation/SimulatedKeyring.h"
#include "simulation/SimulatedService.h"

#include <algorithm>

namespace orvella::simulation {

using namespace Qt::Literals::StringLiterals;

MoneyRules::MoneyRules(const World& world, const AppState& state)
    : m_world(world)
    , m_state(state)
    , m_shownLateCredits(world.service.lateCredits())
{
}

void MoneyRules::walletSent()
{
    if (m_owed > 0)
        --m_owed;
    else
        m_world.expect(m_allowedWallets-- > 0, u"The wallet is asked for without a reason."_s);
    ++m_inFlight;
}

bool MoneyRules::walletAnswered(int number, const std::optional<WalletResponse>& wallet)
{
    --m_inFlight;
    if (!wallet)
        m_failedNumber = std::max(m_failedNumber, number);
    // An answer that was overtaken by a newer one is old news.
    if (number < m_walletNumber) {
        m_world.journal.note(u"wallet: overtaken"_s);
        return false;
    }
    if (!wallet)
        return false;
    m_walletNumber = number;
    m_wallet = *wallet;
    if (isAllShown())
        m_shownLateCredits = m_world.service.lateCredits();
    return true;
}

void MoneyRules::pollAnswered(bool isVerdictAwaited)
{
    const bool isToBeMadeUpFor = !isVerdictAwaited && isMissing();
    if (!isToBeMadeUpFor && m_failedNumber <= m_walletNumber)
        return;
    ++m_owed;
    m_world.journal.note(u"wallet: to be asked again"_s);
}

void MoneyRules::viewEnded(std::optional<double> earnedCents)
{
    ++m_owed;
    if (earnedCents)
        m_lastEarnedCents = earnedCents;
}

void MoneyRules::check(bool hasStarted) const
{
    const auto& wallet = m_wallet.wallet;
    m_world.expect(m_state.linked() == m_wallet.linked && m_state.pendingCents() == wallet.pendingCents
            && m_state.availableCents() == wallet.availableCents && m_state.paidCents() == wallet.paidCents
            && m_state.lifetimeCents() == wallet.lifetimeCents,
        u"The money shown is not what the wallet held when it was last asked."_s);
    m_world.expect(m_state.lastEarnedCents() == m_lastEarnedCents, u"What an ad has earned is not what is shown."_s);
    // What the program waits for may be the token.
    m_world.expect(m_owed == 0 || !hasStarted || m_world.keyring.waiting() > 0,
        u"The wallet is not asked for where it has to be."_s);
}

bool MoneyRules::isAllShown() const
{
    return m_world.service.wallet().wallet.lifetimeCents == m_wallet.wallet.lifetimeCents;
}

/// What the service has credited in this run is not shown, and no answer is under way that would tell.
bool MoneyRules::isMissing() const
{
    return m_owed == 0 && m_inFlight == 0 && !isAllShown() && m_shownLateCredits == m_world.service.lateCredits();
}

} // namespace orvella::simulation
