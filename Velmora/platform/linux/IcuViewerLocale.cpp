#include "platform/linux/IcuViewerLocale.h"

#include "platform/linux/LocaleName.h"

#include <unicode/currunit.h>
#include <unicode/localebuilder.h>
#include <unicode/numberformatter.h>

#include <QRegularExpression>

#include <string_view>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isKnownLanguage(const char* code)
{
    const std::string_view wanted(code);
    for (const auto* known = icu::Locale::getISOLanguages(); *known != nullptr; ++known) {
        if (wanted == *known)
            return true;
    }
    return false;
}

/// The locale of a name such as "de_DE.UTF-8@euro"; nothing for "C", "POSIX" and what is no locale's name.
std::optional<icu::Locale> namedLocale(const QString& name)
{
    const QRegularExpression form(
        u"^(?<tags>[A-Za-z]{2,3}(?:[_-][A-Za-z]{4})?(?:[_-](?:[A-Za-z]{2}|[0-9]{3}))?(?:[_-][A-Za-z0-9]{4,8})*)"
        u"(?:\\.[A-Za-z0-9_-]+)?(?:@(?<modifier>[A-Za-z0-9]+))?\\z"_s);
    const auto match = form.match(name);
    if (!match.hasMatch())
        return std::nullopt;
    const icu::Locale locale(match.captured(u"tags").toLatin1().constData());
    if (!isKnownLanguage(locale.getLanguage()))
        return std::nullopt;

    // Of the scripts that such names give as a modifier this is the only one that changes how amounts are written.
    if (match.captured(u"modifier") != u"devanagari"_s)
        return locale;
    UErrorCode error = U_ZERO_ERROR;
    auto scripted = icu::LocaleBuilder().setLocale(locale).setScript("Deva").build(error);
    return U_SUCCESS(error) ? scripted : locale;
}

} // namespace

/// US dollars in one locale.
class IcuViewerLocale::Formatter final {
public:
    explicit Formatter(const icu::Locale& locale)
        : m_isPosix(std::string_view(locale.getVariant()) == "POSIX")
    {
        const icu::CurrencyUnit dollars(u"USD", m_error);
        m_formatter = icu::number::NumberFormatter::withLocale(locale).unit(dollars);
    }

    [[nodiscard]] QString text(double amount) const
    {
        auto error = m_error;
        const auto formatted = m_formatter.formatDouble(amount, error).toString(error);
        if (U_FAILURE(error))
            qFatal("ICU cannot write US dollars: %s.", u_errorName(error));
        auto text = QString::fromUtf16(formatted.getBuffer(), formatted.length());
        // ICU's POSIX pattern has a no-break space after the sign, which nobody else's has.
        return m_isPosix ? text.remove(QChar::Nbsp) : text;
    }

private:
    bool m_isPosix;
    UErrorCode m_error = U_ZERO_ERROR;
    icu::number::LocalizedNumberFormatter m_formatter;
};

IcuViewerLocale::IcuViewerLocale(const QProcessEnvironment& environment)
    : m_monetaryName(localeName(environment, LocaleCategory::monetary))
{
    const auto messages = namedLocale(localeName(environment, LocaleCategory::messages));
    if (messages)
        m_languageCode = QString::fromLatin1(messages->getLanguage());
}

IcuViewerLocale::~IcuViewerLocale() = default;

std::optional<QString> IcuViewerLocale::languageCode() const
{
    return m_languageCode;
}

QString IcuViewerLocale::usDollars(qint64 cents) const
{
    if (!m_formatter)
        m_formatter = std::make_unique<Formatter>(namedLocale(m_monetaryName).value_or(icu::Locale("en_US_POSIX")));
    constexpr double kCentsPerDollar = 100.0;
    return m_formatter->text(static_cast<double>(cents) / kCentsPerDollar);
}

} // namespace orvella
