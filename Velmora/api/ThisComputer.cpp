#include "api/ThisComputer.h"

#include <QRegularExpression>

namespace orvella {

bool isThisComputer(const QString& host)
{
    static const QRegularExpression own(QStringLiteral(R"(^(([^.]+\.)*localhost|(::ffff:)?127\.\d+\.\d+\.\d+|::1)\z)"),
        QRegularExpression::CaseInsensitiveOption);
    return own.match(host).hasMatch();
}

} // namespace orvella
