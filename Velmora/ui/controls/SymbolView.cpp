#include "ui/controls/SymbolView.h"

#include <QPainter>

namespace orvella {

namespace {

constexpr int kSize = 16;

} // namespace

SymbolView::SymbolView(const Look& look, Symbol symbol)
    : m_look(look)
    , m_symbol(symbol)
{
    // As tall as the line of text that it stands beside.
    setFixedSize(kSize, look.lineHeight(TypeStyle::callout));
    connect(&look, &Look::changed, this, [this] {
        setFixedSize(kSize, m_look.lineHeight(TypeStyle::callout));
        update();
    });
}

void SymbolView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    paintSymbol(painter, QRectF(0, (height() - kSize) / 2.0, kSize, kSize), m_symbol, m_look.theme());
}

} // namespace orvella
