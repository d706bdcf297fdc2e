#pragma once

#include <QPoint>
#include <QRect>
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
    struct Handlers {
        /// The item was clicked.
        std::function<void()> clicked;
        /// The viewer asks for the item's menu at this place of the desktop.
        std::function<void(QPoint)> menuRequested;
    };

    virtual ~StatusItem() = default;

    /// Whether the system keeps the item's place among the program's own settings, where it may be seeded.
    [[nodiscard]] virtual bool keepsPlaceInSettings() const = 0;

    /// Puts the item into the bar, now or as soon as there is one.
    virtual void show(Handlers handlers) = 0;

    virtual void setAppearance(const StatusAppearance& appearance) = 0;

    /// Where the item is on the desktop, as far as the bar says: its rectangle, or the point where it was last clicked
    /// as a rectangle of one pixel. Nothing where that is not known.
    [[nodiscard]] virtual std::optional<QRect> place() const = 0;
};

} // namespace orvella
