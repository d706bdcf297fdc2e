#include "simulation/Life.h"

#include <QTest>

using namespace orvella::simulation;
using namespace Qt::Literals::StringLiterals;

namespace {

struct Past {
    quint64 digest = 0;
    qint64 events = 0;
    QString brokenRule;
};

Past lived(quint64 seed)
{
    Life life(seed, Journal::Telling::whenBroken);
    life.live(std::chrono::days(2));
    life.end();
    return {life.journal().digest(), life.journal().events(), life.journal().brokenRule()};
}

} // namespace

class LifeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSameSeedGivesTheSameLife()
    {
        const auto first = lived(4711);
        const auto second = lived(4711);

        QCOMPARE(first.brokenRule, QString());
        QCOMPARE(second.digest, first.digest);
        QCOMPARE(second.events, first.events);
    }

    void anotherSeedGivesAnotherLife() { QVERIFY(lived(4711).digest != lived(4712).digest); }

    /// Rules that are never put to the test hold easily.
    void livesSeeAllThatTheyAreFor_data()
    {
        QTest::addColumn<QString>("event");
        for (const auto& event : {u"/api/mac/device/register"_s, u"/api/mac/preferences"_s, u"/api/mac/wallet"_s,
                 u"/api/mac/ads/session/start"_s, u"/api/mac/ads/session/complete"_s, u"/api/mac/ads/click"_s,
                 u"credited"_s, u"viewer: dismisses"_s, u"viewer: closes the window"_s, u"viewer: asks why"_s,
                 u"viewer: clicks the item"_s, u"viewer: opens the ad from the menu"_s, u"viewer: asks for the ad"_s,
                 u"viewer: starts the program again"_s, u"viewer: toggles anonymousMode"_s,
                 u"viewer: sets appSignalConsent to 1"_s, u"viewer: sets the login item"_s,
                 u"viewer: asks for a report"_s, u"machine: sleeps"_s, u"machine: hangs"_s, u"settings: meddled with"_s,
                 u"program: starts"_s, u"keyring: mood 2"_s, u"keyring: mood 4"_s, u"network: weather 2"_s, u": 302"_s,
                 u": 500"_s, u": -1"_s, u"opened by itself"_s, u"to be asked again"_s})
            QTest::addRow("%s", qPrintable(event)) << event;
    }

    void livesSeeAllThatTheyAreFor()
    {
        QFETCH(const QString, event);

        QVERIFY2(std::ranges::any_of(m_events, [&](const QString& seen) { return seen.contains(event); }),
            qPrintable(event));
    }

    void initTestCase()
    {
        for (quint64 seed = 1; seed <= 20; ++seed) {
            Life life(seed, Journal::Telling::whenBroken);
            life.journal().heard = [this](const QString& seen) { m_events.insert(seen); };
            life.live(std::chrono::days(2));
            life.end();
            QCOMPARE(life.journal().brokenRule(), QString());
        }
    }

private:
    QSet<QString> m_events;
};

QTEST_MAIN(LifeTest)
#include "LifeTest.moc"
