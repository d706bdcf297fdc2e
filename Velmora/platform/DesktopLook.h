#pragma once

#include <QString>

#include <functional>

namespace orvella {

/// How the viewer wants things to look, as the desktop says it, followed live.
class DesktopLook {
public:
    enum class Scheme { unknown, light, dark };

    virtual ~DesktopLook() = default;

    /// Whether applications are to be light or dark; unknown where the desktop has no word for it.
    [[nodiscard]] virtual Scheme scheme() const = 0;
    [[nodiscard]] virtual bool isHighContrast() const = 0;
    /// Whether nothing is to move that need not.
    [[nodiscard]] virtual bool isMotionReduced() const = 0;
    /// How much larger than usual text is to be, 1 being the usual size; beyond what windows are scaled by as a whole.
    [[nodiscard]] virtual double textScale() const = 0;
    /// The family of the fonts that texts are in; empty where the toolkit knows best.
    [[nodiscard]] virtual QString fontFamily() const = 0;
    /// The same for figures and letters of one width.
    [[nodiscard]] virtual QString fixedFontFamily() const = 0;

    /// Calls `changed` after any of the answers has changed. There is one listener.
    virtual void watch(std::function<void()> changed) = 0;
};

} // namespace orvella
