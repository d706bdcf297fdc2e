#include "ui/controls/SwitchRow.h"

#include "ui/look/LineBox.h"

#include <QFontMetricsF>
#include <QStyle>

namespace orvella {

namespace {

constexpr QSize kSwitch(28, 16);
constexpr qreal kThumb = 12;
constexpr qreal kInset = 2;
constexpr qreal kTravel = 12;
constexpr int kGap = 8;
// Half of the gap between two rows.
constexpr int kReach = 8;
constexpr int kShadowAlpha = 56;

QColor mixed(const QColor& from, const QColor& to, qreal share)
{
    const auto mix = [share](float a, float b) { return a + (b - a) * static_cast<float>(share); };
    return QColor::fromRgbF(
        mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()), mix(from.blueF(), to.blueF()));
}

} // namespace

SwitchRow::SwitchRow(const Look& look, const QString& text)
    : Control(look)
    , m_thumb(look, this, 0)
{
    setText(text);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(this, &QCheckBox::toggled, this, [this](bool isOn) { m_thumb.glideTo(isOn ? 1 : 0); });
}

QMargins SwitchRow::reach() const
{
    return {kRingReach, kReach, kRingReach, kReach};
}

QSize SwitchRow::sizeHint() const
{
    const QFontMetrics metrics(look().font(TypeStyle::body), this);
    return QSize(metrics.horizontalAdvance(text()) + kGap + kSwitch.width(), look().lineHeight(TypeStyle::body))
        .grownBy(reach());
}

/// The layouts ask for it far more often than for the other, and measuring a text is dear.
QSize SwitchRow::minimumSizeHint() const
{
    return {0, QSize(0, look().lineHeight(TypeStyle::body)).grownBy(reach()).height()};
}

void SwitchRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto whole = place();
    const QRect box = QStyle::alignedRect(layoutDirection(), Qt::AlignRight | Qt::AlignVCenter, kSwitch, whole);
    paintControl(painter, box, [this](QPainter& canvas, const QRectF& place) { paintSwitch(canvas, place); });

    const auto beside = QStyle::visualRect(layoutDirection(), whole, whole.adjusted(0, 0, -kSwitch.width() - kGap, 0));
    painter.setFont(look().font(TypeStyle::body));
    painter.setPen(isEnabled() ? theme().text : theme().disabledText);
    const auto text = QFontMetricsF(painter.font(), this).elidedText(this->text(), Qt::ElideRight, beside.width());
    paintLine(painter, beside, text, textDirection(text, layoutDirection()),
        QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
    paintRing(painter, box, box.height() / 2.0);
}

void SwitchRow::paintSwitch(QPainter& painter, const QRectF& box) const
{
    const auto radius = box.height() / 2;
    const auto share = m_thumb.value();
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(theme().controlOff, theme().accent, share));
    painter.drawRoundedRect(box, radius, radius);

    const auto travelled = layoutDirection() == Qt::RightToLeft ? 1 - share : share;
    const QRectF thumb(box.left() + kInset + kTravel * travelled, box.top() + kInset, kThumb, kThumb);
    if (isEnabled()) {
        painter.setBrush(QColor(0, 0, 0, kShadowAlpha));
        painter.drawEllipse(thumb.translated(0, 0.75));
    }
    painter.setBrush(share > 0.5 ? theme().onAccent : QColor(Qt::white));
    painter.drawEllipse(thumb);
}

} // namespace orvella
