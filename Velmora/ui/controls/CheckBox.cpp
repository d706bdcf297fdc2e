#include "ui/controls/CheckBox.h"

#include "ui/look/LineBox.h"

#include <QFontMetricsF>
#include <QStyle>

#include <cmath>

namespace orvella {

namespace {

constexpr int kBox = 16;
constexpr qreal kRadius = 4;
constexpr qreal kEdge = 1.5;
constexpr int kGap = 8;
// Half of the gap between two lines.
constexpr int kReach = 5;

void paintTick(QPainter& painter, const QRectF& box, const QColor& colour)
{
    painter.save();
    painter.translate(box.topLeft() + QPointF(8.25, 7.25));
    painter.rotate(42);
    painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawPolyline(QPolygonF {{-3, 4}, {2, 4}, {2, -5}});
    painter.restore();
}

} // namespace

CheckBox::CheckBox(const Look& look, const QString& text)
    : Control(look)
{
    setText(text);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QMargins CheckBox::reach() const
{
    return {kRingReach, kReach, kRingReach, kReach};
}

QSize CheckBox::sizeHint() const
{
    const QFontMetricsF metrics(look().font(TypeStyle::body), this);
    const auto text = static_cast<int>(std::ceil(metrics.horizontalAdvance(this->text())));
    return QSize(kBox + kGap + text, look().lineHeight(TypeStyle::body)).grownBy(reach());
}

void CheckBox::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto whole = place();
    const QRect box = QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter, {kBox, kBox}, whole);
    paintControl(painter, box, [this](QPainter& canvas, const QRectF& place) { paintBox(canvas, place); });

    const auto beside = QStyle::visualRect(layoutDirection(), whole, whole.adjusted(kBox + kGap, 0, 0, 0));
    painter.setFont(look().font(TypeStyle::body));
    painter.setPen(isEnabled() ? theme().text : theme().disabledText);
    const auto text = QFontMetricsF(painter.font(), this).elidedText(this->text(), Qt::ElideRight, beside.width());
    paintLine(painter, beside, text, textDirection(text, layoutDirection()),
        QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
    paintRing(painter, box, kRadius);
}

void CheckBox::paintBox(QPainter& painter, const QRectF& box) const
{
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme().accent);
        painter.drawRoundedRect(box, kRadius, kRadius);
        paintTick(painter, box, theme().onAccent);
        return;
    }
    constexpr qreal kInset = kEdge / 2;
    painter.setPen(QPen(theme().controlOff, kEdge));
    painter.setBrush(theme().box);
    painter.drawRoundedRect(box.adjusted(kInset, kInset, -kInset, -kInset), kRadius - kInset, kRadius - kInset);
}

} // namespace orvella
