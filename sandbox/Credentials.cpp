#include "sandbox/Credentials.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <algorithm>
#include <array>

namespace orvella::sandbox {

namespace {

// I, O, 0 and 1 are left out. A count of 32 divides the range of the random source: no letter is likelier.
constexpr QStringView kLetters = u"23456789ABCDEFGHJKLMNPQRSTUVWXYZ";
constexpr qsizetype kCodeLength = 8;

template <std::size_t bytes> QByteArray randomText()
{
    std::array<quint32, bytes / sizeof(quint32)> words {};
    QRandomGenerator::system()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    const auto raw = QByteArray(reinterpret_cast<const char*>(words.data()), bytes);
    return raw.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QString grouped(QString code)
{
    return code.insert(kCodeLength / 2, u'-');
}

} // namespace

Secret makeToken()
{
    return Secret(randomText<32>());
}

QByteArray hashOf(const Secret& token)
{
    return QCryptographicHash::hash(token.reveal(), QCryptographicHash::Sha256);
}

QString makeIdentifier(const QString& prefix)
{
    return prefix + u'_' + QString::fromLatin1(randomText<16>());
}

QString makeActivationCode()
{
    QString code;
    while (code.size() < kCodeLength)
        code += kLetters.at(static_cast<qsizetype>(QRandomGenerator::system()->generate() % quint32 {kLetters.size()}));
    return grouped(code);
}

std::optional<QString> readActivationCode(const QString& typed)
{
    QString code;
    for (const auto letter : typed.toUpper()) {
        if (kLetters.contains(letter))
            code += letter;
        else if (!letter.isSpace() && letter != u'-')
            return std::nullopt;
    }
    if (code.size() != kCodeLength)
        return std::nullopt;
    return grouped(code);
}

} // namespace orvella::sandbox
