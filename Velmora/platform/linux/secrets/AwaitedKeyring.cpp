#include "platform/linux/secrets/AwaitedKeyring.h"

#include "platform/linux/secrets/JoinedStop.h"
#include "platform/linux/secrets/KeyringWait.h"

#include <algorithm>

namespace orvella {

using namespace std::chrono_literals;

namespace {

constexpr Clock::duration kFirstPause = 2s;
constexpr Clock::duration kLongestPause = 32s;

} // namespace

AwaitedKeyring::AwaitedKeyring(Clock& clock, KeyringSecretStore& keyring)
    : m_clock(clock)
    , m_keyring(keyring)
{
}

AwaitedKeyring::~AwaitedKeyring()
{
    // Every flow resumes and ends in here, while the members are still alive.
    m_end.request_stop();
}

QCoro::Task<FromKeyring<std::optional<Secret>>> AwaitedKeyring::readItem(
    QString service, QString account, std::stop_token stop)
{
    const JoinedStop either(std::move(stop), m_end.get_token());
    const auto token = either.token();
    std::shared_ptr<KeyringWait> wait;
    auto pause = kFirstPause;
    while (!token.stop_requested()) {
        auto answer = co_await m_keyring.readItem(service, account, token);
        if (token.stop_requested())
            break;
        const auto hasAnswered = answer || answer.trouble() == KeyringTrouble::refused;
        m_hasGivenUp = m_hasGivenUp && !hasAnswered;
        if (hasAnswered || m_hasGivenUp)
            co_return answer;
        if (!wait)
            wait = sharedWait();
        co_await wait->untilNextTry(pause, token);
        if (token.stop_requested())
            break;
        if (wait->isOver()) {
            m_hasGivenUp = true;
            co_return KeyringTrouble::absent;
        }
        pause = wait->isServiceThere() ? std::min(2 * pause, kLongestPause) : kFirstPause;
    }
    co_return KeyringTrouble::stopped;
}

std::shared_ptr<KeyringWait> AwaitedKeyring::sharedWait()
{
    auto wait = m_wait.lock();
    if (!wait)
        m_wait = wait = std::make_shared<KeyringWait>(m_clock, kLimit, m_keyring.bus());
    return wait;
}

} // namespace orvella
