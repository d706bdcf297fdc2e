#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>

namespace orvella {

/// A picture as the StatusNotifierItem protocol carries it: D-Bus type (iiay).
struct StatusPixmap {
    int width = 0;
    int height = 0;
    /// 32 bits for each pixel, alpha first, not premultiplied, in network byte order, line by line from the top.
    QByteArray argb;

    [[nodiscard]] static StatusPixmap fromImage(const QImage& image);

    friend bool operator==(const StatusPixmap&, const StatusPixmap&) = default;
};

/// The same picture in several sizes; the bar takes the one that fits.
using StatusPixmaps = QList<StatusPixmap>;

QDBusArgument& operator<<(QDBusArgument& argument, const StatusPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusPixmap& pixmap);

} // namespace orvella
