#include "ui/Mark.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>

namespace orvella {

namespace {

constexpr int kSize = 52;
constexpr qreal kRadius = 10;
constexpr qreal kLine = 2;
constexpr float kLineOpacity = 0.85F;
constexpr int kDollarSize = 28;
constexpr qreal kBaseline = 36;
constexpr QColor kGreen(0x0B, 0x7A, 0x3E);

} // namespace

Mark::Mark()
{
    setFixedSize(kSize, kSize);
}

void Mark::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(kLine / 2, kLine / 2, -kLine / 2, -kLine / 2);
    auto line = kGreen;
    line.setAlphaF(kLineOpacity);
    painter.setPen(QPen(line, kLine));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(box, kRadius, kRadius);

    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(kDollarSize);
    font.setWeight(QFont::ExtraBold);
    painter.setFont(font);
    painter.setPen(kGreen);
    const auto dollar = QStringLiteral("$");
    const auto width = QFontMetricsF(font, this).horizontalAdvance(dollar);
    painter.drawText(QPointF((kSize - width) / 2, kBaseline), dollar);
}

} // namespace orvella
