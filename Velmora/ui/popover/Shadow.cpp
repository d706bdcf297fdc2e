#include "ui/popover/Shadow.h"

#include "ui/look/Theme.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace orvella {

namespace {

/// The widths of three box filters that together come close to a Gaussian of this standard deviation.
std::array<int, 3> boxWidths(qreal sigma)
{
    constexpr int kBoxes = 3;
    const auto ideal = std::sqrt(12 * sigma * sigma / kBoxes + 1);
    auto narrow = static_cast<int>(std::floor(ideal));
    if (narrow % 2 == 0)
        --narrow;
    const auto narrowCount = std::lround(
        (12 * sigma * sigma - kBoxes * narrow * narrow - 4 * kBoxes * narrow - 3 * kBoxes) / (-4 * narrow - 4));
    std::array<int, 3> widths {};
    for (int box = 0; box < kBoxes; ++box)
        widths.at(static_cast<std::size_t>(box)) = box < narrowCount ? narrow : narrow + 2;
    return widths;
}

/// Replaces each value by the mean of those around it; beyond the ends everything is clear.
void blurLine(uchar* line, int count, qsizetype step, int width, std::vector<uchar>& copy)
{
    const int half = width / 2;
    copy.resize(static_cast<std::size_t>(count));
    for (int place = 0; place < count; ++place)
        copy[static_cast<std::size_t>(place)] = line[place * step];
    const auto at = [&copy, count](int place) {
        return place >= 0 && place < count ? int {copy[static_cast<std::size_t>(place)]} : 0;
    };
    int sum = 0;
    for (int place = -half; place <= half; ++place)
        sum += at(place);
    for (int place = 0; place < count; ++place) {
        line[place * step] = static_cast<uchar>(sum / width);
        sum += at(place + half + 1) - at(place - half);
    }
}

void blur(QImage& alpha, qreal sigma)
{
    std::vector<uchar> copy;
    for (const int width : boxWidths(sigma)) {
        for (int y = 0; y < alpha.height(); ++y)
            blurLine(alpha.scanLine(y), alpha.width(), 1, width, copy);
        for (int x = 0; x < alpha.width(); ++x)
            blurLine(alpha.bits() + x, alpha.height(), alpha.bytesPerLine(), width, copy);
    }
}

/// One layer: the shape in a colour, blurred and moved down.
QImage layer(const QPainterPath& shape, QSize pixels, qreal scale, const QColor& colour, qreal sigma, qreal down)
{
    QImage alpha(pixels, QImage::Format_Alpha8);
    alpha.fill(0);
    QPainter painter(&alpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.translate(kShadowMargins.left(), kShadowMargins.top() + down);
    painter.fillPath(shape, colour);
    painter.end();
    blur(alpha, sigma * scale);

    QImage result(pixels, QImage::Format_ARGB32_Premultiplied);
    result.fill(QColor(colour.red(), colour.green(), colour.blue()));
    painter.begin(&result);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, alpha);
    return result;
}

} // namespace

QImage shadow(const QPainterPath& shape, QSize size, qreal scale, const Theme& theme)
{
    const auto pixels = (QSizeF(size.grownBy(kShadowMargins)) * scale).toSize();
    auto result = layer(shape, pixels, scale, theme.farShadow, 9, 6);
    QPainter painter(&result);
    painter.drawImage(0, 0, layer(shape, pixels, scale, theme.nearShadow, 2, 1));
    painter.end();
    result.setDevicePixelRatio(scale);
    return result;
}

} // namespace orvella
