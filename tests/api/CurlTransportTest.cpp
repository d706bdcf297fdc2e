#include "api/CurlTransport.h"
#include "support/RawAnswers.h"
#include "support/TransportCall.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>
#include <QThreadPool>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// Well under a second, and more than a busy machine needs.
constexpr int kPromptMilliseconds = 800;

/// Runs a second call when the first is over.
QCoro::Task<> runTwo(
    Transport& transport, std::shared_ptr<Exchange> first, std::shared_ptr<Exchange> second, bool& isOver)
{
    co_await transport.run(first, {});
    co_await transport.run(second, {});
    isOver = true;
}

QCoro::Task<> runThenDestroy(std::unique_ptr<CurlTransport> transport, std::shared_ptr<Exchange> exchange, bool& isOver)
{
    auto* const lent = transport.get();
    co_await lent->run(exchange, {});
    transport.reset();
    isOver = true;
}

/// The closing of its last exchange is what shows that nothing of a call is left.
class MarkedExchange final : public Exchange {
public:
    MarkedExchange(QUrl url, std::atomic<int>& alive)
        : m_url(std::move(url))
        , m_alive(alive)
    {
        ++m_alive;
    }

    ~MarkedExchange() override { --m_alive; }

    [[nodiscard]] Result<HttpRequest> request() const override { return aGet(m_url); }

    void receive(Result<HttpReply>) override {}

private:
    QUrl m_url;
    std::atomic<int>& m_alive;
};

} // namespace

class CurlTransportTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void cleanup()
    {
        // The pool is the process's own: no test leaves work in it to the next.
        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
    }

    void theReplyComesBackWhole()
    {
        const RawServer server(answer::reply(201, R"({"ok":true})"));
        CurlTransport transport;
        TransportCall call(transport, aGet(server.url()));

        const auto reply = call.wait();

        QVERIFY(reply);
        QCOMPARE(reply->status, 201);
        QCOMPARE(reply->body, R"({"ok":true})");
    }

    void anExchangeRunsAwayFromTheMainThreadAndItsFlowResumesOnIt()
    {
        const RawServer server(answer::reply(200));
        CurlTransport transport;
        TransportCall call(transport, aGet(server.url()));

        QVERIFY(call.wait());

        QVERIFY(call.exchange().requestThread() != nullptr);
        QVERIFY(call.exchange().requestThread() != QThread::currentThread());
        QCOMPARE(call.exchange().receiveThread(), call.exchange().requestThread());
        QCOMPARE(call.thread(), QThread::currentThread());
        QCOMPARE(call.exchange().receipts(), 1);
    }

    void aRequestThatCannotBeMadeIsReceivedAsItsFailureAndNothingIsSent()
    {
        const Failure unencodable {Failure::Kind::unencodable, u"Not JSON."_s};
        CurlTransport transport;
        TransportCall call(transport, std::unexpected(unencodable));

        const auto reply = call.wait();

        QCOMPARE(reply.error(), unencodable);
        QVERIFY(call.exchange().receiveThread() != QThread::currentThread());
    }

    void hungCallsDoNotDelayAnother()
    {
        const RawServer hung(answer::silence());
        const RawServer server(answer::reply(200));
        CurlTransport transport;
        std::vector<std::unique_ptr<TransportCall>> waiting;
        for (int i = 0; i < 15; ++i)
            waiting.push_back(std::make_unique<TransportCall>(transport, aGet(hung.url())));
        QTRY_COMPARE(hung.requests().size(), waiting.size());
        QElapsedTimer time;
        time.start();

        TransportCall call(transport, aGet(server.url()));

        QVERIFY(call.wait());
        QVERIFY(time.elapsed() < kPromptMilliseconds);
        QVERIFY(!waiting.front()->isOver());
    }

    void aStopResumesTheFlowAtOnceAndEndsTheTransferPromptly()
    {
        const RawServer server(answer::silence());
        CurlTransport transport;
        TransportCall call(transport, aGet(server.url()));
        QTRY_COMPARE(server.requests().size(), 1U);
        // libcurl looks up by itself once more, 200 ms after the start.
        QTest::qWait(300);
        QElapsedTimer time;
        time.start();

        call.stop();

        QVERIFY(call.isOver());
        QTRY_COMPARE(server.openConnections(), 0U);
        QVERIFY(time.elapsed() < kPromptMilliseconds);
        QVERIFY(QThreadPool::globalInstance()->waitForDone(kPromptMilliseconds));
        QCOMPARE(call.exchange().receipts(), 0);
    }

    void aStopEndsATransferThatIsStillConnecting()
    {
        // Nobody accepts: the handshake of TLS has no one to talk to.
        QTcpServer deaf;
        QVERIFY(deaf.listen(QHostAddress::LocalHost));
        deaf.pauseAccepting();
        CurlTransport transport;
        TransportCall call(transport, aGet(QUrl(u"https://127.0.0.1:%1/"_s.arg(deaf.serverPort()))));
        QTest::qWait(100);

        call.stop();

        QVERIFY(call.isOver());
        QVERIFY(QThreadPool::globalInstance()->waitForDone(kPromptMilliseconds));
    }

    void aFlowThatWasStoppedBeforeSendsNothing()
    {
        const RawServer server(answer::reply(200));
        CurlTransport transport;
        std::stop_source stop;
        stop.request_stop();
        const auto exchange = std::make_shared<PlainExchange>(aGet(server.url()));

        const auto task = transport.run(exchange, stop.get_token());

        QVERIFY(task.isReady());
        QTest::qWait(50);
        QCOMPARE(server.connections(), 0U);
        QCOMPARE(exchange->receipts(), 0);
    }

    void aFlowStoppedWhileItsCallIsQueuedSendsNothing()
    {
        const RawServer hung(answer::silence());
        const RawServer server(answer::reply(200));
        CurlTransport transport;
        std::vector<std::unique_ptr<TransportCall>> waiting;
        for (int i = 0; i < QThreadPool::globalInstance()->maxThreadCount(); ++i)
            waiting.push_back(std::make_unique<TransportCall>(transport, aGet(hung.url())));
        QTRY_COMPARE(hung.requests().size(), waiting.size());
        TransportCall call(transport, aGet(server.url()));

        call.stop();
        waiting.clear();

        QVERIFY(call.isOver());
        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
        QTest::qWait(50);
        QCOMPARE(server.connections(), 0U);
        QVERIFY(call.exchange().requestThread() == nullptr);
    }

    void aCallThatIsOverDoesNotResumeAFlowThatWasStoppedMeanwhile()
    {
        CurlTransport transport;
        TransportCall call(transport, failed(Failure::Kind::unencodable));
        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
        QCOMPARE(call.exchange().receipts(), 1);
        QVERIFY(!call.isOver());

        call.stop();

        QCOMPARE(call.resumptions(), 1);
        QTest::qWait(50);
        QCOMPARE(call.resumptions(), 1);
    }

    void theEndOfTheTransportEndsEverythingUnderWayAsCancelled()
    {
        const RawServer server(answer::silence());
        auto transport = std::make_unique<CurlTransport>();
        std::vector<std::unique_ptr<TransportCall>> calls;
        for (int i = 0; i < 20; ++i)
            calls.push_back(std::make_unique<TransportCall>(*transport, aGet(server.url())));
        QTRY_COMPARE(server.requests().size(), 16U);
        QElapsedTimer time;
        time.start();

        transport.reset();

        QVERIFY(time.elapsed() < kPromptMilliseconds);
        for (const auto& call : calls) {
            QVERIFY(call->isOver());
            QVERIFY(call->exchange().reply()->error().isCancellation());
            QCOMPARE(call->exchange().receipts(), 1);
        }
    }

    void aFlowThatGoesOnWhileTheTransportEndsIsCancelledAgain()
    {
        const RawServer server(answer::silence());
        auto transport = std::make_unique<CurlTransport>();
        const auto first = std::make_shared<PlainExchange>(aGet(server.url()));
        const auto second = std::make_shared<PlainExchange>(aGet(server.url()));
        bool isOver = false;
        runTwo(*transport, first, second, isOver);
        QTRY_COMPARE(server.requests().size(), 1U);

        transport.reset();

        QVERIFY(isOver);
        QVERIFY(second->reply()->error().isCancellation());
        QCOMPARE(server.connections(), 1U);
    }

    void aFlowMayDestroyTheTransportItWaitedFor()
    {
        const RawServer server(answer::reply(200));
        bool isOver = false;

        runThenDestroy(std::make_unique<CurlTransport>(), std::make_shared<PlainExchange>(aGet(server.url())), isOver);

        QTRY_VERIFY(isOver);
    }

    void manyCallsThatEndAndStopAtAnyMomentLeaveNothingBehind()
    {
        const RawServer server(answer::reply(200, QByteArray(5000, 'x')));
        std::atomic<int> alive = 0;
        auto random = QRandomGenerator(1);
        for (int round = 0; round < 20; ++round) {
            auto transport = std::make_unique<CurlTransport>();
            std::vector<std::stop_source> stops(24);
            for (auto& stop : stops)
                transport->run(std::make_shared<MarkedExchange>(server.url(), alive), stop.get_token());
            for (auto& stop : stops) {
                QTest::qWait(random.bounded(3));
                if (random.bounded(2) == 0)
                    stop.request_stop();
            }
            transport.reset();
        }

        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
        QCOMPARE(alive.load(), 0);
    }
};

QTEST_GUILESS_MAIN(CurlTransportTest)

#include "CurlTransportTest.moc"
