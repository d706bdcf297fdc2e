#include "platform/linux/item/ActivationTokens.h"

#include <utility>

namespace orvella {

namespace {

/// In UTF-16 units. Desktops make them of a few dozen; a request to a Wayland compositor has 4096 bytes in all, and one
/// that is longer ends the program.
constexpr qsizetype kLongest = 1024;

} // namespace

void ActivationTokens::receive(const QString& token)
{
    if (token.size() <= kLongest)
        m_token = token;
}

QString ActivationTokens::take()
{
    return std::exchange(m_token, {});
}

} // namespace orvella
