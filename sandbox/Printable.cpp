#include "sandbox/Printable.h"

#include <QList>

namespace orvella::sandbox {

namespace {

/// Control characters steer a terminal; the ones for direction make a text read as another one.
bool isPrintable(char32_t character)
{
    // Persian words and many emoji are written with these two.
    if (character == U'\u200C' || character == U'\u200D')
        return true;
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

} // namespace

QString printable(const QString& text)
{
    QString result;
    for (const auto character : text.toUcs4()) {
        const char32_t shown = isPrintable(character) ? character : QChar::ReplacementCharacter;
        result += QString::fromUcs4(&shown, 1);
    }
    return result;
}

QString htmlText(const QString& text)
{
    auto escaped = printable(text).toHtmlEscaped();
    return escaped.replace(u'\'', QLatin1StringView("&#39;"));
}

} // namespace orvella::sandbox
