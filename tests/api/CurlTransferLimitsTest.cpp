#include "api/CurlOptions.h"
#include "support/RawAnswers.h"
#include "support/TransportCall.h"

#include <QElapsedTimer>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kGreatest = 1'048'576;

QByteArray chunked(const QByteArray& body)
{
    return "HTTP/1.1 200 OK\r\ntransfer-encoding: chunked\r\n\r\n" + QByteArray::number(body.size(), 16) + "\r\n" + body
        + "\r\n0\r\n\r\n";
}

QByteArray withoutLength(const QByteArray& body)
{
    return "HTTP/1.1 200 OK\r\n\r\n" + body;
}

} // namespace

Q_DECLARE_METATYPE(RawServer::Answer)

class CurlTransferLimitsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aRequestMayTakeAMinute() { QCOMPARE(CurlOptions {}.limit, 60s); }

    void aRequestEndsAtItsLimit_data()
    {
        QTest::addColumn<RawServer::Answer>("answer");
        QTest::newRow("silence") << answer::silence();
        QTest::newRow("half a head") << answer::bytesThenSilence("HTTP/1.1 200 OK\r\ncontent-length: 9");
        QTest::newRow("half a body") << answer::bytesThenSilence("HTTP/1.1 200 OK\r\ncontent-length: 9\r\n\r\n{");
        QTest::newRow("a dripping head") << answer::bytesThenDrip("HTTP/1.1 200 OK\r\n", "a: b\r\n", 10ms);
        QTest::newRow("a dripping body") << answer::bytesThenDrip(
            "HTTP/1.1 200 OK\r\ncontent-length: 9999\r\n\r\n", "x", 10ms);
        QTest::newRow("a dripping body of no length") << answer::bytesThenDrip("HTTP/1.1 200 OK\r\n\r\n", "x", 10ms);
        QTest::newRow("dripping chunks") << answer::bytesThenDrip(
            "HTTP/1.1 200 OK\r\ntransfer-encoding: chunked\r\n\r\n", "1\r\nx\r\n", 10ms);
        QTest::newRow("interim replies without end") << answer::bytesThenDrip({}, "HTTP/1.1 102 Wait\r\n\r\n", 2ms);
    }

    void aRequestEndsAtItsLimit()
    {
        QFETCH(const RawServer::Answer, answer);
        const RawServer server(answer);
        QElapsedTimer time;
        time.start();

        const auto reply = ask(aGet(server.url()), {.limit = 300ms, .authorities = {}});

        QVERIFY(time.elapsed() >= 300);
        QVERIFY(time.elapsed() < 3000);
        QCOMPARE(reply.error().kind, Failure::Kind::timedOut);
        QCOMPARE(reply.error().description, u"The request timed out."_s);
    }

    void aSlowReplyWithinTheLimitIsTaken()
    {
        const RawServer server(answer::bytesThenDrip("HTTP/1.1 200 OK\r\ncontent-length: 20\r\n\r\n", "ab", 10ms));

        const auto reply = ask(aGet(server.url()), {.limit = 5s, .authorities = {}});

        QCOMPARE(reply->body, QByteArray("ab").repeated(10));
    }

    void theLimitHoldsBeforeTheRequestIsSent()
    {
        // The connection waits in the backlog, and the handshake has no one to talk to.
        QTcpServer deaf;
        QVERIFY(deaf.listen(QHostAddress::LocalHost));
        deaf.pauseAccepting();
        const QUrl url(u"https://127.0.0.1:%1/"_s.arg(deaf.serverPort()));

        const auto reply = ask(aGet(url), {.limit = 300ms, .authorities = {}});

        QCOMPARE(reply.error().kind, Failure::Kind::timedOut);
    }

    void aReplyOfOneMebibyteIsTaken_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray body(kGreatest, 'x');
        QTest::newRow("declared") << answer::http(200, body);
        QTest::newRow("chunked") << chunked(body);
        QTest::newRow("without a length") << withoutLength(body);
    }

    void aReplyOfOneMebibyteIsTaken()
    {
        QFETCH(const QByteArray, bytes);
        const RawServer server(answer::bytesThenEnd(bytes));

        const auto reply = ask(aGet(server.url()));

        QVERIFY(reply);
        QCOMPARE(reply->body, QByteArray(kGreatest, 'x'));
    }

    void aGreaterReplyIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray body(kGreatest + 1, 'x');
        const auto zeros = qCompress(QByteArray(64 * kGreatest, '\0')).sliced(4);
        QTest::newRow("declared, and not one byte of it sent")
            << QByteArray("HTTP/1.1 200 OK\r\ncontent-length: 1048577\r\n\r\n");
        QTest::newRow("declared beyond all bounds")
            << QByteArray("HTTP/1.1 200 OK\r\ncontent-length: 99999999999999999999999\r\n\r\n");
        QTest::newRow("chunked") << chunked(body);
        QTest::newRow("a chunk that never ends")
            << "HTTP/1.1 200 OK\r\ntransfer-encoding: chunked\r\n\r\n7fffffffffffffff\r\n" + body;
        QTest::newRow("without a length") << withoutLength(body);
        QTest::newRow("nine times the limit") << withoutLength(QByteArray(9 * kGreatest, 'x'));
        QTest::newRow("compressed for the way")
            << chunked(zeros).replace("transfer-encoding: chunked", "transfer-encoding: deflate, chunked");
        QTest::newRow("the head") << "HTTP/1.1 200 OK\r\n" + QByteArray("a: b\r\n").repeated(200'000);
    }

    void aGreaterReplyIsRefused()
    {
        QFETCH(const QByteArray, bytes);
        // The server keeps the connection: the end is the client's.
        const RawServer server(answer::bytesThenSilence(bytes));

        QElapsedTimer time;
        time.start();

        const auto reply = ask(aGet(server.url()), {.limit = 10s, .authorities = {}});

        QVERIFY(time.elapsed() < 5000);
        QCOMPARE(reply.error().kind, Failure::Kind::badServerResponse);
        QCOMPARE(reply.error().description, u"The server's answer was too large."_s);
    }

    void aDeclaredLengthSmallerThanTheBodyEndsIt()
    {
        const RawServer server(
            answer::bytesThenEnd("HTTP/1.1 200 OK\r\ncontent-length: 2\r\n\r\n{}" + QByteArray(99, 'x')));

        QCOMPARE(ask(aGet(server.url()))->body, "{}");
    }

    void aCompressedBodyIsNotUnpacked()
    {
        const auto packed = qCompress(QByteArray(64 * kGreatest, '\0')).sliced(4);
        const RawServer server(answer::reply(200, packed, "content-encoding: deflate\r\n"));

        QCOMPARE(ask(aGet(server.url()))->body, packed);
    }
};

QTEST_GUILESS_MAIN(CurlTransferLimitsTest)

#include "CurlTransferLimitsTest.moc"
