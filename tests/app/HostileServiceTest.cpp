#include "api/CurlTransport.h"
#include "api/Endpoints.h"
#include "app/Diagnosis.h"
#include "app/RecentErrors.h"
#include "app/StatusBarController.h"
#include "support/FakePlatform.h"
#include "support/Outcome.h"
#include "support/RawAnswers.h"
#include "support/RawService.h"
#include "support/Samples.h"
#include "support/WaitFor.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const QString kEvil = u"<b>Evil</b>"_s;

AvailableAd evilAd()
{
    auto ad = anAd();
    for (auto* const text :
        {&ad.campaignId, &ad.creativeId, &ad.advertiserName, &ad.body, &ad.ctaLabel, &ad.targetUrl, &ad.language})
        *text = kEvil;
    ad.matchedCategories = {kEvil};
    return ad;
}

} // namespace

/// A service that writes markup into everything, and what of it gets out of the program's own windows.
class HostileServiceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void nothingItSaysReachesTheBarOrTheReportOfAFault()
    {
        RawService service;
        service.answer(endpoints::kRegister, DeviceRegistration {kEvil, Secret("<b>Evil</b>"), kEvil, kEvil, 60});
        service.answer(endpoints::kAdsAvailable, AvailabilityResponse {true, 60, evilAd()});
        FakePlatform platform;
        platform.settings.values.insert_or_assign(u"apiBaseURL"_s, service.server().url().toString());
        CurlTransport transport;
        StatusBarController controller(platform.lend(), transport);
        RecentErrors errors(controller.state(), platform.clock);
        QVERIFY(waitFor([&] { return controller.state().statusTitle() == kAdTitle; }));
        QVERIFY(waitFor([&] { return platform.clock.sleepers() == 1; }));

        service.breakDown(endpoints::kAdsAvailable,
            answer::reply(200, R"({"ok":true,"data":{"<b>Evil</b>":1,"available":"<b>Evil</b>"}})"));
        platform.clock.advance(60s);
        QVERIFY(waitFor([&] { return !errors.entries().empty(); }));
        const Outcome report(Diagnosis::ofRunning(platform.lend(), errors));
        QVERIFY(waitFor([&] { return report.isThere(); }));

        QVERIFY((*report).contains(u"data.available is not true or false"_s));
        QVERIFY2(!(*report).contains(u"Evil"_s), qPrintable(*report));
        QVERIFY(platform.statusItem.appearances.size() > 1);
        for (const auto& appearance : platform.statusItem.appearances) {
            const auto shown = appearance.text + appearance.description;
            QVERIFY2(!shown.contains(u"Evil"_s) && !shown.contains(u'<'), qPrintable(shown));
        }
    }
};

QTEST_MAIN(HostileServiceTest)

#include "HostileServiceTest.moc"
