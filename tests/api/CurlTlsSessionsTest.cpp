#include "api/CurlTransfer.h"
#include "support/TestAuthority.h"
#include "support/TransportCall.h"

#include <QProcess>
#include <QTest>

#include <future>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

/// OpenSSL's own server; what it answers says whether a connection goes on with the session of an earlier one.
class SessionServer final {
public:
    SessionServer(const TestAuthority& authority, const QString& protocol)
    {
        const auto [certificate, key] = authority.filesOfServer(u"IP:127.0.0.1"_s);
        m_process.start(u"openssl"_s,
            {u"s_server"_s, u"-accept"_s, u"127.0.0.1:0"_s, u"-www"_s, u"-cert"_s, certificate, u"-key"_s, key,
                protocol});
        const QByteArray said = "ACCEPT 127.0.0.1:";
        QByteArray line;
        while (!line.startsWith(said)) {
            if (!m_process.canReadLine() && !m_process.waitForReadyRead())
                qFatal("The server did not start: %s", m_process.readAllStandardError().constData());
            line = m_process.readLine();
        }
        m_url = u"https://127.0.0.1:"_s + QString::fromLatin1(line.mid(said.size()).trimmed());
    }

    SessionServer(const SessionServer&) = delete;
    SessionServer& operator=(const SessionServer&) = delete;

    ~SessionServer()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    [[nodiscard]] QUrl url() const { return m_url; }

private:
    QProcess m_process;
    QUrl m_url;
};

enum class Session { fresh, resumed, none };

Session sessionOf(const Result<HttpReply>& reply)
{
    if (!reply || reply->status != 200)
        return Session::none;
    const auto isFresh = reply->body.contains("\nNew, TLSv1.");
    const auto isResumed = reply->body.contains("\nReused, TLSv1.");
    return isFresh == isResumed ? Session::none : isFresh ? Session::fresh : Session::resumed;
}

} // namespace

/// What one connection leaves to the next.
class CurlTlsSessionsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aThreadGoesOnWithItsSessionsAndNoOtherDoes_data()
    {
        QTest::addColumn<QString>("protocol");
        QTest::newRow("TLS 1.3") << u"-tls1_3"_s;
        QTest::newRow("TLS 1.2") << u"-tls1_2"_s;
    }

    void aThreadGoesOnWithItsSessionsAndNoOtherDoes()
    {
        QFETCH(const QString, protocol);
        const SessionServer server(m_authority, protocol);

        for (int thread = 0; thread < 2; ++thread) {
            auto replies = std::async(std::launch::async,
                [&] { return std::pair {get(server, m_authority.file()), get(server, m_authority.file())}; });
            const auto [first, second] = replies.get();
            QCOMPARE(sessionOf(first), Session::fresh);
            QCOMPARE(sessionOf(second), Session::resumed);
        }
    }

    void aSessionIsNotGoneOnWithUnderAnotherTrust()
    {
        const SessionServer server(m_authority, u"-tls1_3"_s);
        const TestAuthority other;
        QCOMPARE(sessionOf(get(server, m_authority.file())), Session::fresh);

        const auto reply = get(server, other.file());

        QVERIFY(!reply);
        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The server's certificate is not trusted."_s}));
        QCOMPARE(sessionOf(get(server, m_authority.file())), Session::resumed);
    }

private:
    static Result<HttpReply> get(const SessionServer& server, const QByteArray& authorities)
    {
        return CurlTransfer({.authorities = authorities}).perform(aGet(server.url()));
    }

    TestAuthority m_authority;
};

QTEST_GUILESS_MAIN(CurlTlsSessionsTest)

#include "CurlTlsSessionsTest.moc"
