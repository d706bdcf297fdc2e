#include "sandbox/support/ServiceUnderTest.h"

#include <QTest>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The bytes of a request with one more header.
QByteArray with(QByteArray request, const QByteArray& header)
{
    return request.replace("\r\ncontent-type", "\r\n" + header + "\r\ncontent-type");
}

} // namespace

class PagesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everyPageForbidsScriptsFramesAndForeignContent()
    {
        for (const auto& path : {u"/viewer"_s, u"/activate"_s, u"/advertiser/northwind-coffee"_s, u"/nowhere"_s}) {
            const auto answer = m_service.get(path);
            QVERIFY(
                answer.headers.value("content-security-policy").startsWith("default-src 'none'; style-src 'self';"));
            QVERIFY(answer.headers.value("content-security-policy").contains("frame-ancestors 'none'"));
            QCOMPARE(answer.headers.value("x-frame-options"), "DENY");
            QCOMPARE(answer.headers.value("x-content-type-options"), "nosniff");
            QCOMPARE(answer.headers.value("referrer-policy"), "same-origin");
            QCOMPARE(answer.headers.value("cache-control"), "no-store");
            QCOMPARE(answer.headers.value("content-type"), "text/html; charset=utf-8");
            QVERIFY(!answer.body.contains("<script"));
            QVERIFY(!answer.body.contains(" style="));
        }
    }

    void theRootLeadsToTheDashboard()
    {
        const auto answer = m_service.get(u"/"_s);

        QCOMPARE(answer.status, 303);
        QCOMPARE(answer.headers.value("location"), "/viewer");
    }

    void whatThePagesNeedIsServed()
    {
        QCOMPARE(m_service.get(u"/style.css"_s).headers.value("content-type"), "text/css; charset=utf-8");
        QCOMPARE(m_service.get(u"/mark.svg"_s).headers.value("content-type"), "image/svg+xml");
    }

    void anUnknownPageIsNotFound()
    {
        for (const auto& path : {u"/viewer/"_s, u"/advertiser/"_s, u"/advertiser/nobody"_s, u"/campaigns.json"_s})
            QCOMPARE(m_service.get(path).status, 404);
    }

    void aPageTakesOnlyItsOwnMethods()
    {
        const auto page = m_service.send(m_service.request("POST", u"/viewer"_s, {}, {}));
        const auto form = m_service.send(m_service.request("PUT", u"/activate"_s, {}, {}));

        QCOMPARE(page.status, 405);
        QCOMPARE(page.headers.value("allow"), "GET");
        QCOMPARE(form.status, 405);
        QCOMPARE(form.headers.value("allow"), "GET, POST");
    }

    void aCodeFromTheAddressIsEscaped()
    {
        const auto answer = m_service.get(u"/activate?code=%22%3E%3Cscript%3E%26"_s);

        QVERIFY(answer.body.contains("value=\"&quot;&gt;&lt;script&gt;&amp;\""));
        QVERIFY(!answer.body.contains("<script"));
    }

    void whatADeviceIsCalledIsEscaped()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice(u"<b onclick='x'>\"&\u202E</b>"_s);
        QCOMPARE(service.submit(u"/activate"_s, "code=" + device.code.toLatin1()).status, 303);

        const auto answer = service.get(u"/viewer?linked="_s + device.deviceId);

        QVERIFY(!answer.body.contains("<b onclick"));
        QCOMPARE(answer.body.count(u"&lt;b onclick=&#39;x&#39;&gt;&quot;&amp;\uFFFD&lt;/b&gt;"_s.toUtf8()), 2);
    }

    void theNoticeAboutALinkedDeviceNeedsALinkedDevice()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice(u"stranger"_s);

        QVERIFY(!service.get(u"/viewer?linked="_s + device.deviceId).body.contains("stranger"));
    }

    void aFormFromAnotherSiteIsRefused_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<bool>("isTaken");

        const auto port = QByteArray::number(m_service.port());
        QTest::newRow("cross-site") << QByteArray("sec-fetch-site: cross-site") << false;
        QTest::newRow("same site, another port") << QByteArray("sec-fetch-site: same-site") << false;
        QTest::newRow("same origin") << QByteArray("sec-fetch-site: same-origin") << true;
        QTest::newRow("typed by the viewer") << QByteArray("sec-fetch-site: none") << true;
        QTest::newRow("foreign origin") << QByteArray("origin: http://example.com") << false;
        QTest::newRow("no origin to tell") << QByteArray("origin: null") << false;
        QTest::newRow("another port") << QByteArray("origin: http://127.0.0.1:1") << false;
        QTest::newRow("own origin") << "origin: http://127.0.0.1:" + port << true;
        QTest::newRow("own origin, yet cross-site")
            << "origin: http://127.0.0.1:" + port + "\r\nsec-fetch-site: cross-site" << false;
    }

    void aFormFromAnotherSiteIsRefused()
    {
        QFETCH(QByteArray, header);
        QFETCH(bool, isTaken);
        const auto device = m_service.registerDevice();
        const auto form = m_service.request(
            "POST", u"/activate"_s, {}, "code=" + device.code.toLatin1(), "application/x-www-form-urlencoded");

        const auto answer = m_service.send(with(form, header));

        QCOMPARE(answer.status, isTaken ? 303 : 403);
        const auto wallet = m_service.get(u"/api/mac/wallet"_s, device.token).data();
        QCOMPARE(wallet.at(u"linked"_s), Json(isTaken));
    }

    void aFormThatIsNoFormIsRefused()
    {
        const auto answer = m_service.send(m_service.request("POST", u"/activate"_s, {}, "{}"));

        QCOMPARE(answer.status, 415);
    }

    void aCodeThatDoesNotLinkIsToldPlainly()
    {
        ServiceUnderTest service;
        const auto used = service.registerDevice();
        const auto expired = service.registerDevice();
        QCOMPARE(service.submit(u"/activate"_s, "code=" + used.code.toLatin1()).status, 303);
        service.clock.advance(24h);

        const auto unknownAnswer = service.submit(u"/activate"_s, "code=ABCD-2345");
        const auto usedAnswer = service.submit(u"/activate"_s, "code=" + used.code.toLatin1());
        const auto expiredAnswer = service.submit(u"/activate"_s, "code=" + expired.code.toLatin1());
        const auto emptyAnswer = service.submit(u"/activate"_s, {});

        QCOMPARE(unknownAnswer.status, 404);
        QVERIFY(unknownAnswer.body.contains("No device has this code."));
        QCOMPARE(usedAnswer.status, 409);
        QVERIFY(usedAnswer.body.contains("This code has been used"));
        QCOMPARE(expiredAnswer.status, 410);
        QVERIFY(expiredAnswer.body.contains("This code has expired"));
        QCOMPARE(emptyAnswer.status, 404);
    }

    void aCodeMayBeTypedWithBlanksAndInSmallLetters()
    {
        const auto device = m_service.registerDevice();
        const auto typed = "+" + device.code.toLower().toLatin1().replace('-', "%20") + "+";

        QCOMPARE(m_service.submit(u"/activate"_s, "code=" + typed).status, 303);
    }

private:
    ServiceUnderTest m_service;
};

QTEST_GUILESS_MAIN(PagesTest)

#include "PagesTest.moc"
