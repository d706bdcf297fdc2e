#pragma once

#include "base/Clock.h"

#include <QHash>
#include <QQueue>
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
    struct Rest {
        QString creativeId;
        Instant since;
    };

    void prune();

    const Clock& m_clock;
    QHash<QString, Instant> m_since;
    /// In the order in which they began. A rest that has begun anew leaves its earlier beginning here.
    QQueue<Rest> m_rests;
};

} // namespace orvella
