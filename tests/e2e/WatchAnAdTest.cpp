#include "api/CurlTransport.h"
#include "app/StatusBarController.h"
#include "core/Keychain.h"
#include "platform/SystemPlatform.h"
#include "support/FakeStatusArea.h"
#include "support/KeyringDaemon.h"
#include "support/SandboxProcess.h"
#include "support/ShownWindow.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;

/// The program as it is started, but for its process.
struct Program {
    SystemPlatform platform;
    CurlTransport transport;
    StatusBarController controller {platform.lend(), transport};

    explicit Program(const SandboxProcess& service)
        : platform(std::nullopt, {{u"apiBaseURL"_s, Json(service.address())}})
    {
    }

    [[nodiscard]] AppState& state() { return controller.state(); }
};

QWidget* panel()
{
    return shownWindow(u"adPanel"_s);
}

QByteArray keptToken()
{
    return KeyringDaemon::secretTool(
        {u"lookup"_s, u"service"_s, u"orvella.device-token"_s, u"account"_s, u"default"_s});
}

} // namespace

/// Nothing is faked here but the panel: the program's own objects, libcurl, a keyring daemon, a session bus, the
/// service in a process of its own.
class WatchAnAdTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAdIsOfferedWatchedAndPaidAndASecondStartKnowsTheDevice()
    {
        KeyringDaemon keyring;
        QVERIFY(keyring.start());
        FakeStatusArea bar;
        QVERIFY(bar.start());
        SandboxProcess service({u"--required-seconds"_s, u"2"_s});
        QVERIFY(!service.address().isEmpty());

        // The first start registers the device and keeps its token in the keyring.
        auto program = std::make_unique<Program>(service);
        QTRY_VERIFY_WITH_TIMEOUT(program->state().availableAd(), kPatienceMs);
        QVERIFY(!program->state().lastError());
        QVERIFY(program->state().activationCode());
        QVERIFY(!program->state().linked());
        QCOMPARE(program->state().availableCents(), 0);
        const auto token = keptToken();
        QVERIFY(!token.isEmpty());
        QCOMPARE(service.lines().filter(u" registered; "_s).size(), 1);
        QVERIFY(!service.lines().join(u'\n').contains(QString::fromUtf8(token)));

        // The viewer links it on the page.
        QVERIFY(service.activate(*program->state().activationCode()).contains(u"is linked"_s));

        // The bar shows the offer; a click opens it, and two seconds later it is paid.
        QTRY_COMPARE_WITH_TIMEOUT(bar.items().size(), 1, kPatienceMs);
        const auto item = bar.items().first();
        QTRY_COMPARE_WITH_TIMEOUT(bar.read(item, u"Status"_s).toString(), u"NeedsAttention"_s, kPatienceMs);
        const auto ad = *program->state().availableAd();
        const auto opened = program->platform.lend().clock.now();
        bar.call(item, u"Activate"_s, {10, 10});
        QTRY_VERIFY_WITH_TIMEOUT(panel(), kPatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(panel()->findChild<QLabel*>(u"paid"_s), kPatienceMs);
        QVERIFY(program->platform.lend().clock.now() - opened >= 2s);
        QCOMPARE(program->state().lastEarnedCents(), ad.viewerEarnCentsExact);

        // The wallet has grown by what the ad promised.
        QTRY_VERIFY_WITH_TIMEOUT(program->state().linked(), kPatienceMs);
        QCOMPARE(program->state().availableCents(), ad.viewerEarnCents);
        QCOMPARE(program->state().lifetimeCents(), ad.viewerEarnCents);
        QCOMPARE(bar.read(item, u"Status"_s).toString(), u"Active"_s);
        QVERIFY(service.page(u"/viewer"_s).contains(ad.advertiserName.toHtmlEscaped()));
        QTRY_VERIFY_WITH_TIMEOUT(!panel(), kPatienceMs);

        // A setting reaches the service.
        QVERIFY(service.page(u"/viewer"_s).contains(u"Ads open by hand"_s));
        program->state().autoOpenAds = true;
        QTRY_VERIFY_WITH_TIMEOUT(service.page(u"/viewer"_s).contains(u"Ads open by themselves"_s), kPatienceMs);

        // A second start finds the token, the money and the setting.
        program.reset();
        program = std::make_unique<Program>(service);
        QTRY_VERIFY_WITH_TIMEOUT(program->state().linked(), kPatienceMs);
        QCOMPARE(program->state().availableCents(), ad.viewerEarnCents);
        QVERIFY(!program->state().activationCode());
        QVERIFY(program->state().autoOpenAds());
        QCOMPARE(keptToken(), token);
        QCOMPARE(service.lines().filter(u" registered; "_s).size(), 1);
    }
};

QTEST_MAIN(WatchAnAdTest)

#include "WatchAnAdTest.moc"
