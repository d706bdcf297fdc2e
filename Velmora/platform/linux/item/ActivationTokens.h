#pragma once

#include <QString>

namespace orvella {

/// The rights to bring a window to the front that desktops hand out with a viewer's click.
class ActivationTokens final {
public:
    /// A newer token takes the place of one that was not taken. What is too long for a token is none.
    void receive(const QString& token);

    /// The newest token; empty where there is none. It is good for one window, so it is given out once.
    [[nodiscard]] QString take();

private:
    QString m_token;
};

} // namespace orvella
