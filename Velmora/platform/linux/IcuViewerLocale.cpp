#include "platform/linux/IcuViewerLocale.h"

#include "platform/linux/environment/LocaleName.h"

#include <unicode/currunit.h>
#include <unicode/localebuilder.h>
#include <unicode/numberformatter.h>

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
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

/// Whether the name is this one, with a character set or without.
bool isNamed(QStringView name, QLatin1StringView wanted)
{
    if (!name.startsWith(wanted))
        return false;
    const auto rest = name.sliced(wanted.size());
    const auto belongs = [](QChar character) {
        return character.unicode() < 0x80 && (character.isLetterOrNumber() || character == u'-');
    };
    return rest.isEmpty() || (rest.size() > 1 && rest.front() == u'.' && std::ranges::all_of(rest.sliced(1), belongs));
}

/// English of the United States, where Qt's own data say the same as ICU's.
bool isAmerican(const QString& name)
{
    return isNamed(name, "en_US"_L1);
}

bool isPosix(const QString& name)
{
    return isNamed(name, "C"_L1) || isNamed(name, "POSIX"_L1);
}

/// As ICU has it for both of these.
QString plainDollars(double amount, const QLocale& digits)
{
    constexpr int kDecimals = 2;
    return QLatin1StringView(amount < 0 ? "-$" : "$") + digits.toString(std::abs(amount), 'f', kDecimals);
}

/// The locale of a name such as "de_DE.UTF-8@euro"; nothing for "C", "POSIX" and what is no locale's name.
std::optional<icu::Locale> namedLocale(const QString& name)
{
    if (isPosix(name))
        return std::nullopt;
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
    const auto name = localeName(environment, LocaleCategory::messages);
    if (isAmerican(name))
        m_languageCode = u"en"_s;
    else if (const auto messages = namedLocale(name))
        m_languageCode = QString::fromLatin1(messages->getLanguage());
}

IcuViewerLocale::~IcuViewerLocale() = default;

std::optional<QString> IcuViewerLocale::languageCode() const
{
    return m_languageCode;
}

QString IcuViewerLocale::usDollars(qint64 cents) const
{
    constexpr double kCentsPerDollar = 100.0;
    const auto amount = static_cast<double>(cents) / kCentsPerDollar;
    // ICU's data would take two and a half megabytes all day, of those whose dollars need none of it.
    if (isAmerican(m_monetaryName))
        return plainDollars(amount, QLocale(QLocale::English, QLocale::UnitedStates));
    if (isPosix(m_monetaryName))
        return plainDollars(amount, QLocale::c());
    if (!m_formatter)
        m_formatter = std::make_unique<Formatter>(namedLocale(m_monetaryName).value_or(icu::Locale("en_US_POSIX")));
    return m_formatter->text(amount);
}

} // namespace orvella
