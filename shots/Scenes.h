#pragma once

#include "Page.h"

#include <QString>

#include <vector>

namespace orvella {

/// A picture under the name of its file.
struct Shot {
    QString name;
    QImage image;
};

/// Every state that a viewer meets, from the real widgets.
[[nodiscard]] std::vector<Shot> allShots(DesktopLook::Scheme scheme);

/// The status item in all its sizes, on a dark and on a light bar.
[[nodiscard]] Shot statusItemSheet();

/// All pictures beside one another, each with its name.
[[nodiscard]] QImage contactSheet(const std::vector<Shot>& shots);

} // namespace orvella
