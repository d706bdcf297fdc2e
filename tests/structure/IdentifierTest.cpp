#include "base/ApplicationId.h"
#include "platform/linux/files/DesktopEntry.h"
#include "platform/linux/instance/DBusApplicationAdaptor.h"
#include "platform/linux/instance/DBusInstance.h"
#include "platform/linux/instance/DBusReportAdaptor.h"
#include "platform/linux/item/SymbolicIcon.h"
#include "platform/linux/login/AutostartLoginItem.h"

#include <QDBusMessage>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const QDir kRoot(QStringLiteral(ORVELLA_SOURCE_DIR));
const QString kId = kApplicationId;

/// Empty where there is no such file.
QString text(const QString& path)
{
    QFile file(kRoot.filePath(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString packaged(const QString& suffix)
{
    return u"packaging/linux/"_s + kId + suffix;
}

/// The texts of all elements of this name.
QStringList elements(const QString& path, QStringView name)
{
    QXmlStreamReader reader(text(path));
    QStringList found;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name)
            found.append(reader.readElementText(QXmlStreamReader::IncludeChildElements).trimmed());
    }
    return found;
}

QStringList files(const QString& folder, const QStringList& patterns = {u"*"_s})
{
    QStringList found;
    for (QDirIterator walk(kRoot.filePath(folder), patterns, QDir::Files, QDirIterator::Subdirectories);
        walk.hasNext();)
        found.append(kRoot.relativeFilePath(walk.next()));
    found.sort();
    return found;
}

} // namespace

/// The program has one name towards the desktop, and everything that bears it agrees.
class IdentifierTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theNameIsOneThatEveryPlaceAllows()
    {
        static const QRegularExpression form(u"^[a-z]+(\\.[a-z][a-z0-9]*)+\\.[A-Z][A-Za-z0-9]*$"_s);

        QVERIFY(form.match(kId).hasMatch());
    }

    void itBeginsTheNameOfTheProgramsOwnInterface()
    {
        QCOMPARE(DBusReportAdaptor::interfaceName(), kId + u".Report"_s);
    }

    void itIsTheNameOnTheSessionBusAndOfTheObjectThere()
    {
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"instance"_s);
        DBusInstance instance(bus, {});

        QVERIFY(instance.claim(Instance::Request::reopen));

        QCOMPARE(instance.name(), kId);
        const auto path = u'/' + QString(kId).replace(u'.', u'/');
        const auto reply = QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(kId, path, u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s),
            QDBus::BlockWithGui);
        QVERIFY(reply.arguments().value(0).toString().contains(u"\"org.freedesktop.Application\""_s));
    }

    void itIsTheNameOfTheLoginItemAndOfItsIcon()
    {
        const QTemporaryDir folder;
        AutostartLoginItem item({folder.path(), {u"/usr/bin/orvella"_s}, {}});

        QVERIFY(item.registerItem());

        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList {kId + u".desktop"_s});
        const auto entry = DesktopEntry::read(folder.filePath(kId + u".desktop"_s));
        QVERIFY(entry);
        QCOMPARE(entry->string(u"Icon"_s), kId);
    }

    void itIsTheNameOfEveryIcon()
    {
        const auto icons = files(u"packaging/icons"_s);

        QCOMPARE(icons,
            (QStringList {u"packaging/icons/hicolor/scalable/apps/"_s + kId + u".svg"_s,
                u"packaging/icons/hicolor/symbolic/apps/"_s + kId + u"-symbolic.svg"_s}));
        QCOMPARE(symbolicIconName({kRoot.filePath(u"packaging/icons"_s)}, kId), kId + u"-symbolic"_s);
    }

    void itIsTheNameOfTheDesktopEntryThatWindowsBelongTo()
    {
        QVERIFY(text(u"Velmora/VelmoraApp.cpp"_s).contains(u"setDesktopFileName(kApplicationId);"_s));
    }

    void theDesktopEntryBearsItAndOffersTheActions()
    {
        const auto content = text(packaged(u".desktop"_s));
        const auto entry = DesktopEntry::parse(content);

        QVERIFY2(entry, "There is no desktop entry of the program's name.");
        QCOMPARE(entry->string(u"Icon"_s), kId);
        QCOMPARE(entry->boolean(u"DBusActivatable"_s), true);
        QCOMPARE(entry->command(), QStringList {u"orvella"_s});
        const auto actions = entry->list(u"Actions"_s);
        QCOMPARE(actions,
            (QStringList {*DBusApplicationAdaptor::actionFor(Instance::Request::openAd),
                *DBusApplicationAdaptor::actionFor(Instance::Request::showSettings)}));
        for (const auto& action : actions)
            QVERIFY(content.contains(u"\n[Desktop Action %1]\n"_s.arg(action)));
        // For launchers that do not know D-Bus activation.
        QVERIFY(content.contains(u"\nExec=orvella --open-ad\n"_s));
        QVERIFY(content.contains(u"\nExec=orvella --settings\n"_s));
    }

    void theServiceOfTheBusBearsIt()
    {
        const auto content = text(packaged(u".service.in"_s));

        QVERIFY2(!content.isEmpty(), "There is no service file of the program's name.");
        QVERIFY(content.startsWith(u"[D-BUS Service]\nName=%1\n"_s.arg(kId)));
    }

    void theMetainfoBearsIt()
    {
        const auto path = packaged(u".metainfo.xml"_s);

        QVERIFY2(!text(path).isEmpty(), "There is no metainfo of the program's name.");
        QCOMPARE(elements(path, u"id"), QStringList {kId});
        QCOMPARE(elements(path, u"launchable"), QStringList {kId + u".desktop"_s});
        QCOMPARE(elements(path, u"icon"), QStringList {kId});
        QCOMPARE(elements(path, u"dbus"), QStringList {kId});
    }

    void theSandboxBearsIt()
    {
        QVERIFY(text(u"packaging/flatpak/"_s + kId + u".yml"_s).contains(u"\nid: %1\n"_s.arg(kId)));
    }

    void nothingBearsAnotherNameOfTheKind_data()
    {
        QTest::addColumn<QString>("path");
        for (const auto& folder : {u"Velmora"_s, u"docs"_s, u"packaging"_s, u"tools"_s}) {
            for (const auto& path : files(folder,
                     {u"*.cpp"_s, u"*.h"_s, u"*.md"_s, u"*.in"_s, u"*.desktop"_s, u"*.xml"_s, u"*.yml"_s, u"*.1"_s,
                         u"*.txt"_s, u"build"_s, u"control"_s, u"rules"_s, u"*.install"_s}))
                QTest::newRow(qPrintable(path)) << path;
        }
    }

    void nothingBearsAnotherNameOfTheKind()
    {
        QFETCH(const QString, path);
        static const QRegularExpression form(u"\\bio[./]orvella[./][A-Za-z0-9_]+"_s);
        const auto content = text(path);

        for (auto names = form.globalMatch(content); names.hasNext();) {
            auto name = names.next().captured();
            QCOMPARE(name.replace(u'/', u'.'), kId);
        }
    }
};

QTEST_GUILESS_MAIN(IdentifierTest)

#include "IdentifierTest.moc"
