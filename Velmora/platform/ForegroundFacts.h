#pragma once

#include <QSizeF>

#include <optional>
#include <vector>

namespace orvella {

/// One window that is on a screen now. What the system does not say is absent.
struct ScreenWindow {
    /// Identifies the application; on most systems its process.
    std::optional<qint64> owner;
    /// 0 for an ordinary window; panels, tooltips and other overlays lie on other layers.
    std::optional<qint64> layer;
    /// In the same units as the screens. A dimension that is not known is 0.
    std::optional<QSizeF> size;
};

/// What lies in front of the viewer. Every answer is asked of the system afresh; one that cannot be had is absent.
class ForegroundFacts {
public:
    virtual ~ForegroundFacts() = default;

    [[nodiscard]] virtual std::optional<bool> isScreenLocked() const = 0;
    /// Whether another program keeps the session from going idle for something that the viewer looks at, as a video or
    /// a presentation does. Absent where the system tells which windows are in front: they say it better.
    [[nodiscard]] virtual std::optional<bool> isKeptAwakeForViewing() const = 0;
    /// The application in front, as windows name their owner.
    [[nodiscard]] virtual std::optional<qint64> frontApplication() const = 0;
    /// The windows on all screens, the desktop's own background excluded.
    [[nodiscard]] virtual std::optional<std::vector<ScreenWindow>> windows() const = 0;
    [[nodiscard]] virtual std::vector<QSizeF> screens() const = 0;
};

} // namespace orvella
