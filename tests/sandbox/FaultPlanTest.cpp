#include "sandbox/FaultPlan.h"

#include <QTest>

using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class FaultPlanTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void nothingFailsAtFirst()
    {
        const FaultPlan plan;

        for (const auto& route : kCallRoutes)
            QVERIFY(plan.of(route.call) == Fault());
    }

    void aFaultConcernsOnlyItsCall()
    {
        FaultPlan plan;

        QVERIFY(plan.add(u"wallet=reset"_s));

        QVERIFY(plan.of(Call::wallet).kind == Fault::Kind::reset);
        QVERIFY(plan.of(Call::heartbeat) == Fault());
    }

    void severalFaultsAreSeparatedByCommas()
    {
        FaultPlan plan;

        QVERIFY(plan.add(u"heartbeat=garbage,start=truncated,click=status:503"_s));

        QVERIFY(plan.of(Call::heartbeat).kind == Fault::Kind::garbage);
        QVERIFY(plan.of(Call::start).kind == Fault::Kind::truncated);
        QVERIFY(plan.of(Call::click).kind == Fault::Kind::status);
        QCOMPARE(plan.of(Call::click).status, 503);
    }

    void allStandsForEveryCall()
    {
        FaultPlan plan;

        QVERIFY(plan.add(u"all=delay:250"_s));

        for (const auto& route : kCallRoutes)
            QVERIFY(plan.of(route.call).delay == 250ms);
    }

    void aDelayGoesWithAnotherFaultAndOfTwoOthersTheLaterCounts()
    {
        FaultPlan plan;

        QVERIFY(plan.add(u"all=delay:250"_s));
        QVERIFY(plan.add(u"wallet=reset,wallet=status:500"_s));

        QVERIFY(plan.of(Call::wallet) == (Fault {Fault::Kind::status, 500, 250ms}));
    }

    void whatIsMalformedIsToldInOneSentence_data()
    {
        QTest::addColumn<QString>("specification");
        QTest::addColumn<QString>("expected");

        const auto row = [](const QString& specification, const QString& expected) {
            QTest::newRow(qPrintable(specification)) << specification << expected;
        };
        row(u""_s, u"\"\" is not CALL=KIND[:ARG]"_s);
        row(u"wallet"_s, u"\"wallet\" is not CALL=KIND[:ARG]"_s);
        row(u"wallet=reset,"_s, u"\"\" is not CALL=KIND[:ARG]"_s);
        row(u"purse=reset"_s, u"there is no call \"purse\""_s);
        row(u"wallet=explode"_s, u"there is no fault \"explode\""_s);
        row(u"wallet=reset:1"_s, u"reset takes no argument"_s);
        row(u"wallet=delay"_s, u"delay needs a number of milliseconds up to 600000"_s);
        row(u"wallet=delay:soon"_s, u"delay needs a number of milliseconds up to 600000"_s);
        row(u"wallet=delay:-1"_s, u"delay needs a number of milliseconds up to 600000"_s);
        row(u"wallet=delay:600001"_s, u"delay needs a number of milliseconds up to 600000"_s);
        row(u"wallet=status:199"_s, u"status needs a code from 200 to 599"_s);
        row(u"wallet=status:600"_s, u"status needs a code from 200 to 599"_s);
    }

    void whatIsMalformedIsToldInOneSentence()
    {
        QFETCH(QString, specification);
        QFETCH(QString, expected);
        FaultPlan plan;

        const auto added = plan.add(specification);

        QVERIFY(!added);
        QCOMPARE(added.error(), expected);
    }
};

QTEST_GUILESS_MAIN(FaultPlanTest)

#include "FaultPlanTest.moc"
