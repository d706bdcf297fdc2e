#include "ui/look/LineBox.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace orvella {

void paintLine(
    QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction, Qt::Alignment alignment)
{
    const QFontMetricsF metrics(painter.font(), painter.device());
    const auto height = metrics.ascent() + metrics.descent();
    // On a whole device pixel, or the text would be blurred.
    const auto scale = painter.device()->devicePixelRatioF();
    const auto baseline = std::round((box.top() + (box.height() - height) / 2 + metrics.ascent()) * scale) / scale;

    QTextLayout layout(text, painter.font(), painter.device());
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(direction);
    layout.setTextOption(option);
    layout.beginLayout();
    auto line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(box.width());
    layout.endLayout();
    if (!line.isValid())
        return;

    const auto room = box.width() - line.naturalTextWidth();
    auto left = box.left();
    if (alignment.testFlag(Qt::AlignRight))
        left += room;
    else if (alignment.testFlag(Qt::AlignHCenter))
        left += room / 2;
    line.draw(&painter, {left, baseline - line.ascent()});
}

Qt::LayoutDirection textDirection(const QString& text, Qt::LayoutDirection interface)
{
    const bool hasRightToLeft = std::ranges::any_of(text,
        [](QChar character) { return character.direction() == QChar::DirR || character.direction() == QChar::DirAL; });
    if (interface == Qt::RightToLeft && hasRightToLeft)
        return Qt::RightToLeft;
    return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

} // namespace orvella
