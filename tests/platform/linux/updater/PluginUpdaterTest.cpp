#include "platform/linux/updater/PluginUpdater.h"
#include "base/Version.h"
#include "support/FakePackageKit.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const auto kFileName = u"orvella-updater.so"_s;
const auto kWithout =
    u"If Orvella came with the packages of your system, it is updated together with them: look for updates in your "
    "software centre. Otherwise get a newer version where you got this one."_s;
const auto kUnfit =
    u"The part of Orvella that looks for updates does not fit this version. Look for updates in your software centre."_s;
const auto kUpdatedMeanwhile =
    u"Orvella was updated while it was running. Quit it and start it again before you look for updates."_s;

QList<QMessageBox*> notices()
{
    QList<QMessageBox*> found;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        if (auto* const box = qobject_cast<QMessageBox*>(widget))
            found.append(box);
    }
    return found;
}

QString notice()
{
    return notices().isEmpty() ? QString() : notices().constFirst()->text();
}

QString interfaceOf(const QString& library)
{
    return QPluginLoader(library).metaData().value("IID"_L1).toString();
}

bool isInMemory(const QString& library)
{
    QFile map(u"/proc/self/maps"_s);
    return map.open(QIODevice::ReadOnly) && map.readAll().contains(QFile::encodeName(library));
}

int counted(const char* property)
{
    return qApp->property(property).toInt();
}

} // namespace

/// On a system bus of its own, where PackageKit would hear it if it were asked.
class PluginUpdaterTest final : public QObject {
    Q_OBJECT

private:
    void make(const QString& library)
    {
        m_updater = std::make_unique<PluginUpdater>(PluginUpdater::Surroundings {library}, m_clock, m_windows);
    }

    /// A folder with a library that fits, to be found by whoever searches for it.
    [[nodiscard]] static bool putDecoy(const QTemporaryDir& folder)
    {
        return QFile::copy(QStringLiteral(ORVELLA_FITTING_UPDATER), folder.filePath(kFileName));
    }

private Q_SLOTS:
    void init()
    {
        for (const auto* const property : {"updatersMade", "updatersAsked", "oldUpdaterRan"})
            qApp->setProperty(property, {});
        m_packageKit.start();
    }

    void cleanup()
    {
        m_updater.reset();
        m_packageKit.stop();
        QVERIFY(notices().isEmpty());
        QCOMPARE(m_packageKit.calls(), QStringList());
        QCOMPARE(m_clock.sleepers(), 0U);
    }

    /// The first test: what has been loaded stays.
    void startingLoadsAndShowsNothing()
    {
        make(QStringLiteral(ORVELLA_FITTING_UPDATER));

        m_updater->start();
        QTest::qWait(50);

        QVERIFY(!isInMemory(QStringLiteral(ORVELLA_FITTING_UPDATER)));
        QCOMPARE(counted("updatersMade"), 0);
        QVERIFY(notices().isEmpty());
        m_updater->checkForUpdates();
        QVERIFY(isInMemory(QStringLiteral(ORVELLA_FITTING_UPDATER)));
    }

    void theLibraryIsLoadedWhenTheViewerAsksFirst()
    {
        make(QStringLiteral(ORVELLA_FITTING_UPDATER));

        m_updater->checkForUpdates();
        m_updater->checkForUpdates();

        QCOMPARE(counted("updatersMade"), 1);
        QCOMPARE(counted("updatersAsked"), 2);
        QVERIFY(notices().isEmpty());
    }

    void aLibraryThatIsNoneIsAnError_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("no library\n");
        QTest::newRow("cut off") << read(QStringLiteral(ORVELLA_FITTING_UPDATER)).left(4096);
    }

    void aLibraryThatIsNoneIsAnError()
    {
        QFETCH(const QByteArray, content);
        const QTemporaryDir folder;
        QFile library(folder.filePath(kFileName));
        QVERIFY(library.open(QIODevice::WriteOnly));
        library.write(content);
        library.close();
        make(library.fileName());

        m_updater->checkForUpdates();

        QCOMPARE(notice(), kUnfit);
    }

    void aFolderInThePlaceOfTheLibraryIsAnError()
    {
        make(m_folder.path());

        m_updater->checkForUpdates();

        QCOMPARE(notice(), kUnfit);
    }

    /// As any plug-in that is none of the program's.
    void aLibraryOfAnotherProgramIsAnError()
    {
        const auto library = QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/platforms/libqoffscreen.so"_s;
        QVERIFY(!interfaceOf(library).isEmpty());
        make(library);

        m_updater->checkForUpdates();

        QCOMPARE(notice(), kUnfit);
    }

    void theInterfaceHasTheVersionOfTheProgramInItsName()
    {
        QCOMPARE(interfaceOf(QStringLiteral(ORVELLA_FITTING_UPDATER)), u"io.orvella.Orvella.Updater/"_s + kVersion);
    }

    void aLibraryOfAnotherVersionAsksForANewStartAndNothingOfItRuns()
    {
        make(QStringLiteral(ORVELLA_OLD_UPDATER));

        m_updater->checkForUpdates();

        QCOMPARE(notice(), kUpdatedMeanwhile);
        QVERIFY(!qApp->property("oldUpdaterRan").toBool());
    }

    void whatWasLoadedBeforeAnUpgradeGoesOn()
    {
        const QTemporaryDir folder;
        QVERIFY(putDecoy(folder));
        make(folder.filePath(kFileName));
        m_updater->checkForUpdates();
        QVERIFY(QFile::remove(folder.filePath(kFileName)));
        QVERIFY(QFile::copy(QStringLiteral(ORVELLA_OLD_UPDATER), folder.filePath(kFileName)));

        m_updater->checkForUpdates();

        QCOMPARE(counted("updatersAsked"), 2);
        QVERIFY(notices().isEmpty());
        QVERIFY(!qApp->property("oldUpdaterRan").toBool());
    }

    void aLibraryThatComesLaterIsFound()
    {
        const QTemporaryDir folder;
        make(folder.filePath(kFileName));
        m_updater->checkForUpdates();
        QCOMPARE(notice(), kWithout);

        QVERIFY(putDecoy(folder));
        m_updater->checkForUpdates();

        QCOMPARE(counted("updatersAsked"), 1);
        QVERIFY(notices().isEmpty());
    }

    /// LD_LIBRARY_PATH and QT_PLUGIN_PATH lead to a library that fits, from the start of the test.
    void theLibraryIsSearchedForNowhereElse_data()
    {
        QTest::addColumn<QString>("library");
        QTest::newRow("an absolute path where there is none") << m_folder.filePath(kFileName);
        QTest::newRow("a name alone") << kFileName;
        QTest::newRow("a relative path") << u"./"_s + kFileName;
        QTest::newRow("no place known") << QString();
    }

    void theLibraryIsSearchedForNowhereElse()
    {
        QFETCH(const QString, library);
        QVERIFY(QFileInfo::exists(qEnvironmentVariable("LD_LIBRARY_PATH") + u'/' + kFileName));
        QVERIFY(QCoreApplication::libraryPaths().contains(
            QFileInfo(qEnvironmentVariable("QT_PLUGIN_PATH")).canonicalFilePath()));
        const QTemporaryDir decoy;
        QVERIFY(putDecoy(decoy));
        const auto directory = QDir::currentPath();
        QVERIFY(QDir::setCurrent(decoy.path()));
        make(library);

        m_updater->checkForUpdates();
        QVERIFY(QDir::setCurrent(directory));

        QCOMPARE(notice(), kWithout);
        QCOMPARE(counted("updatersMade"), 0);
    }

private:
    static QByteArray read(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("The library of the test is missing.");
        return file.readAll();
    }

    QTemporaryDir m_folder;
    FakeClock m_clock;
    FakeWindows m_windows;
    FakePackageKit m_packageKit;
    std::unique_ptr<PluginUpdater> m_updater;
};

int main(int argc, char** argv)
{
    // Whoever looked for PackageKit would find the one of the test.
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    const QApplication application(argc, argv);
    PluginUpdaterTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PluginUpdaterTest.moc"
