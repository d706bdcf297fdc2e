#include "app/RecentErrors.h"

#include "support/FakePlatform.h"
#include "support/FakeTransport.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;
    AppState state {platform.lend(), transport};
    RecentErrors errors {state, platform.clock};

    void fail(const QString& description)
    {
        state.lastError = description;
        settle();
    }

    void recover()
    {
        state.lastError = std::nullopt;
        settle();
    }
};

} // namespace

class RecentErrorsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutAnErrorThereIsNoEntry()
    {
        World world;

        world.recover();

        QVERIFY(world.errors.entries().empty());
    }

    void anErrorThatIsOverIsKept()
    {
        World world;
        const auto at = world.platform.clock.now();

        world.fail(u"No network."_s);
        world.platform.clock.advance(90s);
        world.recover();

        QCOMPARE(world.errors.entries().size(), 1U);
        QCOMPARE(world.errors.entries().front().description, u"No network."_s);
        QCOMPARE(world.errors.entries().front().times, 1);
        QVERIFY(world.errors.entries().front().at == at);
    }

    void theSameErrorAgainIsCountedAndNotRepeated()
    {
        World world;
        world.fail(u"No network."_s);
        world.recover();
        world.platform.clock.advance(300s);
        const auto at = world.platform.clock.now();

        world.fail(u"No network."_s);

        QCOMPARE(world.errors.entries().size(), 1U);
        QCOMPARE(world.errors.entries().front().times, 2);
        QVERIFY(world.errors.entries().front().at == at);
    }

    void onlyTheLastFiveAreKeptTheOldestFirst()
    {
        World world;

        for (const auto* const text : {"1", "2", "3", "4", "5", "6"})
            world.fail(QString::fromLatin1(text));

        QCOMPARE(world.errors.entries().size(), 5U);
        QCOMPARE(world.errors.entries().front().description, u"2"_s);
        QCOMPARE(world.errors.entries().back().description, u"6"_s);
    }
};

QTEST_MAIN(RecentErrorsTest)

#include "RecentErrorsTest.moc"
