#include "platform/linux/look/FontName.h"

#include <QStringList>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

/// Pango's words for style, variant, weight, stretch and gravity, in lower case and without their hyphens.
bool isStyle(const QString& word)
{
    static const QStringList words {u"normal"_s, u"roman"_s, u"oblique"_s, u"italic"_s, u"smallcaps"_s, u"thin"_s,
        u"ultralight"_s, u"extralight"_s, u"light"_s, u"semilight"_s, u"demilight"_s, u"book"_s, u"regular"_s,
        u"medium"_s, u"semibold"_s, u"demibold"_s, u"bold"_s, u"ultrabold"_s, u"extrabold"_s, u"heavy"_s, u"black"_s,
        u"ultraheavy"_s, u"extraheavy"_s, u"ultrablack"_s, u"extrablack"_s, u"ultracondensed"_s, u"extracondensed"_s,
        u"condensed"_s, u"semicondensed"_s, u"semiexpanded"_s, u"expanded"_s, u"extraexpanded"_s, u"ultraexpanded"_s,
        u"notrotated"_s, u"south"_s, u"upsidedown"_s, u"north"_s, u"rotatedleft"_s, u"east"_s, u"rotatedright"_s,
        u"west"_s};
    return words.contains(QString(word).remove(u'-').toLower());
}

bool isSize(QString word)
{
    if (word.endsWith(u"px"))
        word.chop(2);
    bool isNumber = false;
    static_cast<void>(word.toDouble(&isNumber));
    return isNumber;
}

} // namespace

QString fontFamily(const QString& name)
{
    // Of several families the first; a comma ends the family even where the words after it are none of style.
    const auto comma = name.indexOf(u',');
    auto words = (comma < 0 ? name : name.first(comma)).simplified().split(u' ', Qt::SkipEmptyParts);
    if (comma < 0) {
        if (!words.isEmpty() && isSize(words.constLast()))
            words.removeLast();
        while (!words.isEmpty() && isStyle(words.constLast()))
            words.removeLast();
    }
    return words.join(u' ');
}

} // namespace orvella
