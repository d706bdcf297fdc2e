#include "ui/Compose.h"

#include <QStyle>

#include <algorithm>
#include <utility>

namespace orvella {

namespace {

/// Gives a reaching widget its place and lets it go beyond.
class ReachingItem final : public QWidgetItem {
public:
    ReachingItem(QWidget* widget, const Reaching& reaching)
        : QWidgetItem(widget)
        , m_reaching(reaching)
    {
    }

    [[nodiscard]] QSize sizeHint() const override { return place(QWidgetItem::sizeHint()); }
    [[nodiscard]] QSize minimumSize() const override { return place(QWidgetItem::minimumSize()); }
    [[nodiscard]] QSize maximumSize() const override
    {
        const auto size = QWidgetItem::maximumSize();
        return size.width() >= QWIDGETSIZE_MAX ? QSize(size.width(), place(size).height()) : place(size);
    }

    void setGeometry(const QRect& rect) override
    {
        if (isEmpty())
            return;
        const auto reach = m_reaching.reach();
        const bool isRightToLeft = widget()->layoutDirection() == Qt::RightToLeft;
        const QMargins visual(isRightToLeft ? reach.right() : reach.left(), reach.top(),
            isRightToLeft ? reach.left() : reach.right(), reach.bottom());
        widget()->setGeometry(aligned(rect).marginsAdded(visual));
    }

private:
    [[nodiscard]] QSize place(QSize size) const { return isEmpty() ? size : size.shrunkBy(m_reaching.reach()); }

    [[nodiscard]] QRect aligned(const QRect& rect) const
    {
        auto size = rect.size().boundedTo(maximumSize());
        if (alignment().testAnyFlags(Qt::AlignVertical_Mask))
            size.setHeight(std::min(size.height(), sizeHint().height()));
        if (alignment().testAnyFlags(Qt::AlignHorizontal_Mask))
            size.setWidth(std::min(size.width(), sizeHint().width()));
        return QStyle::alignedRect(widget()->layoutDirection(), alignment(), size, rect);
    }

    const Reaching& m_reaching;
};

void addWidget(QBoxLayout& layout, QWidget* widget)
{
    const auto* const reaching = dynamic_cast<const Reaching*>(widget);
    if (!reaching) {
        layout.addWidget(widget);
        return;
    }
    // A layout adopts widgets by itself only when it makes their items.
    if (auto* const parent = layout.parentWidget())
        widget->setParent(parent);
    layout.addItem(new ReachingItem(widget, *reaching));
}

/// Adds what it is called with to a layout.
struct Adder {
    QBoxLayout& layout;

    void operator()(QWidget* widget) const { addWidget(layout, widget); }
    void operator()(QLayout* inner) const { layout.addLayout(inner); }
    void operator()(FlexibleSpace) const { layout.addStretch(1); }
    void operator()(FixedSpace space) const { layout.addSpacing(space.points); }
};

template <class Layout> Layout* composed(int spacing, std::initializer_list<Entry> entries)
{
    auto* const layout = new Layout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    for (const auto& entry : entries)
        std::visit(Adder {*layout}, entry);
    return layout;
}

} // namespace

QVBoxLayout* column(int spacing, std::initializer_list<Entry> entries)
{
    return composed<QVBoxLayout>(spacing, entries);
}

QHBoxLayout* row(int spacing, std::initializer_list<Entry> entries)
{
    auto* const layout = composed<QHBoxLayout>(spacing, entries);
    for (int place = 0; place < layout->count(); ++place)
        layout->itemAt(place)->setAlignment(Qt::AlignVCenter);
    return layout;
}

QWidget* group(QLayout* layout)
{
    auto* const widget = new QWidget;
    widget->setLayout(layout);
    return widget;
}

QLayout* leading(QWidget* widget)
{
    return row(0, {widget, FlexibleSpace {}});
}

Conditional::Conditional(std::function<QWidget*()> build)
    : m_build(std::move(build))
{
    setLayout(column(0, {}));
    hide();
}

void Conditional::setPresent(bool present)
{
    if (present == isPresent())
        return;
    if (present) {
        m_content = m_build();
        addWidget(*static_cast<QBoxLayout*>(layout()), m_content);
    } else {
        delete std::exchange(m_content, nullptr);
    }
    setVisible(present);
}

} // namespace orvella
