#include "platform/linux/look/XSettingsReader.h"
#include "platform/linux/look/LinuxDesktopLook.h"

#include "support/FakeXSettingsManager.h"
#include "support/XSettingsBytes.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

QByteArray theme(const QByteArray& name)
{
    return XSettingsBytes::of({{"Net/ThemeName", name}});
}

} // namespace

/// Needs a display.
class XSettingsReaderTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        QVERIFY(X11Display::current());
    }

    void cleanup()
    {
        m_changes.reset();
        m_reader.reset();
    }

    void whereNobodyManagesSettingsItSaysNothing()
    {
        follow();

        QCOMPARE(m_reader->wishes(), LookWishes());
    }

    void itReadsWhatIsThereAtOnce()
    {
        const FakeXSettingsManager manager(theme("Greybird-dark"));

        follow();

        QCOMPARE(m_reader->wishes().scheme, DesktopLook::Scheme::dark);
    }

    void itFollowsEachChangeOnce()
    {
        FakeXSettingsManager manager(theme("Greybird"));
        follow();

        manager.put(theme("Greybird-dark"));
        QTRY_COMPARE(m_reader->wishes().scheme, DesktopLook::Scheme::dark);

        manager.put(theme("Greybird-dark"));
        manager.put(theme("Adwaita-dark"));
        QTest::qWait(100);
        QCOMPARE(m_changes->size(), 1);

        manager.put(theme("HighContrast"));
        QTRY_VERIFY(m_reader->wishes().isHighContrast);
        QCOMPARE(m_changes->size(), 2);
    }

    void itFollowsAManagerThatComesLaterAndOneThatGoes()
    {
        follow();

        auto manager = std::make_unique<FakeXSettingsManager>(theme("Greybird-dark"));
        QTRY_COMPARE(m_reader->wishes().scheme, DesktopLook::Scheme::dark);
        manager->put(XSettingsBytes::of({{"Gtk/EnableAnimations", 0}}));
        QTRY_VERIFY(m_reader->wishes().isMotionReduced);

        manager.reset();
        QTRY_COMPARE(m_reader->wishes(), LookWishes());

        const FakeXSettingsManager next(theme("Greybird-dark"));
        QTRY_COMPARE(m_reader->wishes().scheme, DesktopLook::Scheme::dark);
    }

    void itFollowsAManagerThatTakesOver()
    {
        FakeXSettingsManager first(theme("Greybird-dark"));
        follow();

        FakeXSettingsManager second(theme("HighContrast"));
        QTRY_VERIFY(m_reader->wishes().isHighContrast);

        first.put(theme("Greybird-dark"));
        QTest::qWait(100);
        QVERIFY(m_reader->wishes().isHighContrast);
        second.put(theme("Greybird"));
        QTRY_VERIFY(!m_reader->wishes().isHighContrast);
    }

    void bytesThatAreNoListSayNothing()
    {
        FakeXSettingsManager manager(theme("Greybird-dark"));
        follow();

        manager.put("nonsense");

        QTRY_COMPARE(m_reader->wishes(), LookWishes());
    }

    void theDesktopsLookFollowsThem()
    {
        LinuxDesktopLook look(QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s));
        int changes = 0;
        look.watch([&changes] { ++changes; });
        QCOMPARE(look.scheme(), DesktopLook::Scheme::light);

        auto manager = std::make_unique<FakeXSettingsManager>(
            XSettingsBytes::of({{"Net/ThemeName", "Greybird-dark"}, {"Gtk/EnableAnimations", 0}}));
        QTRY_COMPARE(look.scheme(), DesktopLook::Scheme::dark);
        QVERIFY(look.isMotionReduced());
        QCOMPARE(changes, 1);

        manager.reset();
        QTRY_COMPARE(look.scheme(), DesktopLook::Scheme::light);
        QCOMPARE(changes, 2);
    }

private:
    void follow()
    {
        m_reader = std::make_unique<XSettingsReader>(*X11Display::current());
        m_changes = std::make_unique<QSignalSpy>(m_reader.get(), &XSettingsReader::changed);
    }

    std::unique_ptr<XSettingsReader> m_reader;
    std::unique_ptr<QSignalSpy> m_changes;
};

QTEST_MAIN(XSettingsReaderTest)

#include "XSettingsReaderTest.moc"
