#include "platform/linux/IcuViewerLocale.h"

#include <QTest>

#include <limits>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

QProcessEnvironment environment(const std::vector<std::pair<QString, QString>>& variables)
{
    QProcessEnvironment made;
    for (const auto& [name, value] : variables)
        made.insert(name, value);
    return made;
}

IcuViewerLocale named(const QString& name)
{
    return IcuViewerLocale(environment({{u"LC_ALL"_s, name}}));
}

} // namespace

class IcuViewerLocaleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everyFormOfNameIsUnderstood_data()
    {
        QTest::addColumn<std::optional<QString>>("language");
        QTest::addColumn<QString>("dollars");

        const auto row = [](const char* name, std::optional<QString> language, const QString& dollars) {
            QTest::newRow(name) << language << dollars;
        };
        row("en_US", u"en"_s, u"$1,234.50"_s);
        row("en_US.utf8", u"en"_s, u"$1,234.50"_s);
        row("en_US.UTF-8", u"en"_s, u"$1,234.50"_s);
        row("en-US", u"en"_s, u"$1,234.50"_s);
        row("EN_us", u"en"_s, u"$1,234.50"_s);
        row("en", u"en"_s, u"$1,234.50"_s);
        row("de_DE.UTF-8@euro", u"de"_s, u"1.234,50\u00a0$"_s);
        row("de_DE@euro", u"de"_s, u"1.234,50\u00a0$"_s);
        row("de_DE.ISO-8859-15@euro", u"de"_s, u"1.234,50\u00a0$"_s);
        row("de_XX", u"de"_s, u"1.234,50\u00a0$"_s);
        row("deu_DE", u"de"_s, u"1.234,50\u00a0$"_s);
        row("zh_TW", u"zh"_s, u"US$1,234.50"_s);
        row("zh_Hant_TW", u"zh"_s, u"US$1,234.50"_s);
        row("nb_NO", u"nb"_s, u"USD\u00a01\u00a0234,50"_s);
        row("ja_JP.eucJP", u"ja"_s, u"$1,234.50"_s);
        row("sr_RS", u"sr"_s, u"1.234,50\u00a0US$"_s);
        row("sr_RS@latin", u"sr"_s, u"1.234,50\u00a0US$"_s);
        row("be_BY@latin", u"be"_s, u"1234,50\u00a0$"_s);
        row("ks_IN", u"ks"_s, u"$\u06f1\u066c\u06f2\u06f3\u06f4\u066b\u06f5\u06f0"_s);
        row("ks_IN@devanagari", u"ks"_s, u"$1,234.50"_s);
        row("uz_UZ@cyrillic", u"uz"_s, u"1\u00a0234,50\u00a0US$"_s);
        row("ca_ES@valencia", u"ca"_s, u"1.234,50\u00a0USD"_s);
        row("fil_PH", u"fil"_s, u"$1,234.50"_s);
        row("es_419", u"es"_s, u"USD\u00a01,234.50"_s);
        row("en_US_POSIX", u"en"_s, u"$1234.50"_s);
    }

    void everyFormOfNameIsUnderstood()
    {
        QFETCH(std::optional<QString>, language);
        QFETCH(QString, dollars);

        const auto locale = named(QString::fromLatin1(QTest::currentDataTag()));

        QCOMPARE(locale.languageCode(), language);
        QCOMPARE(locale.usDollars(123450), dollars);
    }

    void whatIsNoLocaleReadsAsC_data()
    {
        QTest::addColumn<QString>("name");

        for (const auto* const name : {"C", "POSIX", "C.UTF-8", "C.utf8", "c", "posix", "german", "xx_XX", "xx", "d",
                 "de_", "_DE", "de_DE.", "de_DE@", "de DE", "../../etc/passwd", "de_DE/../..", "%s%n", "-", "@euro",
                 ".UTF-8", "de_DE.UTF-8\n", "en_US.", "en_US.UTF-8\n", "en_US@", "en_USA", "123", "zz_ZZ.UTF-8"})
            QTest::addRow("%s", name) << QString::fromLatin1(name);
        QTest::newRow("a zero character") << u"de_DE\0"_s;
        QTest::newRow("not ASCII") << u"d\u00e9_DE"_s;
        QTest::newRow("a lone surrogate") << QString(QChar(0xd800));
        QTest::newRow("very long") << u"de_"_s + QString(1 << 20, u'D');
        QTest::newRow("very many parts") << u"de"_s + u"_abcde"_s.repeated(100000);
    }

    void whatIsNoLocaleReadsAsC()
    {
        QFETCH(QString, name);

        const auto locale = named(name);

        QCOMPARE(locale.languageCode(), std::nullopt);
        QCOMPARE(locale.usDollars(123450), u"$1234.50"_s);
    }

    void withoutAnyVariableTheLocaleIsC()
    {
        const IcuViewerLocale locale(environment({}));

        QCOMPARE(locale.languageCode(), std::nullopt);
        QCOMPARE(locale.usDollars(0), u"$0.00"_s);
    }

    void languageAndMoneyFollowTheirOwnVariables()
    {
        const IcuViewerLocale locale(environment(
            {{u"LANG"_s, u"fr_FR.UTF-8"_s}, {u"LC_MESSAGES"_s, u"en_GB"_s}, {u"LC_MONETARY"_s, u"de_DE"_s}}));

        QCOMPARE(locale.languageCode(), u"en"_s);
        QCOMPARE(locale.usDollars(1234), u"12,34\u00a0$"_s);
    }

    void theGeneralVariableCountsWhereTheOthersAreUnset()
    {
        const IcuViewerLocale locale(environment({{u"LANG"_s, u"de_DE"_s}}));

        QCOMPARE(locale.languageCode(), u"de"_s);
        QCOMPARE(locale.usDollars(1234), u"12,34\u00a0$"_s);
    }

    void theOverridingVariableComesFirst()
    {
        const IcuViewerLocale locale(environment({{u"LC_ALL"_s, u"de_DE"_s}, {u"LANG"_s, u"fr_FR"_s},
            {u"LC_MESSAGES"_s, u"en_GB"_s}, {u"LC_MONETARY"_s, u"ja_JP"_s}}));

        QCOMPARE(locale.languageCode(), u"de"_s);
        QCOMPARE(locale.usDollars(1234), u"12,34\u00a0$"_s);
    }

    void anEmptyVariableCountsAsUnset()
    {
        const IcuViewerLocale locale(environment(
            {{u"LC_ALL"_s, u""_s}, {u"LC_MESSAGES"_s, u""_s}, {u"LC_MONETARY"_s, u""_s}, {u"LANG"_s, u"de_DE"_s}}));

        QCOMPARE(locale.languageCode(), u"de"_s);
        QCOMPARE(locale.usDollars(1234), u"12,34\u00a0$"_s);
    }

    void anOverridingCHidesTheOthers()
    {
        const IcuViewerLocale locale(environment({{u"LC_ALL"_s, u"C.UTF-8"_s}, {u"LANG"_s, u"de_DE"_s}}));

        QCOMPARE(locale.languageCode(), std::nullopt);
        QCOMPARE(locale.usDollars(1234), u"$12.34"_s);
    }

    void theOrderOfTranslationsIsNotTheLocale()
    {
        const IcuViewerLocale locale(environment({{u"LANGUAGE"_s, u"en_US:en"_s}, {u"LANG"_s, u"de_DE"_s}}));

        QCOMPARE(locale.languageCode(), u"de"_s);
    }

    void dollarsThatNeedNoIcuReadAsItHasThem_data()
    {
        QTest::addColumn<qint64>("cents");
        for (const qint64 cents :
            {qint64 {0}, qint64 {1}, qint64 {-1}, qint64 {99}, qint64 {100}, qint64 {-100}, qint64 {99'999},
                qint64 {100'000}, qint64 {123'456'789}, qint64 {-123'456'789}, qint64 {900'719'925'474'099'300},
                std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()})
            QTest::addRow("%lld", cents) << cents;
    }

    void dollarsThatNeedNoIcuReadAsItHasThem()
    {
        QFETCH(qint64, cents);

        // These two names take the long way to the same conventions.
        QCOMPARE(named(u"en_US.UTF-8"_s).usDollars(cents), named(u"EN_us"_s).usDollars(cents));
        QCOMPARE(named(u"C.UTF-8"_s).usDollars(cents), named(u"en_US_POSIX"_s).usDollars(cents));
    }

    void theWholeRangeOfCentsHasATextAndIsTheSameEachTime()
    {
        const auto locale = named(u"en_US"_s);

        QCOMPARE(locale.usDollars(-123456), u"-$1,234.56"_s);
        QCOMPARE(locale.usDollars(std::numeric_limits<qint64>::max()), u"$92,233,720,368,547,760.00"_s);
        QCOMPARE(locale.usDollars(std::numeric_limits<qint64>::min()), u"-$92,233,720,368,547,760.00"_s);
        QCOMPARE(locale.usDollars(-123456), u"-$1,234.56"_s);
    }
};

QTEST_GUILESS_MAIN(IcuViewerLocaleTest)

#include "IcuViewerLocaleTest.moc"
