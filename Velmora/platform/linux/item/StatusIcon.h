#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/item/StatusPixmap.h"

#include <QColor>
#include <QString>

namespace orvella {

/// An icon of the item, as the bars are given it. Its pictures are drawn when a bar first asks for them.
class StatusIcon final {
public:
    /// No icon.
    StatusIcon() = default;

    /// Bars prefer the icon of that name in their theme; the pictures are for an empty name and for all others.
    StatusIcon(QString name, StatusAppearance::Tone tone, const QColor& colour);

    [[nodiscard]] QString name() const { return m_name; }

    [[nodiscard]] StatusPixmaps pixmaps() const;

    /// Whether both look the same, drawn or not.
    friend bool operator==(const StatusIcon& left, const StatusIcon& right)
    {
        return left.m_name == right.m_name && left.m_tone == right.m_tone && left.m_colour == right.m_colour;
    }

private:
    QString m_name;
    StatusAppearance::Tone m_tone = StatusAppearance::Tone::label;
    /// Invalid where there is no icon.
    QColor m_colour;
    mutable StatusPixmaps m_pixmaps;
};

} // namespace orvella
