#include "platform/linux/updater/PluginUpdater.h"
#include "support/FakePackageKit.h"
#include "support/FakePlatform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const auto kPackagesOrNot =
    u"If Orvella came with the packages of your system, it is updated together with them: look for updates in your "
    "software centre. Otherwise get a newer version where you got this one."_s;
const auto kFlatpak =
    u"This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre."_s;
const auto kAppImage =
    u"This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you got this "
    "one."_s;

QList<QMessageBox*> notices()
{
    QList<QMessageBox*> found;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        if (auto* const box = qobject_cast<QMessageBox*>(widget))
            found.append(box);
    }
    return found;
}

} // namespace

/// On a system bus of its own, where PackageKit would hear it if it were asked.
class PluginUpdaterWithoutLibraryTest final : public QObject {
    Q_OBJECT

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    void make(const QProcessEnvironment& environment = {})
    {
        m_updater = std::make_unique<PluginUpdater>(
            PluginUpdater::Surroundings {path(u"orvella-updater.so"_s), environment, path(u"mount/usr/bin/orvella"_s)},
            m_clock, m_windows);
    }

private Q_SLOTS:
    void initTestCase()
    {
        for (const auto& folder : {u"mount/usr/bin"_s, u"mount2"_s})
            QVERIFY(QDir(m_folder.path()).mkpath(folder));
        for (const auto& name : {u"Orvella.AppImage"_s, u"mount/usr/bin/orvella"_s}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void init()
    {
        m_windows.activated.clear();
        m_packageKit = std::make_unique<FakePackageKit>();
        m_packageKit->start();
    }

    void cleanup()
    {
        m_updater.reset();
        m_packageKit.reset();
        QVERIFY(notices().isEmpty());
        QCOMPARE(m_clock.sleepers(), 0U);
    }

    void theViewerIsToldInANotice()
    {
        make();

        m_updater->checkForUpdates();

        QCOMPARE(notices().size(), 1);
        const auto* const shown = notices().constFirst();
        QVERIFY(shown->isVisible());
        QVERIFY(!shown->isModal());
        QCOMPARE(shown->objectName(), u"updateNotice"_s);
        QCOMPARE(shown->windowTitle(), u"Orvella"_s);
        QCOMPARE(shown->text(), kPackagesOrNot);
        QCOMPARE(m_windows.activated, std::vector {shown->windowHandle()});
    }

    void whereUpdatesComeFromDependsOnHowTheProgramCame_data()
    {
        QTest::addColumn<QString>("appDir");
        QTest::addColumn<bool>("isFlatpak");
        QTest::addColumn<QString>("text");

        QTest::newRow("packages, or built by somebody") << QString() << false << kPackagesOrNot;
        QTest::newRow("AppImage") << u"mount"_s << false << kAppImage;
        QTest::newRow("started by another AppImage") << u"mount2"_s << false << kPackagesOrNot;
        QTest::newRow("Flatpak") << QString() << true << kFlatpak;
        QTest::newRow("Flatpak, with the variables of an AppImage") << u"mount"_s << true << kFlatpak;
    }

    void whereUpdatesComeFromDependsOnHowTheProgramCame()
    {
        QFETCH(const QString, appDir);
        QFETCH(const bool, isFlatpak);
        QFETCH(const QString, text);
        QProcessEnvironment environment;
        if (!appDir.isEmpty()) {
            environment.insert(u"APPIMAGE"_s, path(u"Orvella.AppImage"_s));
            environment.insert(u"APPDIR"_s, path(appDir));
        }
        if (isFlatpak)
            environment.insert(u"FLATPAK_ID"_s, u"io.orvella.Orvella"_s);
        make(environment);

        m_updater->checkForUpdates();

        QCOMPARE(notices().size(), 1);
        QCOMPARE(notices().constFirst()->text(), text);
    }

    /// What the test itself asks in the end shows that a question would have been heard.
    void nobodyIsAsked()
    {
        make();

        m_updater->start();
        m_updater->checkForUpdates();
        QTest::qWait(200);

        QCOMPARE(notices().size(), 1);
        QCOMPARE(m_packageKit->calls(), QStringList());
        QCOMPARE(m_clock.sleepers(), 0U);
        const auto question = QDBusMessage::createMethodCall(u"org.freedesktop.PackageKit"_s,
            u"/org/freedesktop/PackageKit"_s, u"org.freedesktop.PackageKit"_s, u"CreateTransaction"_s);
        QVERIFY(QDBusConnection::systemBus().send(question));
        QTRY_COMPARE(m_packageKit->calls(), QStringList {u"CreateTransaction()"_s});
    }

    void askingAgainBringsTheSameNoticeToTheFront()
    {
        make();
        m_updater->checkForUpdates();
        auto* const first = notices().constFirst();
        m_windows.activated.clear();

        m_updater->checkForUpdates();

        QCOMPARE(notices(), QList {first});
        QCOMPARE(m_windows.activated, std::vector {first->windowHandle()});
    }

    void aClosedNoticeIsGoneAndTheNextOneIsNew()
    {
        make();
        m_updater->checkForUpdates();
        const QPointer<QMessageBox> first(notices().constFirst());

        QTest::mouseClick(first->button(QMessageBox::Ok), Qt::LeftButton);

        QTRY_VERIFY(!first);
        m_updater->checkForUpdates();
        QCOMPARE(notices().size(), 1);
        QVERIFY(notices().constFirst()->isVisible());
    }

private:
    QTemporaryDir m_folder;
    FakeClock m_clock;
    FakeWindows m_windows;
    std::unique_ptr<FakePackageKit> m_packageKit;
    std::unique_ptr<PluginUpdater> m_updater;
};

int main(int argc, char** argv)
{
    // Whoever looked for PackageKit would find the one of the test.
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    const QApplication application(argc, argv);
    PluginUpdaterWithoutLibraryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PluginUpdaterWithoutLibraryTest.moc"
