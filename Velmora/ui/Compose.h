#pragma once

#include <QBoxLayout>
#include <QMargins>
#include <QWidget>

#include <functional>
#include <initializer_list>
#include <variant>

namespace orvella {

/// A widget that is larger than its place in a layout: it has room for a ring around it, or is a larger target for the
/// pointer than it looks.
class Reaching {
public:
    virtual ~Reaching() = default;

    /// How far the widget goes beyond its place, in points.
    [[nodiscard]] virtual QMargins reach() const = 0;
};

/// Space that takes what the others leave.
struct FlexibleSpace {};

/// Space of a fixed length in points, for where two neighbours are not as far apart as the rest.
struct FixedSpace {
    int points;
};

/// One entry of a row or a column. The widgets and layouts go to the layout that is made of them.
using Entry = std::variant<QWidget*, QLayout*, FlexibleSpace, FixedSpace>;

/// Entries below one another, each as wide as the column.
[[nodiscard]] QVBoxLayout* column(int spacing, std::initializer_list<Entry> entries);
/// Entries beside one another in the direction of reading, centred on one line.
[[nodiscard]] QHBoxLayout* row(int spacing, std::initializer_list<Entry> entries);
/// The same layout with this much room around it.
template <class Layout> [[nodiscard]] Layout* padded(const QMargins& padding, Layout* layout)
{
    layout->setContentsMargins(padding);
    return layout;
}

/// A widget that only holds a layout.
[[nodiscard]] QWidget* group(QLayout* layout);
/// A widget that keeps to the leading edge instead of filling the column.
[[nodiscard]] QLayout* leading(QWidget* widget);

/// A part of a view that is there only while it applies: it is built each time it begins to and taken away afterwards.
class Conditional final : public QWidget {
    Q_OBJECT

public:
    explicit Conditional(std::function<QWidget*()> build);

    void setPresent(bool present);
    [[nodiscard]] bool isPresent() const { return m_content != nullptr; }

private:
    std::function<QWidget*()> m_build;
    QWidget* m_content = nullptr;
};

} // namespace orvella
