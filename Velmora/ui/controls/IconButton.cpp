#include "ui/controls/IconButton.h"

namespace orvella {

namespace {

constexpr int kSlot = 16;
constexpr qreal kDisc = 20;

} // namespace

IconButton::IconButton(const Look& look, Symbol symbol, int targetHeight)
    : Control(look, ReturnKey::clicks)
    , m_symbol(symbol)
    , m_targetHeight(targetHeight)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void IconButton::setOpen(bool isOpen)
{
    m_isOpen = isOpen;
    update();
}

QMargins IconButton::reach() const
{
    const auto above = (m_targetHeight - kSlot) / 2;
    return {kRingReach, above, kRingReach, m_targetHeight - kSlot - above};
}

QSize IconButton::sizeHint() const
{
    return QSize(kSlot, kSlot).grownBy(reach());
}

void IconButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF slot = place();
    const auto overhang = (kDisc - slot.width()) / 2;
    const auto disc = slot.adjusted(-overhang, -overhang, overhang, overhang);
    if (underMouse() || m_isOpen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme().hover);
        painter.drawEllipse(disc);
    }
    paintSymbol(painter, slot, m_symbol, theme());
    // The ring touches the disc, so that those of two neighbours stay apart.
    paintRing(painter, disc.adjusted(kRingGap, kRingGap, -kRingGap, -kRingGap), slot.width() / 2);
}

} // namespace orvella
