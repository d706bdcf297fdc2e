#include "support/VirtualDesktop.h"

#include <QDir>
#include <QProcess>

#include <cstdlib>
#include <span>

namespace orvella::VirtualDesktop {

using namespace Qt::StringLiterals;

namespace {

bool isNearly(QRgb pixel, QRgb colour)
{
    constexpr int kMostOff = 16;
    return std::abs(qRed(pixel) - qRed(colour)) <= kMostOff && std::abs(qGreen(pixel) - qGreen(colour)) <= kMostOff
        && std::abs(qBlue(pixel) - qBlue(colour)) <= kMostOff;
}

} // namespace

QImage screenshot(const QRect& area)
{
    const auto file = QDir::home().filePath(u"screenshot.png"_s);
    const auto geometry = u"%1x%2+%3+%4"_s.arg(area.width()).arg(area.height()).arg(area.left()).arg(area.top());
    if (!run(u"import"_s, {u"-window"_s, u"root"_s, u"-crop"_s, geometry, u"+repage"_s, file}))
        return {};
    return QImage(file);
}

std::optional<QRect> find(const QImage& picture, const QColor& colour)
{
    const auto pixels = picture.convertToFormat(QImage::Format_RGB32);
    QRect found;
    for (int y = 0; y < pixels.height(); ++y) {
        const std::span line(reinterpret_cast<const QRgb*>(pixels.constScanLine(y)), std::size_t(pixels.width()));
        for (std::size_t x = 0; x < line.size(); ++x)
            if (isNearly(line[x], colour.rgb()))
                found |= QRect(static_cast<int>(x), y, 1, 1);
    }
    if (found.isNull())
        return std::nullopt;
    return found;
}

bool click(QPoint place, int button)
{
    return run(u"xdotool"_s,
        {u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s, QString::number(button)});
}

bool run(const QString& program, const QStringList& arguments)
{
    return QProcess::execute(program, arguments) == 0;
}

} // namespace orvella::VirtualDesktop
