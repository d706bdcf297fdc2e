#include "base/Published.h"
#include "support/FakeClock.h"

#include <QSignalSpy>
#include <QTest>

using namespace orvella;

namespace {

class Counter final : public Observable {
public:
    Published<int> value {this, 1};
};

} // namespace

class PublishedTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void observersAreToldBeforeTheAssignment()
    {
        Counter counter;
        QList<int> seen;
        connect(&counter, &Observable::willChange, &counter, [&] { seen.append(counter.value()); });

        counter.value = 2;

        QCOMPARE(seen, QList<int> {1});
        QCOMPARE(counter.value(), 2);
    }

    void observersAreToldOfAnEqualValueToo()
    {
        Counter counter;
        const QSignalSpy spy(&counter, &Observable::willChange);

        counter.value = 1;

        QCOMPARE(spy.count(), 1);
    }

    void aSubscriptionReceivesTheCurrentValueAndThenEveryLaterOneInOrder()
    {
        Counter counter;
        QList<int> received;

        counter.value.subscribe(&counter, [&](int value) { received.append(value); });
        counter.value = 2;
        counter.value = 2;
        counter.value = 3;

        QVERIFY(received.isEmpty());
        settle();
        QCOMPARE(received, (QList<int> {1, 2, 2, 3}));
    }

    void aSubscriptionEndsWithItsContext()
    {
        Counter counter;
        QList<int> received;
        auto context = std::make_unique<QObject>();
        counter.value.subscribe(context.get(), [&](int value) { received.append(value); });

        context.reset();
        counter.value = 2;
        settle();

        QVERIFY(received.isEmpty());
    }
};

QTEST_GUILESS_MAIN(PublishedTest)

#include "PublishedTest.moc"
