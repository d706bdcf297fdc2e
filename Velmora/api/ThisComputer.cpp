#include "api/ThisComputer.h"

#include <QRegularExpression>

namespace orvella {

bool isThisComputer(const QString& host)
{
    // With a greater number it is a name, and the network is asked for its address.
    static const auto octet = QStringLiteral(R"(\.(25[0-5]|2[0-4]\d|1?\d?\d))");
    static const QRegularExpression own(
        QStringLiteral(R"(^(([^.]+\.)*localhost|(::ffff:)?127(%1){3}|::1)\z)").arg(octet),
        QRegularExpression::CaseInsensitiveOption);
    return own.match(host).hasMatch();
}

} // namespace orvella
