#include "platform/linux/item/StatusIcon.h"

#include "platform/linux/item/StatusPictures.h"

#include <utility>

namespace orvella {

StatusIcon::StatusIcon(QString name, StatusAppearance::Tone tone, const QColor& colour)
    : m_name(std::move(name))
    , m_tone(tone)
    , m_colour(colour)
{
}

StatusPixmaps StatusIcon::pixmaps() const
{
    if (m_pixmaps.isEmpty() && m_colour.isValid()) {
        for (const auto& picture : statusPictures(m_tone, m_colour))
            m_pixmaps.append(StatusPixmap::fromImage(picture));
    }
    return m_pixmaps;
}

} // namespace orvella
