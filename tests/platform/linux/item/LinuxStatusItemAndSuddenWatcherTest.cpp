#include "platform/linux/item/LinuxStatusItem.h"
#include "support/FakeStatusArea.h"
#include "support/FakeTray.h"

#include <QTest>
#include <QThread>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

/// A status area that answers also while the test's own thread waits for it, as that of another program does.
class ThreadedStatusArea final {
public:
    ThreadedStatusArea()
    {
        m_thread.start();
        m_inThread.moveToThread(&m_thread);
        run([this] { m_area = std::make_unique<FakeStatusArea>(); });
    }

    ThreadedStatusArea(const ThreadedStatusArea&) = delete;
    ThreadedStatusArea& operator=(const ThreadedStatusArea&) = delete;

    ~ThreadedStatusArea()
    {
        run([this] { m_area.reset(); });
        m_thread.quit();
        m_thread.wait();
    }

    [[nodiscard]] bool start()
    {
        bool hasStarted = false;
        run([&] { hasStarted = m_area->start(); });
        return hasStarted;
    }

    void stop()
    {
        run([this] { m_area->stop(); });
    }

    [[nodiscard]] QStringList items()
    {
        QStringList items;
        run([&] { items = m_area->items(); });
        return items;
    }

private:
    template <class Function> void run(Function function)
    {
        QMetaObject::invokeMethod(&m_inThread, function, Qt::BlockingQueuedConnection);
    }

    QThread m_thread;
    QObject m_inThread;
    std::unique_ptr<FakeStatusArea> m_area;
};

} // namespace

/// A watcher that comes while the item still hears that there is none. What Qt finds then it keeps to for the whole
/// process, so these tests have one of their own.
class LinuxStatusItemAndSuddenWatcherTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"item"_s);
        QVERIFY(m_bus.isConnected());
        m_area = std::make_unique<ThreadedStatusArea>();
        m_tray = std::make_unique<FakeTray>();
        m_tray->start();
        m_item = std::make_unique<LinuxStatusItem>(
            m_bus, StatusNotifierItem::Identity {u"org.example.orvella"_s, {}}, m_tokens);
        // The answer is on its way when the watcher comes.
        m_item->show({});
        QVERIFY(m_area->start());
    }

    void cleanup()
    {
        m_item.reset();
        m_area.reset();
        m_tray.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"item"_s);
    }

    void itGetsTheOneItem()
    {
        QTRY_COMPARE(m_area->items(), QStringList {m_bus.baseService()});
        QTest::qWait(200);

        QCOMPARE(m_area->items().size(), 1);
        QCOMPARE(m_tray->icons(), 0);
    }

    void itLeavesTheItemToTheTrayWhenItGoes()
    {
        QTRY_COMPARE(m_area->items().size(), 1);

        m_area->stop();

        QTRY_COMPARE(m_tray->icons(), 1);
    }

private:
    QDBusConnection m_bus {QString()};
    ActivationTokens m_tokens;
    std::unique_ptr<LinuxStatusItem> m_item;
    std::unique_ptr<ThreadedStatusArea> m_area;
    std::unique_ptr<FakeTray> m_tray;
};

QTEST_MAIN(LinuxStatusItemAndSuddenWatcherTest)

#include "LinuxStatusItemAndSuddenWatcherTest.moc"
