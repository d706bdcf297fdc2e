#include "platform/linux/instance/DBusInstance.h"

#include <QCoroSignal>
#include <QTest>
#include <QThread>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

using Running = Instance::Running;

/// What a program hears that is started for a report, while this one's main loop turns.
Running askElsewhere(const std::optional<QString>& profile = {})
{
    Running answer;
    const std::unique_ptr<QThread> other(QThread::create([&answer, profile] {
        const auto name = u"asking"_s;
        {
            const DBusInstance instance(
                QDBusConnection::connectToBus(QDBusConnection::SessionBus, name), {profile, {}, {}});
            answer = instance.running();
        }
        QDBusConnection::disconnectFromBus(name);
    }));
    other->start();
    if (!QTest::qWaitFor([&other] { return other->isFinished(); }, 30000))
        qFatal("The question is never over.");
    return answer;
}

QCoro::Task<QString> give(QString text)
{
    co_return text;
}

} // namespace

/// The report of the running program, on a session bus of the test's own.
class DBusReportTest final : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void asked();
    void ready();

private Q_SLOTS:
    void init()
    {
        m_running = std::make_unique<DBusInstance>(
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"running"_s), DBusInstance::Options {});
    }

    void cleanup()
    {
        m_running.reset();
        QDBusConnection::disconnectFromBus(u"running"_s);
    }

    void theRunningProgramGivesItsReport()
    {
        QVERIFY(m_running->claim(Instance::Request::reopen));
        m_running->offerReport([] { return give(u"all is well\n"_s); });

        QCOMPARE(askElsewhere().report, u"all is well\n"_s);
        QCOMPARE(askElsewhere().report, u"all is well\n"_s);
    }

    void aReportThatTakesItsTimeIsWaitedFor()
    {
        QVERIFY(m_running->claim(Instance::Request::reopen));
        m_running->offerReport([this] { return giveLater(); });
        bool isAsked = false;
        const QObject listener;
        connect(this, &DBusReportTest::asked, &listener, [&] { isAsked = true; });
        QMetaObject::invokeMethod(
            this,
            [&] {
                QTRY_VERIFY(isAsked);
                QTest::qWait(200);
                Q_EMIT ready();
            },
            Qt::QueuedConnection);

        QCOMPARE(askElsewhere().report, u"at last"_s);
    }

    void withoutARunningProgramThereIsNone()
    {
        const auto running = askElsewhere();

        QVERIFY(!running.isThere);
        QVERIFY(!running.report);
    }

    void aProgramThatIsNotThereYetHasNone()
    {
        QVERIFY(m_running->claim(Instance::Request::reopen));

        const auto running = askElsewhere();

        QVERIFY(running.isThere);
        QVERIFY(!running.report);
    }

    void aProgramThatHangsIsThereWithoutAReport()
    {
        QVERIFY(m_running->claim(Instance::Request::reopen));
        m_running->offerReport([this] { return giveLater(); });

        const auto running = askElsewhere();

        QVERIFY(running.isThere);
        QVERIFY(!running.report);
        Q_EMIT ready();
    }

    void theProgramOfAnotherProfileIsNotAsked()
    {
        QVERIFY(m_running->claim(Instance::Request::reopen));
        m_running->offerReport([] { return give(u"all is well"_s); });

        const auto running = askElsewhere(u"/elsewhere"_s);

        QVERIFY(!running.isThere);
        QVERIFY(!running.report);
    }

private:
    QCoro::Task<QString> giveLater()
    {
        Q_EMIT asked();
        co_await qCoro(this, &DBusReportTest::ready);
        co_return u"at last"_s;
    }

    std::unique_ptr<DBusInstance> m_running;
};

QTEST_GUILESS_MAIN(DBusReportTest)

#include "DBusReportTest.moc"
