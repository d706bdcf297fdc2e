#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/PanelTone.h"

#include <QImage>
#include <QList>

namespace orvella {

/// The status item's icon on such a panel, in the sizes of all usual bars at one and two device pixels for each logical
/// one, so that none has to scale it.
[[nodiscard]] QList<QImage> statusPictures(StatusAppearance::Tone tone, PanelTone panel);

} // namespace orvella
