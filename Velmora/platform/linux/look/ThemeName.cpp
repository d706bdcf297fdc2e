#include "platform/linux/look/ThemeName.h"

#include <QRegularExpression>

namespace orvella {

using namespace Qt::StringLiterals;

LookWishes themeWishes(const QString& name)
{
    // "Darker" names light themes with dark bars.
    static const QRegularExpression dark(u"dark(?!er)|inverse"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression light(u"[-_]light\\b"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression contrast(
        u"high-?contrast|contrasthigh"_s, QRegularExpression::CaseInsensitiveOption);
    LookWishes wishes;
    if (dark.match(name).hasMatch())
        wishes.scheme = DesktopLook::Scheme::dark;
    else if (light.match(name).hasMatch())
        wishes.scheme = DesktopLook::Scheme::light;
    wishes.isHighContrast = contrast.match(name).hasMatch();
    return wishes;
}

} // namespace orvella
