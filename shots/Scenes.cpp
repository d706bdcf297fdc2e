#include "Scenes.h"

#include "AdShots.h"
#include "ControlsShots.h"
#include "MenuShots.h"
#include "StartupShots.h"
#include "platform/linux/item/PanelTone.h"
#include "platform/linux/item/TrayGlyph.h"

#include <QFontDatabase>
#include <QPainter>

#include <algorithm>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kStatusSheet(900, 388);
constexpr int kBand = 194;
constexpr int kSheetWidth = 2400;
constexpr int kSheetGap = 24;
constexpr int kSheetCaption = 28;

QImage glyphAt(int pixels, bool isAdReady, const QColor& colour)
{
    return drawTrayGlyph(isAdReady ? TrayGlyph::dollarAd : TrayGlyph::dollar, pixels, colour);
}

/// The text where a bar takes text, as wide as the item is then.
QImage statusText(bool isAdReady, const QColor& colour)
{
    QImage image(QSize(isAdReady ? 84 : 36, 48), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(13);
    font.setWeight(QFont::Bold);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(QRectF(0, 0, image.width() / 2.0, 24), Qt::AlignCenter, isAdReady ? u"$ AD"_s : u"$"_s);
    return image;
}

void addStatusLine(Page& page, int middle, bool isAdReady, const QColor& colour)
{
    int left = 28;
    const auto add = [&](QImage image, qreal scale, int gap) {
        image.setDevicePixelRatio(1 / scale);
        const auto size = image.deviceIndependentSize();
        page.addImage(image, QPointF(left, middle - size.height() / 2));
        left += static_cast<int>(size.width()) + gap;
    };
    for (const int pixels : {16, 22, 24, 32})
        add(glyphAt(pixels, isAdReady, colour), 1, 50);
    left = 338;
    for (const int pixels : {16, 22, 24, 32}) {
        const auto image = glyphAt(pixels, isAdReady, colour);
        add(image.scaled(image.size() * 4, Qt::IgnoreAspectRatio, Qt::FastTransformation), 0.5, 20);
    }
    left = 638;
    for (const int pixels : {32, 44, 48, 64})
        add(glyphAt(pixels, isAdReady, colour), 0.5, 14);
    left = 800;
    page.addImage(statusText(isAdReady, colour), QPointF(left, middle - 12));
}

} // namespace

std::vector<Shot> allShots(DesktopLook::Scheme scheme)
{
    std::vector<Shot> shots;
    for (const auto& make : {adShots, menuShots, startupShots, controlsShots})
        std::ranges::move(make(scheme), std::back_inserter(shots));
    for (auto& shot : shots)
        shot.name += scheme == DesktopLook::Scheme::dark ? u"-dark"_s : u"-light"_s;
    return shots;
}

Shot statusItemSheet()
{
    Page page(kStatusSheet, DesktopLook::Scheme::light);
    int top = 0;
    for (const auto tone : {PanelTone::dark, PanelTone::light}) {
        page.fill({0, top, kStatusSheet.width(), kBand},
            tone == PanelTone::dark ? QColor(0x1C, 0x1D, 0x20) : QColor(0xF2, 0xF3, 0xF5));
        addStatusLine(page, top + 68, false, statusColour(StatusAppearance::Tone::label, tone));
        addStatusLine(page, top + 140, true, statusColour(StatusAppearance::Tone::green, tone));
        top += kBand;
    }
    return {u"status-item"_s, page.image()};
}

QImage contactSheet(const std::vector<Shot>& shots)
{
    std::vector<QPoint> places;
    QPoint place(kSheetGap, kSheetGap);
    int lineHeight = 0;
    for (const auto& shot : shots) {
        if (place.x() + shot.image.width() / 2 + kSheetGap > kSheetWidth) {
            place = {kSheetGap, place.y() + lineHeight + kSheetGap};
            lineHeight = 0;
        }
        places.push_back(place);
        place.rx() += shot.image.width() / 2 + kSheetGap;
        lineHeight = std::max(lineHeight, shot.image.height() / 2 + kSheetCaption);
    }
    QImage sheet(QSize(kSheetWidth, place.y() + lineHeight + kSheetGap), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (std::size_t number = 0; number < shots.size(); ++number) {
        const auto& shot = shots[number];
        painter.drawText(places[number] + QPoint(0, 16), shot.name);
        painter.drawImage(QRect(places[number] + QPoint(0, kSheetCaption), shot.image.size() / 2), shot.image);
    }
    return sheet;
}

} // namespace orvella
