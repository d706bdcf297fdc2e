#include "base/WebAddress.h"

#include <QRegularExpression>

#include <algorithm>
#include <tuple>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isUnsafe(QChar character)
{
    return character.isSpace() || character.category() == QChar::Other_Control || character == u'\\';
}

bool isInvisible(QChar character)
{
    return character.category() == QChar::Other_Format;
}

/// Whether the host is written as one of the numbers that programs take for an IPv4 address, but not as the usual four.
bool isUnusualNumber(const QString& host)
{
    const QRegularExpression number(u"(?:^|\\.)(?:[0-9]+|0x[0-9a-f]*)\\.?\\z"_s);
    const QRegularExpression usual(
        u"^(?:25[0-5]|2[0-4][0-9]|1[0-9]{2}|[1-9]?[0-9])(?:\\.(?:25[0-5]|2[0-4][0-9]|1[0-9]{2}|[1-9]?[0-9])){3}\\z"_s);
    return number.match(host).hasMatch() && !usual.match(host).hasMatch();
}

} // namespace

std::optional<QUrl> webAddress(const QString& text)
{
    const QRegularExpression form(
        u"^https?://(?<host>[^/?#@%:\\[\\]]+|\\[[0-9a-f:.]+\\])(?::(?<port>[0-9]*))?(?:[/?#]|\\z)"_s,
        QRegularExpression::CaseInsensitiveOption);
    if (!text.isValidUtf16() || std::ranges::any_of(text, isUnsafe))
        return std::nullopt;
    const auto match = form.match(text);
    if (!match.hasMatch() || std::ranges::any_of(match.captured(u"host"), isInvisible))
        return std::nullopt;
    // QUrl takes the remainder of a port that is too large.
    auto isPort = true;
    const auto port = match.captured(u"port");
    if (!port.isEmpty())
        std::ignore = port.toUShort(&isPort);
    const QUrl url(text, QUrl::StrictMode);
    if (!isPort || !url.isValid() || url.host().isEmpty() || isUnusualNumber(url.host(QUrl::FullyEncoded)))
        return std::nullopt;
    return url;
}

} // namespace orvella
