#include "api/CurlTransport.h"
#include "api/Endpoints.h"
#include "app/StatusBarController.h"
#include "support/FakePlatform.h"
#include "support/RawAnswers.h"
#include "support/RawService.h"
#include "support/Samples.h"
#include "support/WaitFor.h"
#include "ui/ad/CountdownGauge.h"

#include <QApplication>
#include <QTest>

#include <algorithm>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto kRequired = 15s;
constexpr auto kGracePeriod = 3s;
const QByteArray kHalf = "HTTP/1.1 200 OK\r\ncontent-length: 4096\r\n\r\n{\"ok\":true,\"data\":{";

/// The wallet once the ad of the samples has been paid, here or on another of the viewer's devices.
WalletResponse creditedWallet()
{
    auto response = aWallet();
    response.wallet.availableCents += anAd().viewerEarnCents;
    response.wallet.lifetimeCents += anAd().viewerEarnCents;
    return response;
}

/// The program with an ad on offer, over a real transport.
struct World {
    RawService service;
    FakePlatform platform;
    // Short: of the faults some last as long as it lets them.
    CurlTransport transport {{.limit = 1500ms, .authorities = {}}};
    std::unique_ptr<StatusBarController> controller;
    QStringList failures;

    World()
    {
        platform.secrets.put(Keychain::kService, "token");
        platform.settings.values.insert_or_assign(u"apiBaseURL"_s, service.server().url().toString());
        service.answer(endpoints::kAdsAvailable, anOffer());
        controller = std::make_unique<StatusBarController>(platform.lend(), transport);
        QObject::connect(controller.get(), &StatusBarController::adFailed, controller.get(),
            [this](const Failure& failure) { failures.append(failure.description); });
        const auto isPolling = [this] { return state().availableAd() && platform.clock.sleepers() == 1; };
        if (!waitFor(isPolling))
            qFatal("The program does not poll.");
        service.forgetRequests();
    }

    [[nodiscard]] AppState& state() const { return controller->state(); }

    void click() const { platform.statusItem.handlers.clicked(); }

    /// Lets the seconds run down once the session is there.
    void watch()
    {
        const auto isCounting = [this] {
            platform.clock.advance(1s);
            const auto windows = QApplication::topLevelWidgets();
            return std::ranges::any_of(windows, [](const QWidget* window) {
                const auto* const gauge = window->findChild<CountdownGauge*>();
                return gauge && gauge->remaining() < kRequired.count();
            });
        };
        QVERIFY(waitFor(isCounting));
        platform.clock.advance(kRequired);
    }

    void waitForCredit() const
    {
        QVERIFY(waitFor([this] { return state().availableCents() == creditedWallet().wallet.availableCents; }));
    }
};

} // namespace

Q_DECLARE_METATYPE(RawServer::Answer)

/// What becomes of the viewer's cents when the service fails in the middle of an ad, over real connections.
class AdFaultsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aSessionThatCannotStartEarnsNothingAndTheWalletIsAskedAllTheSame_data() { addFaults(); }

    void aSessionThatCannotStartEarnsNothingAndTheWalletIsAskedAllTheSame()
    {
        QFETCH(const RawServer::Answer, answer);
        QFETCH(const QString, sentence);
        World world;
        world.service.breakDown(endpoints::kSessionStart, answer);
        world.service.answer(endpoints::kWallet, creditedWallet());

        world.click();
        world.waitForCredit();

        QCOMPARE(world.failures, QStringList {sentence});
        QCOMPARE(world.service.paths(), (QStringList {endpoints::kSessionStart, endpoints::kWallet}));
        checkThatTheProgramGoesOn(world);
    }

    void aCompletionWhoseAnswerIsLostIsInTheWallet_data() { addFaults(); }

    void aCompletionWhoseAnswerIsLostIsInTheWallet()
    {
        QFETCH(const RawServer::Answer, answer);
        QFETCH(const QString, sentence);
        World world;
        QByteArray received;
        world.service.breakDown(endpoints::kSessionComplete, [&](RawConnection& connection, const RawRequest& request) {
            received = request.body;
            world.service.answer(endpoints::kWallet, creditedWallet());
            answer(connection, request);
        });

        world.click();
        world.watch();
        world.waitForCredit();

        QCOMPARE(received, R"({"sessionId":"session-1"})");
        QCOMPARE(world.failures, QStringList {sentence});
        QCOMPARE(world.service.paths(),
            (QStringList {endpoints::kSessionStart, endpoints::kSessionComplete, endpoints::kWallet}));
        QCOMPARE(world.state().lifetimeCents(), creditedWallet().wallet.lifetimeCents);
        checkThatTheProgramGoesOn(world);
    }

private:
    static void addFaults()
    {
        const auto lost = u"The connection to the server was lost."_s;
        const auto notJson = u"The service's answer could not be read: it is not JSON."_s;
        QTest::addColumn<RawServer::Answer>("answer");
        QTest::addColumn<QString>("sentence");
        QTest::newRow("reset before the answer") << answer::bytesThenReset({}) << lost;
        QTest::newRow("closed before the answer") << answer::bytesThenEnd({}) << lost;
        QTest::newRow("cut in the head") << answer::bytesThenEnd("HTTP/1.1 200 OK\r\ncont") << lost;
        QTest::newRow("reset in the body") << answer::bytesThenReset(kHalf) << lost;
        QTest::newRow("closed in the body") << answer::bytesThenEnd(kHalf) << lost;
        QTest::newRow("silence") << answer::silence() << u"The request timed out."_s;
        QTest::newRow("no content") << answer::bytesThenEnd("HTTP/1.1 204 No Content\r\n\r\n") << notJson;
        QTest::newRow("half the text") << answer::reply(200, "{\"ok\":true,\"data\":{") << notJson;
        QTest::newRow("a page")
            << answer::reply(200, "<html>Log in</html>")
            << u"The network answers in place of the service. You may have to sign in to it first."_s;
        QTest::newRow("2 MiB") << answer::reply(200, QByteArray(2'097'152, ' '))
                               << u"The server's answer was too large."_s;
        QTest::newRow("500") << answer::reply(500) << u"The service could not answer the request."_s;
    }

    static void checkThatTheProgramGoesOn(World& world)
    {
        // Nothing is known of what this ad has earned; the wallet's answer has cleared the line for errors.
        QCOMPARE(world.state().lastEarnedCents(), std::nullopt);
        QCOMPARE(world.state().lastError(), std::nullopt);
        QCOMPARE(world.state().availableAd(), std::nullopt);
        QCOMPARE(world.state().statusTitle(), world.platform.locale.usDollars(world.state().availableCents()));
        QVERIFY(world.state().isSuppressed(anAd()));

        world.platform.clock.advance(kGracePeriod);
        QCOMPARE(world.platform.clock.sleepers(), 1U);
        QVERIFY(std::ranges::none_of(QApplication::topLevelWidgets(), &QWidget::isVisible));

        world.service.recover();
        world.service.forgetRequests();
        auto another = anOffer();
        another.ad->creativeId = u"creative-2"_s;
        world.service.answer(endpoints::kAdsAvailable, another);
        world.platform.clock.advance(300s);
        QVERIFY(waitFor([&world] { return world.state().statusTitle() == kAdTitle; }));
    }
};

QTEST_MAIN(AdFaultsTest)

#include "AdFaultsTest.moc"
