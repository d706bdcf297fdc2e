#include "api/CurlTransport.h"
#include "support/TransportCall.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThreadPool>

#include <atomic>

#include <netdb.h>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// The system's function has no other way to reach the test.
std::atomic<int> asking = 0;
std::atomic<bool> isAnswering = false;

constexpr int kPromptMilliseconds = 800;

} // namespace

/// Takes the place of the system's: a name service that does not answer until the test is over.
extern "C" int getaddrinfo(const char*, const char*, const addrinfo*, addrinfo**)
{
    ++asking;
    isAnswering.wait(false);
    --asking;
    return EAI_NONAME;
}

/// A name service that hangs, as after a change of networks, holds up nothing.
class CurlNameServiceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        isAnswering = false;
        m_time.start();
    }

    void cleanup()
    {
        isAnswering = true;
        isAnswering.notify_all();
        QTRY_COMPARE(asking.load(), 0);
        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
    }

    void theLimitHolds()
    {
        const auto reply = ask(aGet(m_url), {.limit = 200ms, .authorities = {}});

        QCOMPARE(asking.load(), 1);
        QVERIFY(m_time.elapsed() < kPromptMilliseconds);
        QCOMPARE(reply.error().kind, Failure::Kind::timedOut);
    }

    void aStopFreesTheThread()
    {
        CurlTransport transport;
        TransportCall call(transport, aGet(m_url));
        QTRY_COMPARE(asking.load(), 1);
        m_time.start();

        call.stop();

        QVERIFY(call.isOver());
        QVERIFY(QThreadPool::globalInstance()->waitForDone(kPromptMilliseconds));
        QCOMPARE(asking.load(), 1);
    }

    void theTransportEndsPromptly()
    {
        auto transport = std::make_unique<CurlTransport>();
        const TransportCall call(*transport, aGet(m_url));
        QTRY_COMPARE(asking.load(), 1);
        m_time.start();

        transport.reset();

        QVERIFY(m_time.elapsed() < kPromptMilliseconds);
        QVERIFY(call.exchange().reply()->error().isCancellation());
        QCOMPARE(asking.load(), 1);
    }

private:
    const QUrl m_url {u"http://service.invalid/"_s};
    QElapsedTimer m_time;
};

QTEST_GUILESS_MAIN(CurlNameServiceTest)

#include "CurlNameServiceTest.moc"
