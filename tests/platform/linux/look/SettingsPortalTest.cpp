#include "platform/linux/look/SettingsPortal.h"

#include "support/FakeSettingsPortal.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const auto kAppearance = u"org.freedesktop.appearance"_s;
const auto kScheme = u"color-scheme"_s;

} // namespace

class SettingsPortalTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"look"_s);
        m_desktop = std::make_unique<FakeSettingsPortal>();
    }

    void cleanup()
    {
        m_changes.reset();
        m_portal.reset();
        m_desktop.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"look"_s);
    }

    void itAsksThePortalThatIsThere()
    {
        m_desktop->put(kAppearance, kScheme, 1U);
        m_desktop->start();

        follow();
        QCOMPARE(m_portal->wishes(), LookWishes());

        QTRY_COMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::dark);
        QCOMPARE(m_changes->size(), 1);
    }

    void itAsksAPortalThatComesLater()
    {
        follow();
        QTest::qWait(50);
        QCOMPARE(m_portal->wishes(), LookWishes());

        m_desktop->put(kAppearance, kScheme, 1U);
        m_desktop->start();

        QTRY_COMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::dark);
    }

    void itAsksARestartedPortalAgainAndKeepsItsWordMeanwhile()
    {
        m_desktop->put(kAppearance, kScheme, 1U);
        m_desktop->start();
        follow();
        QTRY_COMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::dark);

        m_desktop->stop();
        QTest::qWait(50);
        QCOMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::dark);

        m_desktop->put(kAppearance, kScheme, 2U);
        m_desktop->start();
        QTRY_COMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::light);
        QCOMPARE(m_changes->size(), 2);
    }

    void itHearsOfEachChange()
    {
        startAndFollow();

        m_desktop->change(kAppearance, kScheme, 1U);
        QTRY_COMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::dark);

        m_desktop->change(kAppearance, kScheme, 0U);
        QTRY_COMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::unknown);
        QCOMPARE(m_changes->size(), 2);
        QCOMPARE(m_desktop->questions(), 1);
    }

    void aSettingThatSaysNothingNewIsNoChange()
    {
        startAndFollow();
        m_desktop->change(kAppearance, kScheme, 1U);
        QTRY_COMPARE(m_changes->size(), 1);

        m_desktop->change(kAppearance, kScheme, 1U);
        m_desktop->change(kAppearance, u"accent-color"_s, 3U);
        m_desktop->change(u"org.example"_s, kScheme, 2U);
        m_desktop->change(u"org.gnome.desktop.interface"_s, kScheme, u"prefer-light"_s);
        QTest::qWait(100);

        QCOMPARE(m_changes->size(), 1);
    }

    void aPortalThatDoesNotAnswerYetIsNotWaitedFor()
    {
        m_desktop->put(kAppearance, kScheme, 1U);
        m_desktop->hold();
        m_desktop->start();
        follow();
        QTRY_COMPARE(m_desktop->questions(), 1);
        QCOMPARE(m_portal->wishes(), LookWishes());

        m_desktop->answer();

        QTRY_COMPARE(m_portal->wishes().scheme, DesktopLook::Scheme::dark);
    }

    void aChangeIsHeardBeforeTheAnswer()
    {
        m_desktop->hold();
        m_desktop->start();
        follow();
        QTRY_COMPARE(m_desktop->questions(), 1);

        m_desktop->change(kAppearance, u"contrast"_s, 1U);
        QTRY_VERIFY(m_portal->wishes().isHighContrast);

        m_desktop->answer();
        QTest::qWait(100);
        QVERIFY(m_portal->wishes().isHighContrast);
        QCOMPARE(m_changes->size(), 1);
    }

    void withoutASessionBusItSaysNothingQuietly()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        const SettingsPortal portal(QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s));
        QTest::qWait(50);

        QCOMPARE(portal.wishes(), LookWishes());
    }

private:
    void follow()
    {
        m_portal = std::make_unique<SettingsPortal>(m_bus);
        m_changes = std::make_unique<QSignalSpy>(m_portal.get(), &SettingsPortal::changed);
    }

    void startAndFollow()
    {
        m_desktop->start();
        follow();
        QTRY_COMPARE(m_desktop->questions(), 1);
        QTest::qWait(50);
    }

    QDBusConnection m_bus {QString()};
    std::unique_ptr<FakeSettingsPortal> m_desktop;
    std::unique_ptr<SettingsPortal> m_portal;
    std::unique_ptr<QSignalSpy> m_changes;
};

QTEST_GUILESS_MAIN(SettingsPortalTest)

#include "SettingsPortalTest.moc"
