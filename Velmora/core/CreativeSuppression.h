#pragma once

#include "base/Clock.h"

#include <QHash>
#include <QString>

namespace orvella {

/// Creatives the viewer has just seen; each rests for five minutes.
class CreativeSuppression final {
public:
    explicit CreativeSuppression(const Clock& clock);

    /// Starts the rest of the creative, anew if it already rests.
    void suppress(const QString& creativeId);
    [[nodiscard]] bool isSuppressed(const QString& creativeId);

    /// How many creatives are remembered.
    [[nodiscard]] qsizetype count() const { return m_since.size(); }

private:
    void prune();

    const Clock& m_clock;
    QHash<QString, Instant> m_since;
};

} // namespace orvella
