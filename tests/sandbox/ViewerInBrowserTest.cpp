#include "sandbox/support/Browser.h"
#include "sandbox/support/ServiceUnderTest.h"

#include <QTest>

#include <optional>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class ViewerInBrowserTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { m_browser.emplace(Browser::Scheme::light); }

    void cleanupTestCase() { m_browser.reset(); }

    void aViewerEntersTheCodeAndSeesWhatTheDeviceHasEarned()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice(u"Ada’s desk"_s);
        service.view(device.token);
        const auto session = service.start(device.token);
        std::ignore =
            service.post(u"/api/mac/ads/click"_s, {{u"sessionId"_s, text(session, u"sessionId"_s)}}, device.token);

        m_browser->open(service.service().origin());
        QCOMPARE(m_browser->address(), service.service().origin() + u"/viewer"_s);
        QCOMPARE(m_browser->text(u"#available"_s), u"$0.00"_s);
        m_browser->follow(u"a.button"_s);
        m_browser->type(u"#code"_s, device.code.toLower());
        m_browser->follow(u"button"_s);

        QCOMPARE(m_browser->address(), service.service().origin() + u"/viewer?linked="_s + device.deviceId);
        QCOMPARE(m_browser->text(u"#linked"_s), u"Ada’s desk is linked. What it has earned is available now."_s);
        QCOMPARE(m_browser->text(u"#earned"_s), u"$0.021"_s);
        QCOMPARE(m_browser->text(u"#available"_s), u"$0.021"_s);
        QCOMPARE(m_browser->text(u"#pending"_s), u"$0.00"_s);
        QCOMPARE(m_browser->text(u"#paid"_s), u"$0.00"_s);
        QCOMPARE(m_browser->text(u"#lifetime"_s), u"$0.021"_s);
        QCOMPARE(m_browser->text(u".devices strong"_s), u"Ada’s desk"_s);
        QCOMPARE(m_browser->count(u"#views tbody tr"_s), 2U);
        QCOMPARE(m_browser->text(u"#views tbody tr:last-child"_s).simplified(),
            u"Northwind Coffee 2026-05-01 12:00 UTC, Ada’s desk 10 s $0.021 Paid"_s);
        QCOMPARE(m_browser->text(u"#views tbody tr:first-child"_s).simplified(),
            u"Harbour Museum 2026-05-01 12:00 UTC, Ada’s desk, page visited 15 s – Watching"_s);
    }

    void theVerificationAddressCarriesTheCode()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice();

        m_browser->open(service.lines.last().section(u' ', -1));

        QCOMPARE(m_browser->property(u"#code"_s, u"value"_s), device.code);
        m_browser->follow(u"button"_s);
        QCOMPARE(m_browser->count(u"#linked"_s), 1U);
        const auto wallet = service.get(u"/api/mac/wallet"_s, device.token).data();
        QVERIFY(wallet.at(u"linked"_s) == Json(true));
    }

    void aCodeThatDoesNotLinkIsToldAndStaysInTheForm()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice();
        const auto expired = service.registerDevice();

        m_browser->open(service.service().origin() + u"/activate"_s);
        m_browser->type(u"#code"_s, u"ABCD-2345"_s);
        m_browser->follow(u"button"_s);
        QCOMPARE(
            m_browser->text(u"#problem"_s), u"No device has this code. Compare it with the one that Orvella shows."_s);
        QCOMPARE(m_browser->property(u"#code"_s, u"value"_s), u"ABCD-2345"_s);

        m_browser->type(u"#code"_s, device.code);
        m_browser->follow(u"button"_s);
        QCOMPARE(m_browser->count(u"#linked"_s), 1U);
        m_browser->open(service.service().origin() + u"/activate?code="_s + device.code);
        m_browser->follow(u"button"_s);
        QCOMPARE(m_browser->text(u"#problem"_s), u"This code has been used: its device is linked already."_s);

        service.clock.advance(24h);
        m_browser->type(u"#code"_s, expired.code);
        m_browser->follow(u"button"_s);
        QCOMPARE(m_browser->text(u"#problem"_s), u"This code has expired: it was valid for 24 hours."_s);
    }

    void aFormOnAnotherSiteLinksNothing()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice();

        m_browser->open(u"data:text/html,<form method=post action='%1/activate'><input name=code value='%2'>"
                        "<button>Win a prize</button></form>"_s.arg(service.service().origin(), device.code));
        m_browser->follow(u"button"_s);

        QCOMPARE(m_browser->text(u"h1"_s), u"The form came from another site"_s);
        const auto wallet = service.get(u"/api/mac/wallet"_s, device.token).data();
        QVERIFY(wallet.at(u"linked"_s) == Json(false));
    }

    void whatADeviceIsCalledIsShownAsItIs()
    {
        ServiceUnderTest service;
        const auto name = u"<img src=x onerror=\"document.title='bad'\"> & 'co'"_s;
        const auto device = service.registerDevice(name);
        QCOMPARE(service.submit(u"/activate"_s, "code=" + device.code.toLatin1()).status, 303);

        m_browser->open(service.service().origin() + u"/viewer?linked="_s + device.deviceId);

        QCOMPARE(m_browser->text(u".devices strong"_s), name);
        QVERIFY(m_browser->text(u"#linked"_s).startsWith(name));
        QCOMPARE(m_browser->count(u"main img"_s), 0U);
        QCOMPARE(m_browser->evaluate(u"document.title"_s), u"Dashboard – Orvella"_s);
    }

    void aClickLeadsToTheAdvertiser()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice();
        const auto session = service.start(device.token);
        const auto data =
            service.post(u"/api/mac/ads/click"_s, {{u"sessionId"_s, text(session, u"sessionId"_s)}}, device.token)
                .data();

        m_browser->open(text(data, u"targetUrl"_s));

        QCOMPARE(m_browser->text(u".advertiser"_s), u"Northwind Coffee"_s);
        QCOMPARE(m_browser->text(u"h1"_s), u"Coffee that was roasted yesterday"_s);
    }

    void thePagesFollowTheColourScheme()
    {
        const ServiceUnderTest service;
        const auto address = service.service().origin() + u"/viewer"_s;
        Browser dark(Browser::Scheme::dark);

        m_browser->open(address);
        dark.open(address);

        QCOMPARE(m_browser->style(u"body"_s, u"background-color"_s), u"rgba(246, 247, 249, 1)"_s);
        QCOMPARE(m_browser->style(u"section"_s, u"background-color"_s), u"rgba(255, 255, 255, 1)"_s);
        QCOMPARE(m_browser->style(u"body"_s, u"color"_s), u"rgba(27, 30, 35, 1)"_s);
        QCOMPARE(dark.style(u"body"_s, u"background-color"_s), u"rgba(30, 32, 35, 1)"_s);
        QCOMPARE(dark.style(u"section"_s, u"background-color"_s), u"rgba(38, 40, 44, 1)"_s);
        QCOMPARE(dark.style(u"body"_s, u"color"_s), u"rgba(241, 243, 245, 1)"_s);
    }

    void nothingIsCutOffInANarrowWindow()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice(u"a-very-long-name-"_s.repeated(8));
        service.view(device.token);
        QCOMPARE(service.submit(u"/activate"_s, "code=" + device.code.toLatin1()).status, 303);
        m_browser->resize(500, 900);

        m_browser->open(service.service().origin() + u"/viewer?linked="_s + device.deviceId);

        QCOMPARE(m_browser->evaluate(u"document.documentElement.scrollWidth <= window.innerWidth"_s), u"true"_s);
        QCOMPARE(m_browser->evaluate(u"(e => e.scrollWidth <= e.clientWidth)(document.querySelector('.scroll'))"_s),
            u"true"_s);
    }

private:
    std::optional<Browser> m_browser;
};

QTEST_GUILESS_MAIN(ViewerInBrowserTest)

#include "ViewerInBrowserTest.moc"
