#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <map>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDir kRoot(QStringLiteral(ORVELLA_SOURCE_DIR));

/// The rooms of the Linux side: those that all others may use, and those that know nothing of one another.
const QStringList kLinuxTools {u"bus"_s, u"environment"_s, u"files"_s, u"x11"_s};
const QStringList kLinuxServices {u"applications"_s, u"foreground"_s, u"instance"_s, u"item"_s, u"login"_s, u"look"_s,
    u"secrets"_s, u"settings"_s, u"updater"_s, u"windows"_s};

using Layers = std::map<QString, QStringList>;

Layers withLinuxRooms(Layers layers)
{
    const auto room = [](const QString& name) { return u"platform/linux/"_s + name; };
    QStringList tools;
    std::ranges::transform(kLinuxTools, std::back_inserter(tools), room);
    auto& all = layers[u"Velmora/platform/linux"_s];
    for (const auto& name : kLinuxTools + kLinuxServices) {
        all.append(room(name));
        layers[u"Velmora/"_s + room(name)] = {u"base"_s, u"platform"_s, room(name)};
    }
    for (const auto& name : kLinuxServices)
        layers[u"Velmora/"_s + room(name)] += tools;
    return layers;
}

/// The layers of the program, each with what it may include. What lies at the top puts the program together and may
/// include everything, so it is no layer.
const auto kLayers = withLinuxRooms({
    {u"Velmora/base"_s, {u"base"_s}},
    {u"Velmora/platform"_s, {u"base"_s, u"platform"_s}},
    {u"Velmora/platform/linux"_s, {u"base"_s, u"platform"_s, u"platform/linux"_s}},
    {u"Velmora/platform/macos"_s, {u"base"_s, u"platform"_s, u"platform/macos"_s}},
    {u"Velmora/api"_s, {u"base"_s, u"platform"_s, u"api"_s}},
    {u"Velmora/signals"_s, {u"base"_s, u"platform"_s, u"signals"_s}},
    {u"Velmora/core"_s, {u"base"_s, u"platform"_s, u"api"_s, u"signals"_s, u"core"_s}},
    {u"Velmora/ui"_s, {u"base"_s, u"platform"_s, u"api"_s, u"signals"_s, u"core"_s, u"ui"_s}},
    {u"Velmora/app"_s, {u"base"_s, u"platform"_s, u"api"_s, u"signals"_s, u"core"_s, u"ui"_s, u"app"_s}},
    {u"Velmora/updates"_s, {u"base"_s, u"platform"_s, u"platform/linux/updater"_s, u"updates"_s}},
    {u"sandbox"_s, {u"base"_s}},
});

bool liesIn(const QString& path, const QString& folder)
{
    return path.startsWith(folder + u'/');
}

/// The names of the layers directly below a folder, in order.
QStringList layersIn(const QString& folder)
{
    QStringList names;
    for (const auto& [layer, allowed] : kLayers) {
        const QFileInfo place(layer);
        if (place.path() == folder)
            names.append(place.fileName());
    }
    return names;
}

/// The innermost layer that a source of the project belongs to; empty for what puts the program together.
QString layerOf(const QString& path)
{
    QString innermost;
    for (const auto& [layer, allowed] : kLayers) {
        if (liesIn(path, layer) && layer.size() > innermost.size())
            innermost = layer;
    }
    return innermost;
}

/// Both paths start at the project's folder.
bool mayInclude(const QString& source, const QString& included)
{
    if (layerOf(source).isEmpty())
        return true;
    if (layerOf(source) == u"sandbox"_s && layerOf(included) == u"sandbox"_s)
        return true;
    // The request layer hands the token through.
    if (layerOf(source) == u"Velmora/api"_s && included == u"Velmora/core/Keychain.h"_s)
        return true;
    return std::ranges::any_of(kLayers.at(layerOf(source)),
        [&included](const QString& allowed) { return layerOf(included) == u"Velmora/"_s + allowed; });
}

struct Include {
    QString source;
    QString included;
};

/// The project's file that an include means, or nothing for one from elsewhere.
QString resolved(const QString& source, const QString& named)
{
    for (const auto& folder : {u"Velmora"_s, u"sandbox"_s, QFileInfo(source).path()}) {
        const auto path = QDir::cleanPath(folder + u'/' + named);
        if (QFileInfo::exists(kRoot.filePath(path)))
            return path;
    }
    return {};
}

std::vector<Include> includesOf(const QString& source)
{
    static const QRegularExpression include(
        u"^\\s*#\\s*include\\s*[<\"]([^>\"]+)[>\"]"_s, QRegularExpression::MultilineOption);

    QFile file(kRoot.filePath(source));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("A source cannot be read.");
    const auto text = QString::fromUtf8(file.readAll());

    std::vector<Include> includes;
    for (const auto& match : include.globalMatch(text)) {
        const auto included = resolved(source, match.captured(1));
        if (!included.isEmpty())
            includes.push_back({source, included});
    }
    return includes;
}

std::vector<Include> includesUnder(const QString& folder)
{
    std::vector<Include> includes;
    QDirIterator files(
        kRoot.filePath(folder), {u"*.h"_s, u"*.cpp"_s, u"*.mm"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        std::ranges::copy(includesOf(kRoot.relativeFilePath(files.next())), std::back_inserter(includes));
    return includes;
}

} // namespace

class LayersTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everyIncludePointsTowardsTheBase()
    {
        auto includes = includesUnder(u"Velmora"_s);
        std::ranges::move(includesUnder(u"sandbox"_s), std::back_inserter(includes));

        QVERIFY(!includes.empty());
        QStringList wrong;
        for (const auto& [source, included] : includes) {
            if (!mayInclude(source, included))
                wrong.append(source + u" includes "_s + included);
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    void everyFolderIsALayer_data()
    {
        QTest::addColumn<QStringList>("folders");
        QTest::addColumn<QString>("parent");

        QTest::newRow("the program") << layersIn(u"Velmora"_s) << u"Velmora"_s;
        QTest::newRow("Linux") << layersIn(u"Velmora/platform/linux"_s) << u"Velmora/platform/linux"_s;
    }

    void everyFolderIsALayer()
    {
        QFETCH(const QStringList, folders);
        QFETCH(const QString, parent);

        QCOMPARE(folders, QDir(kRoot.filePath(parent)).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name));
    }

    void theDirectionOfAnIncludeDecides_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("included");
        QTest::addColumn<bool>("allowed");

        const auto row = [](const char* source, const char* included, bool allowed) {
            QTest::addRow("%s includes %s", source, included)
                << QString::fromLatin1(source) << QString::fromLatin1(included) << allowed;
        };
        row("Velmora/base/Json.cpp", "Velmora/base/Json.h", true);
        row("Velmora/base/Json.cpp", "Velmora/platform/Device.h", false);
        row("Velmora/platform/Platform.h", "Velmora/base/Clock.h", true);
        row("Velmora/platform/Platform.h", "Velmora/api/Transport.h", false);
        row("Velmora/platform/Platform.h", "Velmora/platform/linux/Device.h", false);
        row("Velmora/platform/linux/Device.cpp", "Velmora/platform/Device.h", true);
        row("Velmora/platform/linux/Device.cpp", "Velmora/platform/macos/Device.h", false);
        row("Velmora/platform/linux/Device.cpp", "Velmora/core/AppState.h", false);
        row("Velmora/platform/linux/SystemPlatform.cpp", "Velmora/platform/linux/item/LinuxStatusItem.h", true);
        row("Velmora/platform/linux/item/StatusIcon.cpp", "Velmora/platform/StatusItem.h", true);
        row("Velmora/platform/linux/item/StatusIcon.cpp", "Velmora/platform/linux/item/StatusPixmap.h", true);
        row("Velmora/platform/linux/item/StatusIcon.cpp", "Velmora/platform/linux/look/FontName.h", false);
        row("Velmora/platform/linux/item/StatusIcon.cpp", "Velmora/platform/linux/bus/BusCall.h", true);
        row("Velmora/platform/linux/bus/BusCall.cpp", "Velmora/platform/linux/files/AtomicFile.h", false);
        row("Velmora/platform/linux/bus/BusCall.cpp", "Velmora/platform/linux/LinuxDevice.h", false);
        row("Velmora/api/APIClient.h", "Velmora/core/Keychain.h", true);
        row("Velmora/api/APIClient.h", "Velmora/core/AppState.h", false);
        row("Velmora/api/APIClient.h", "Velmora/signals/AppSignalClassifier.h", false);
        row("Velmora/signals/AppSignalClassifier.h", "Velmora/core/Keychain.h", false);
        row("Velmora/core/AppState.h", "Velmora/signals/AppSignalClassifier.h", true);
        row("Velmora/core/AppState.h", "Velmora/ui/Money.h", false);
        row("Velmora/core/AppState.h", "Velmora/platform/linux/Device.h", false);
        row("Velmora/ui/ad/AdPanel.h", "Velmora/core/AppState.h", true);
        row("Velmora/ui/ad/AdPanel.h", "Velmora/app/StatusBarController.h", false);
        row("Velmora/app/StatusBarController.h", "Velmora/ui/ad/AdPanel.h", true);
        row("Velmora/app/StatusBarController.h", "Velmora/platform/linux/Device.h", false);
        row("Velmora/updates/UpdateWindow.h", "Velmora/platform/Updater.h", true);
        row("Velmora/updates/UpdateWindow.h", "Velmora/platform/linux/updater/UpdaterPlugin.h", true);
        row("Velmora/updates/UpdateWindow.h", "Velmora/ui/Compose.h", false);
        row("Velmora/app/StatusBarController.h", "Velmora/updates/UpdateWindow.h", false);
        row("Velmora/main.cpp", "Velmora/platform/linux/Device.h", true);
        row("sandbox/Service.cpp", "sandbox/Service.h", true);
        row("sandbox/Service.cpp", "Velmora/base/Json.h", true);
        row("sandbox/Service.cpp", "Velmora/api/Records.h", false);
    }

    void theDirectionOfAnIncludeDecides()
    {
        QFETCH(const QString, source);
        QFETCH(const QString, included);
        QFETCH(const bool, allowed);

        QCOMPARE(mayInclude(source, included), allowed);
    }
};

QTEST_GUILESS_MAIN(LayersTest)

#include "LayersTest.moc"
