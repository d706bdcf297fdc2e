#include "core/WalletQuestions.h"

#include "api/Transport.h"

#include <algorithm>

namespace orvella {

WalletQuestions::WalletQuestions(const Clock& clock)
    : m_clock(clock)
{
}

WalletQuestions::Question WalletQuestions::ask()
{
    return {++m_asked, m_clock.now()};
}

bool WalletQuestions::answered(const Question& question)
{
    if (m_doubtedUntil && question.asked >= *m_doubtedUntil)
        m_doubtedUntil.reset();
    if (question.number < m_answered)
        return false;
    m_answered = question.number;
    return true;
}

void WalletQuestions::failed(const Question& question)
{
    m_failed = std::max(m_failed, question.number);
}

void WalletQuestions::doubt()
{
    m_doubtedUntil = m_clock.now() + Transport::kLongestExchange;
}

bool WalletQuestions::areOpen() const
{
    return m_doubtedUntil || m_failed > m_answered;
}

} // namespace orvella
