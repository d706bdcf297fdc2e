#pragma once

#include <QLibraryInfo>
#include <QStringList>
#include <QTranslator>

namespace orvella {

class ViewerLocale;

/// The program in the viewer's language for as long as it lives: its own texts, those of Qt where the system has them,
/// and the direction in which they are read.
class Translations final {
public:
    /// What the viewer reads, the best first, each as "de" or "de-AT": LANGUAGE, else LC_ALL, LC_MESSAGES or LANG. None
    /// in the locale "C", which is English whatever LANGUAGE says.
    [[nodiscard]] static QStringList languagesOf(const ViewerLocale& locale);

    /// Takes the first language that there is a translation into. English, which the program is written in, counts too:
    /// what comes after it is not wanted.
    explicit Translations(
        const QStringList& languages, const QString& folderOfQt = QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    ~Translations();
    Q_DISABLE_COPY_MOVE(Translations)

    /// The language that the program speaks, as its file is called: "de" or "pt_BR"; empty for English.
    [[nodiscard]] QString language() const { return m_program.language(); }

private:
    QTranslator m_program;
    QTranslator m_qt;
};

} // namespace orvella
