#include "platform/linux/item/StatusPictures.h"

#include "platform/linux/item/TrayGlyph.h"

namespace orvella {

QList<QImage> statusPictures(StatusAppearance::Tone tone, const QColor& colour)
{
    const auto glyph = tone == StatusAppearance::Tone::green ? TrayGlyph::dollarAd : TrayGlyph::dollar;
    QList<QImage> pictures;
    for (const int pixels : {16, 22, 24, 32, 44, 48, 64})
        pictures.append(drawTrayGlyph(glyph, pixels, colour));
    return pictures;
}

} // namespace orvella
