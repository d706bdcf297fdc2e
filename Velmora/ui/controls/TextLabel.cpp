#include "ui/controls/TextLabel.h"

#include "ui/look/LineBox.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvella {

TextLabel::TextLabel(const Look& look, TypeStyle style, Tone tone, Lines lines)
    : m_look(look)
    , m_style(style)
    , m_tone(tone)
    , m_lines(lines)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(lines != Lines::one);
    QSizePolicy policy(QSizePolicy::Preferred, lines == Lines::one ? QSizePolicy::Fixed : QSizePolicy::Preferred);
    policy.setHeightForWidth(lines != Lines::one);
    setSizePolicy(policy);
    connect(&look, &Look::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void TextLabel::setTone(Tone tone)
{
    m_tone = tone;
    update();
}

void TextLabel::setBreaksAnywhere()
{
    m_breaksAnywhere = true;
    updateGeometry();
}

QSize TextLabel::sizeHint() const
{
    const QFontMetricsF metrics(m_look.font(m_style), this);
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(text()))), m_look.lineHeight(m_style)};
}

QSize TextLabel::minimumSizeHint() const
{
    return {0, m_look.lineHeight(m_style)};
}

int TextLabel::heightForWidth(int width) const
{
    return m_look.lineHeight(m_style) * static_cast<int>(std::max<qsizetype>(lines(width).size(), 1));
}

void TextLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setFont(m_look.font(m_style));
    painter.setPen(colour());
    const auto side = QStyle::visualAlignment(layoutDirection(), alignment());
    const auto direction = textDirection(text(), layoutDirection());
    QRectF box(0, 0, width(), m_look.lineHeight(m_style));
    for (const auto& line : lines(width())) {
        paintLine(painter, box, line, direction, side);
        box.translate(0, box.height());
    }
}

QStringList TextLabel::lines(int width) const
{
    const auto font = m_look.font(m_style);
    const QFontMetricsF metrics(font, this);
    QTextLayout layout(text(), font, this);
    QTextOption option;
    option.setWrapMode(m_breaksAnywhere ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WordWrap);
    layout.setTextOption(option);
    QStringList result;
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        if (result.size() + 1 == mostLines()) {
            result.append(metrics.elidedText(text().sliced(line.textStart()).simplified(), Qt::ElideRight, width));
            break;
        }
        line.setLineWidth(width);
        result.append(text().sliced(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return result;
}

int TextLabel::mostLines() const
{
    switch (m_lines) {
    case Lines::one:
        return 1;
    case Lines::two:
        return 2;
    case Lines::three:
        return 3;
    case Lines::twenty:
        return 20;
    case Lines::all:
        break;
    }
    return std::numeric_limits<int>::max();
}

QColor TextLabel::colour() const
{
    const auto& theme = m_look.theme();
    switch (m_tone) {
    case Tone::primary:
        return theme.text;
    case Tone::secondary:
        return theme.secondaryText;
    case Tone::green:
        return theme.green;
    case Tone::red:
        return theme.red;
    }
    Q_UNREACHABLE();
}

TextLabel* label(const Look& look, TypeStyle style, const QString& text, Tone tone, TextLabel::Lines lines)
{
    auto* const result = new TextLabel(look, style, tone, lines);
    result->setText(text);
    return result;
}

} // namespace orvella
