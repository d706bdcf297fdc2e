#include "platform/linux/item/LinuxStatusItem.h"
#include "support/FakeStatusArea.h"

#include <QApplication>
#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;

class LinuxStatusItemWithoutX11Test final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"item"_s);
        QVERIFY(m_bus.isConnected());
    }

    void cleanup()
    {
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"item"_s);
    }

    void aWatcherIsWaitedFor()
    {
        LinuxStatusItem item(m_bus, {u"org.example.orvella"_s, {}}, m_tokens);
        item.show({});
        QTest::qWait(50);

        FakeStatusArea area;
        QVERIFY(area.start());

        QTRY_COMPARE(area.items(), QStringList {m_bus.baseService()});
    }

    void aClickIsHeard()
    {
        int clicks = 0;
        FakeStatusArea area;
        QVERIFY(area.start());
        LinuxStatusItem item(m_bus, {u"org.example.orvella"_s, {}}, m_tokens);
        item.show({[&clicks] { ++clicks; }, {}});
        QTRY_COMPARE(area.items().size(), 1);

        area.call(m_bus.baseService(), u"Activate"_s, {20, 14});

        QCOMPARE(clicks, 1);
        // No server tells where the pointer is.
        QCOMPARE(item.place(), std::nullopt);
    }

private:
    QDBusConnection m_bus {QString()};
    ActivationTokens m_tokens;
};

QTEST_MAIN(LinuxStatusItemWithoutX11Test)

#include "LinuxStatusItemWithoutX11Test.moc"
