#include "platform/linux/login/SystemLoginItem.h"

#include "platform/LoginItem.h"
#include "platform/linux/environment/XdgDirectories.h"
#include "platform/linux/files/DesktopEntry.h"
#include "support/FakeBackgroundPortal.h"

#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class SystemLoginItemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home.emplace();
        m_environment.insert(u"HOME"_s, m_home->path());
        m_environment.insert(u"XDG_CONFIG_HOME"_s, path(u"config"_s));
        m_environment.insert(u"XDG_STATE_HOME"_s, path(u"state"_s));
        m_portal.emplace();
        m_portal->start();
    }

    void cleanup() { m_portal.reset(); }

    void theSessionStartsTheProgramAsTheSessionsOwn()
    {
        QVERIFY(item({})->registerItem());

        QCOMPARE(startedBy(path(u"config/autostart"_s)), (QStringList {u"/usr/bin/orvella"_s, u"--autostart"_s}));
    }

    void withAProfileTheSessionIsLeftAlone()
    {
        const auto profile = path(u"profile"_s);

        for (const bool isSandboxed : {false, true}) {
            QVERIFY(item(profile, isSandboxed)->registerItem());

            QCOMPARE(startedBy(path(u"profile/autostart"_s)),
                (QStringList {u"/usr/bin/orvella"_s, u"--autostart"_s, u"--profile"_s, profile}));
        }
        QVERIFY(!QFile::exists(path(u"config"_s)));
        QTest::qWait(100);
        QVERIFY(m_portal->requests().isEmpty());
    }

    void inASandboxThePortalIsAskedForTheProgramWithinIt()
    {
        const auto sandboxed = item({}, true);

        QVERIFY(sandboxed->registerItem());

        QTRY_COMPARE(m_portal->requests().size(), 1);
        QCOMPARE(m_portal->requests().first().value(u"commandline"_s).toStringList(),
            (QStringList {u"orvella"_s, u"--autostart"_s}));
        QVERIFY(!QFile::exists(path(u"config"_s)));
        m_portal->answer(0, 0, true);
        QTRY_COMPARE(sandboxed->status(), LoginItem::Status::enabled);
        QCOMPARE(item({}, true)->status(), LoginItem::Status::enabled);
        QVERIFY(QFile::exists(path(u"state/orvella/login-item"_s)));
    }

private:
    [[nodiscard]] QString path(const QString& name) const { return m_home->filePath(name); }

    [[nodiscard]] std::unique_ptr<LoginItem> item(const std::optional<QString>& profile, bool isSandboxed = false) const
    {
        const XdgDirectories directories(m_environment, profile);
        auto environment = m_environment;
        if (isSandboxed)
            environment.insert(u"FLATPAK_ID"_s, u"io.orvella.Orvella"_s);
        return systemLoginItem({environment, directories, u"/usr/bin/orvella"_s, profile});
    }

    static QStringList startedBy(const QString& folder)
    {
        const auto entry = DesktopEntry::read(folder + u"/io.orvella.Orvella.desktop"_s);
        return entry ? entry->command() : QStringList();
    }

    std::optional<QTemporaryDir> m_home;
    QProcessEnvironment m_environment;
    std::optional<FakeBackgroundPortal> m_portal;
};

QTEST_GUILESS_MAIN(SystemLoginItemTest)

#include "SystemLoginItemTest.moc"
