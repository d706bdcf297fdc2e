#pragma once

#include <QPoint>
#include <QString>

#include <functional>
#include <optional>

namespace orvella {

/// What the bar shows for the program.
struct StatusAppearance {
    enum class Tone { label, green };

    /// The text, where the bar takes text; elsewhere the icon stands for it.
    QString text;
    /// The width of the text in points.
    int width = 0;
    Tone tone = Tone::label;
    /// The tooltip and the accessible name.
    QString description;

    friend bool operator==(const StatusAppearance&, const StatusAppearance&) = default;
};

/// The program's one item in the desktop's bar.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// Puts the item into the bar, now or as soon as there is one. `clicked` is called for each click.
    virtual void show(std::function<void()> clicked) = 0;

    virtual void setAppearance(const StatusAppearance& appearance) = 0;

    /// Where the item was last clicked, in screen coordinates; nothing where the bar does not say.
    [[nodiscard]] virtual std::optional<QPoint> lastClick() const = 0;
};

} // namespace orvella
