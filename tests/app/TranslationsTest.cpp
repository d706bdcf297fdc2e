#include "app/Translations.h"

#include "app/StatusMenu.h"
#include "platform/linux/IcuViewerLocale.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kEnglish = "Quit Orvella";

QString quitText()
{
    return StatusMenu::tr(kEnglish);
}

QString actionOfQt()
{
    return QCoreApplication::translate("QAccessibleActionInterface", "Press");
}

/// The names of the files under a folder, without their ends.
QStringList baseNames(const QString& folder)
{
    QStringList names;
    for (const auto& file : QDir(folder).entryInfoList(QDir::Files, QDir::Name))
        names.append(file.baseName());
    return names;
}

/// Makes a catalogue of Qt that translates one text.
bool compileCatalogueOfQt(const QString& file, const QString& translation)
{
    QFile source(file + u".ts"_s);
    const auto text = u"<TS version=\"2.1\"><context><name>QAccessibleActionInterface</name><message>"
                      "<source>Press</source><translation>%1</translation></message></context></TS>"_s.arg(translation);
    if (!source.open(QIODevice::WriteOnly) || source.write(text.toUtf8()) < 0)
        return false;
    source.close();
    return QProcess::execute(
               QStringLiteral(ORVELLA_LRELEASE), {u"-silent"_s, source.fileName(), u"-qm"_s, file + u".qm"_s})
        == 0;
}

/// What this program says when it is run again with these variables.
QString textUnder(const QStringList& variables)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto& name : {u"LANGUAGE"_s, u"LC_ALL"_s, u"LC_MESSAGES"_s, u"LANG"_s})
        environment.remove(name);
    for (const auto& variable : variables)
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {u"--say"_s});
    return child.waitForFinished() ? QString::fromUtf8(child.readAllStandardOutput()) : u"it did not end"_s;
}

} // namespace

class TranslationsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QCOMPARE(quitText(), QString::fromLatin1(kEnglish));
        QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    }

    void everyTranslationIsPartOfTheProgram()
    {
        const auto files = baseNames(QStringLiteral(ORVELLA_SOURCE_DIR) + u"/translations"_s);

        QVERIFY(!files.isEmpty());
        QCOMPARE(baseNames(u":/i18n"_s), files);
    }

    void theProgramSpeaksTheViewersLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("text");

        const auto row = [](const char* locale, const QString& language, const QString& text) {
            QTest::addRow("%s", locale) << QString::fromLatin1(locale) << language << text;
        };
        row("de_DE", u"de"_s, u"Orvella beenden"_s);
        row("de_AT", u"de"_s, u"Orvella beenden"_s);
        row("fr_FR", u"fr"_s, u"Quitter Orvella"_s);
        row("fr_CA", u"fr"_s, u"Quitter Orvella"_s);
        row("es_ES", u"es"_s, u"Salir de Orvella"_s);
        row("es_MX", u"es"_s, u"Salir de Orvella"_s);
        row("es_419", u"es"_s, u"Salir de Orvella"_s);
        row("pt_BR", u"pt_BR"_s, u"Sair do Orvella"_s);
        row("ja_JP", u"ja"_s, u"Orvella を終了"_s);
        row("ar_EG", u"ar"_s, u"أغلق Orvella"_s);
    }

    void theProgramSpeaksTheViewersLanguage()
    {
        QFETCH(const QString, locale);
        QFETCH(const QString, language);
        QFETCH(const QString, text);

        const Translations translations(QLocale(locale).uiLanguages());

        QCOMPARE(translations.language(), language);
        QCOMPARE(quitText(), text);
    }

    void theProgramSpeaksEnglish_data()
    {
        QTest::addColumn<QStringList>("languages");

        QTest::newRow("no language") << QStringList();
        QTest::newRow("C") << QLocale::c().uiLanguages();
        QTest::newRow("English") << QLocale(u"en_US"_s).uiLanguages();
        QTest::newRow("rather English than German") << QStringList {u"en-GB"_s, u"en"_s, u"de"_s};
        QTest::newRow("no translation") << QLocale(u"sv_SE"_s).uiLanguages();
        QTest::newRow("a language of right to left without translation") << QLocale(u"he_IL"_s).uiLanguages();
        QTest::newRow("Portuguese of Portugal") << QLocale(u"pt_PT"_s).uiLanguages();
        QTest::newRow("no language at all") << QStringList {u"gibberish"_s, u""_s};
    }

    void theProgramSpeaksEnglish()
    {
        QFETCH(const QStringList, languages);

        const Translations translations(languages);

        QVERIFY(translations.language().isEmpty());
        QCOMPARE(quitText(), QString::fromLatin1(kEnglish));
        QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    }

    void aLanguageWithoutTranslationGivesWayToTheNext()
    {
        const Translations translations({u"sv-SE"_s, u"sv"_s, u"de"_s, u"fr"_s});

        QCOMPARE(translations.language(), u"de"_s);
    }

    void arabicRunsFromRightToLeft()
    {
        const Translations translations({u"ar-EG"_s});

        QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
    }

    void theOthersRunFromLeftToRight_data()
    {
        QTest::addColumn<QString>("language");

        for (const auto* const language : {"de", "es", "fr", "ja", "pt-BR"})
            QTest::newRow(language) << QString::fromLatin1(language);
    }

    void theOthersRunFromLeftToRight()
    {
        QFETCH(const QString, language);

        const Translations translations({language});

        QVERIFY(!translations.language().isEmpty());
        QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    }

    void textsOfQtFollow()
    {
        const QTemporaryDir folder;
        QVERIFY(compileCatalogueOfQt(folder.filePath(u"qtbase_de"_s), u"Drücken"_s));

        const Translations translations({u"de-AT"_s}, folder.path());

        QCOMPARE(actionOfQt(), u"Drücken"_s);
    }

    void textsOfQtStayEnglishWhereTheProgramDoes()
    {
        const QTemporaryDir folder;
        QVERIFY(compileCatalogueOfQt(folder.filePath(u"qtbase_sv"_s), u"Tryck"_s));

        const Translations translations({u"sv"_s}, folder.path());

        QCOMPARE(actionOfQt(), u"Press"_s);
    }

    void aLocaleWithoutLanguageIsEnglish()
    {
        FakeLocale locale;
        locale.language.reset();

        QVERIFY(Translations::languagesOf(locale).isEmpty());
    }

    void theEnvironmentNamesTheLanguage_data()
    {
        QTest::addColumn<QStringList>("variables");
        QTest::addColumn<QString>("text");

        const auto english = QString::fromLatin1(kEnglish);
        const auto german = u"Orvella beenden"_s;
        const auto french = u"Quitter Orvella"_s;
        QTest::newRow("nothing is set") << QStringList() << english;
        QTest::newRow("C") << QStringList {u"LC_ALL=C"_s} << english;
        QTest::newRow("C.UTF-8") << QStringList {u"LANG=C.UTF-8"_s} << english;
        QTest::newRow("POSIX") << QStringList {u"LC_ALL=POSIX"_s, u"LANG=de_DE.UTF-8"_s} << english;
        QTest::newRow("LANG") << QStringList {u"LANG=de_DE.UTF-8"_s} << german;
        QTest::newRow("LC_MESSAGES before LANG")
            << QStringList {u"LC_MESSAGES=fr_FR.UTF-8"_s, u"LANG=de_DE.UTF-8"_s} << french;
        QTest::newRow("LC_ALL before LC_MESSAGES")
            << QStringList {u"LC_ALL=de_DE.UTF-8"_s, u"LC_MESSAGES=fr_FR.UTF-8"_s} << german;
        QTest::newRow("LANGUAGE before all") << QStringList {u"LANGUAGE=fr"_s, u"LC_ALL=de_DE.UTF-8"_s} << french;
        QTest::newRow("LANGUAGE as a list") << QStringList {u"LANGUAGE=sv:fr:de"_s, u"LANG=en_US.UTF-8"_s} << french;
        QTest::newRow("a second choice in LANGUAGE")
            << QStringList {u"LANGUAGE=pt_PT:pt_BR"_s, u"LANG=pt_PT.UTF-8"_s} << u"Sair do Orvella"_s;
        QTest::newRow("English first in LANGUAGE")
            << QStringList {u"LANGUAGE=en_GB:en:de"_s, u"LANG=de_DE.UTF-8"_s} << english;
        QTest::newRow("C whatever LANGUAGE says") << QStringList {u"LANGUAGE=de"_s, u"LC_ALL=C"_s} << english;
        QTest::newRow("C.UTF-8 whatever LANGUAGE says") << QStringList {u"LANGUAGE=de"_s, u"LANG=C.UTF-8"_s} << english;
    }

    void theEnvironmentNamesTheLanguage()
    {
        QFETCH(const QStringList, variables);
        QFETCH(const QString, text);

        QCOMPARE(textUnder(variables), text);
    }
};

int main(int argumentCount, char** arguments)
{
    const QApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == u"--say"_s) {
        const IcuViewerLocale locale(QProcessEnvironment::systemEnvironment());
        const Translations translations(Translations::languagesOf(locale));
        std::fputs(quitText().toUtf8().constData(), stdout);
        return 0;
    }
    TranslationsTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "TranslationsTest.moc"
