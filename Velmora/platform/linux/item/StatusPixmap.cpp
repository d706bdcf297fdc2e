#include "platform/linux/item/StatusPixmap.h"

#include <QtEndian>

namespace orvella {

StatusPixmap StatusPixmap::fromImage(const QImage& image)
{
    const auto straight = image.convertToFormat(QImage::Format_ARGB32);
    StatusPixmap pixmap {straight.width(), straight.height(), {}};
    pixmap.argb.reserve(straight.sizeInBytes());
    for (int line = 0; line < straight.height(); ++line) {
        // QImage keeps each pixel as a number in the machine's own byte order.
        const auto* pixels = straight.constScanLine(line);
        QByteArray swapped(qsizetype {4} * straight.width(), Qt::Uninitialized);
        qToBigEndian<quint32>(pixels, straight.width(), swapped.data());
        pixmap.argb += swapped;
    }
    return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusPixmap& pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.argb;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusPixmap& pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.argb;
    argument.endStructure();
    return argument;
}

} // namespace orvella
