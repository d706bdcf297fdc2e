#include "platform/linux/ActivationTokens.h"

#include <utility>

namespace orvella {

void ActivationTokens::receive(const QString& token)
{
    m_token = token;
}

QString ActivationTokens::take()
{
    return std::exchange(m_token, {});
}

} // namespace orvella
