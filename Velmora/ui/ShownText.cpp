#include "ui/ShownText.h"

#include <algorithm>

namespace orvella {

namespace {

/// Ten times what the largest view has room for. Whatever lays out text takes longer than a viewer waits for a
/// megabyte.
constexpr qsizetype kMost = 1000;

bool turnsDirection(QChar character)
{
    // The embeddings, overrides and isolates, and their ends. The marks stay: they act on nothing but their place.
    const auto code = character.unicode();
    return (code >= u'\u202a' && code <= u'\u202e') || (code >= u'\u2066' && code <= u'\u2069');
}

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control && !character.isSpace();
}

} // namespace

QString shownText(const QString& text)
{
    auto shown = text.first(std::min(text.size(), kMost));
    if (shown.size() < text.size()) {
        if (shown.back().isHighSurrogate())
            shown.chop(1);
        shown += u'…';
    }
    shown.removeIf([](QChar character) { return turnsDirection(character) || isControl(character); });
    return shown;
}

} // namespace orvella
