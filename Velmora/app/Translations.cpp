#include "app/Translations.h"

#include "platform/ViewerLocale.h"

#include <QGuiApplication>
#include <QLocale>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

QStringList Translations::languagesOf(const ViewerLocale& locale)
{
    return locale.languageCode() ? QLocale().uiLanguages() : QStringList();
}

// The overload of `load` that takes a locale does not know that the program is English already: it gives a viewer who
// reads "en:de" German texts.
Translations::Translations(const QStringList& languages, const QString& folderOfQt)
{
    for (const auto& name : languages) {
        const QLocale locale(name);
        if (locale.language() == QLocale::English)
            return;
        // Without a file for the country, that of the language.
        const auto suffix = u'_' + QString(name).replace(u'-', u'_');
        if (!m_program.load(u"orvella"_s + suffix, u":/i18n"_s))
            continue;
        QCoreApplication::installTranslator(&m_program);
        if (m_qt.load(u"qtbase"_s + suffix, folderOfQt))
            QCoreApplication::installTranslator(&m_qt);
        QGuiApplication::setLayoutDirection(locale.textDirection());
        return;
    }
}

Translations::~Translations()
{
    // What is installed leaves by itself.
    if (!m_program.isEmpty())
        QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
}

} // namespace orvella
