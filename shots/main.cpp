#include "Scenes.h"
#include "app/Translations.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A desktop of two device pixels to the point, as large as the pictures need.
constexpr QByteArrayView kDesktop(R"({"screens": [{"name": "shots", "x": 0, "y": 0, "width": 720, "height": 900,
    "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}]})");

bool saveAll(const QDir& folder)
{
    std::vector<orvella::Shot> shots {orvella::statusItemSheet()};
    for (const auto scheme : {orvella::DesktopLook::Scheme::light, orvella::DesktopLook::Scheme::dark})
        std::ranges::move(orvella::allShots(scheme), std::back_inserter(shots));
    for (const auto& shot : shots) {
        if (!shot.image.save(folder.filePath(shot.name + u".png"_s)))
            return false;
    }
    return orvella::contactSheet(shots).save(folder.filePath(u"contact-sheet.png"_s));
}

} // namespace

/// Renders every state of the user interface into a folder, in English or in another language, for example "de" or
/// "pt_BR": orvella-shots FOLDER [LANGUAGE].
int main(int argc, char** argv)
{
    if (argc != 2 && argc != 3) {
        std::fputs("usage: orvella-shots FOLDER [LANGUAGE]\n", stderr);
        return 2;
    }
    const QTemporaryDir temporary;
    QFile desktop(temporary.filePath(u"desktop.json"_s));
    if (!desktop.open(QIODevice::WriteOnly) || desktop.write(kDesktop.toByteArray()) < 0)
        return 1;
    desktop.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(desktop.fileName()));
    const QApplication application(argc, argv);
    const QStringList languages = argc == 3 ? QStringList(QString::fromLocal8Bit(argv[2])) : QStringList();
    const orvella::Translations translations(languages);
    if (!languages.isEmpty() && translations.language() != languages.first()) {
        std::fprintf(stderr, "orvella-shots: there is no translation into %s\n", argv[2]);
        return 2;
    }

    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(u"."_s) || !saveAll(folder)) {
        std::fprintf(stderr, "orvella-shots: the pictures could not be written into %s\n", argv[1]);
        return 1;
    }
    return 0;
}
