#pragma once

#include "platform/StatusItem.h"

#include <QColor>
#include <QImage>
#include <QList>

namespace orvella {

/// The status item's icon in this colour, in the sizes of all usual bars at one and two device pixels for each logical
/// one, so that none has to scale it.
[[nodiscard]] QList<QImage> statusPictures(StatusAppearance::Tone tone, const QColor& colour);

} // namespace orvella
