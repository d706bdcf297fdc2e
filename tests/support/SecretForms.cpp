#include "support/SecretForms.h"

#include <QString>

#include <algorithm>

namespace orvella {

namespace {

QByteArray percentEncoded(const QByteArray& hexadecimal)
{
    QByteArray encoded;
    for (qsizetype place = 0; place < hexadecimal.size(); place += 2)
        encoded += '%' + hexadecimal.sliced(place, 2);
    return encoded;
}

/// What is the same in Base64 whatever goes before and after, where `before` bytes more than a multiple of three do.
QByteArray base64After(int before, const QByteArray& text, QByteArray::Base64Options options)
{
    constexpr int kBits = 6;
    const auto whole = (QByteArray(before, '\0') + text).toBase64(options);
    const auto first = (before * 8 + kBits - 1) / kBits;
    const auto end = (before + text.size()) * 8 / kBits;
    return whole.sliced(first, end - first);
}

} // namespace

QByteArrayList formsOf(const QByteArray& text)
{
    const auto hexadecimal = text.toHex();
    const auto wide = QString::fromUtf8(text);
    QByteArrayList forms {text, QByteArray(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2), hexadecimal,
        hexadecimal.toUpper(), percentEncoded(hexadecimal), percentEncoded(hexadecimal.toUpper())};
    for (int before = 0; before < 3; ++before) {
        forms.append(base64After(before, text, QByteArray::Base64Encoding));
        forms.append(base64After(before, text, QByteArray::Base64UrlEncoding));
    }
    return forms;
}

bool containsAnyForm(const QByteArray& bytes, const QByteArrayList& forms)
{
    return std::ranges::any_of(forms, [&](const QByteArray& form) { return bytes.contains(form); });
}

} // namespace orvella
