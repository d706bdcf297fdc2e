#include "platform/linux/foreground/IdleInhibitors.h"

#include "base/Clock.h"
#include "support/FakeServices.h"
#include "support/InhibitorAnswers.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace orvella::InhibitorAnswers;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kGnome = u"org.gnome.SessionManager"_s;
const auto kPlasma = u"org.kde.Solid.PowerManagement.PolicyAgent"_s;
const auto kLogin = u"org.freedesktop.login1"_s;
const auto kGnomeList = u"/org/gnome/SessionManager org.gnome.SessionManager.GetInhibitors"_s;
const auto kPlasmaAgent = u"/org/kde/Solid/PowerManagement/PolicyAgent org.kde.Solid.PowerManagement.PolicyAgent."_s;
const auto kPlasmaList = kPlasmaAgent + u"ListInhibitions"_s;
const auto kPlasmaScreen = kPlasmaAgent + u"HasInhibition"_s;
const auto kLoginList = u"/org/freedesktop/login1 org.freedesktop.login1.Manager.ListInhibitors"_s;

constexpr uint kUser = 1000;
constexpr uint kSuspend = 4;
constexpr uint kIdle = 8;

struct GnomeInhibitor {
    uint flags = kIdle;
    QString who;
    QString why;
};

const LoginInhibitor kVideo {u"idle"_s, u"mpv"_s, u"Playing video"_s};
const LoginInhibitor kNetwork {
    u"sleep"_s, u"NetworkManager"_s, u"NetworkManager needs to turn off networks"_s, u"delay"_s, 0};

} // namespace

/// The session bus stands for both buses.
class IdleInhibitorsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { InhibitorAnswers::registerTypes(); }

    void init() { m_services = std::make_unique<FakeServices>(); }

    void cleanup() { m_services.reset(); }

    void whereNobodyAnswersNothingIsKnown()
    {
        QCOMPARE(isForViewing(), std::nullopt);

        m_services->refuse(kGnome, kGnomeList);
        m_services->refuse(kPlasma);
        m_services->refuse(kLogin, kLoginList);
        QCOMPARE(isForViewing(), std::nullopt);
    }

    void withoutABusNothingIsKnown()
    {
        const auto nowhere = QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s);

        QCOMPARE(IdleInhibitors(nowhere, nowhere, kUser).isForViewing(), std::nullopt);
    }

    void ofGnomeTheInhibitorsOfIdlenessCount_data()
    {
        QTest::addColumn<QList<GnomeInhibitor>>("inhibitors");
        QTest::addColumn<bool>("expected");
        const GnomeInhibitor video {kIdle, u"firefox"_s, u"video-playing"_s};
        const GnomeInhibitor sound {kIdle, u"firefox"_s, u"audio-playing"_s};
        const GnomeInhibitor suspension {kSuspend, u"org.gnome.Totem"_s, u"Playing a movie"_s};
        QTest::newRow("none") << QList<GnomeInhibitor>() << false;
        QTest::newRow("a video") << QList {video} << true;
        QTest::newRow("a video that also prevents suspending")
            << QList {GnomeInhibitor {kIdle | kSuspend, video.who, video.why}} << true;
        QTest::newRow("sound") << QList {sound} << false;
        QTest::newRow("suspension") << QList {suspension} << false;
        QTest::newRow("a video among others") << QList {sound, suspension, video} << true;
        QTest::newRow("others") << QList {sound, suspension} << false;
    }

    void ofGnomeTheInhibitorsOfIdlenessCount()
    {
        QFETCH(const QList<GnomeInhibitor>, inhibitors);
        QFETCH(const bool, expected);
        tellGnome(inhibitors);

        QCOMPARE(isForViewing(), expected);
    }

    void anInhibitorThatDoesNotSayItsKindLeavesNothingKnown()
    {
        tellGnome({{kSuspend, u"mpv"_s, u"Playing video"_s}});
        QCOMPARE(isForViewing(), false);

        m_services->refuse(kGnome, inhibitorCall(0, u"GetFlags"_s));
        QCOMPARE(isForViewing(), std::nullopt);

        tellGnome({{kSuspend, u"x"_s, u"y"_s}, {kIdle, u"mpv"_s, u"Playing video"_s}});
        m_services->refuse(kGnome, inhibitorCall(0, u"GetFlags"_s));
        QCOMPARE(isForViewing(), true);
    }

    void anInhibitorThatSaysNothingElseIsForNothing()
    {
        tellGnome({{kIdle, u"firefox"_s, u"video-playing"_s}});
        m_services->refuse(kGnome, inhibitorCall(0, u"GetAppId"_s));
        QCOMPARE(isForViewing(), true);

        m_services->refuse(kGnome, inhibitorCall(0, u"GetReason"_s));
        QCOMPARE(isForViewing(), false);
    }

    void ofPlasmaTheInhibitionsOfTheScreenCount_data()
    {
        QTest::addColumn<QList<PlasmaInhibition>>("inhibitions");
        QTest::addColumn<std::optional<bool>>("isForScreen");
        QTest::addColumn<bool>("expected");
        const PlasmaInhibition video {u"/usr/lib/chromium/chromium"_s, u"Video Wake Lock"_s};
        const PlasmaInhibition sound {u"/usr/lib/chromium/chromium"_s, u"Playing audio"_s};
        QTest::newRow("none") << QList<PlasmaInhibition>() << std::optional(false) << false;
        QTest::newRow("a video") << QList {video} << std::optional(true) << true;
        QTest::newRow("a video that lets the screen go dark") << QList {video} << std::optional(false) << false;
        QTest::newRow("a video, and no word of the screen") << QList {video} << std::optional<bool>() << true;
        QTest::newRow("sound") << QList {sound} << std::optional(true) << false;
        QTest::newRow("both") << QList {sound, video} << std::optional(true) << true;
    }

    void ofPlasmaTheInhibitionsOfTheScreenCount()
    {
        QFETCH(const QList<PlasmaInhibition>, inhibitions);
        QFETCH(const std::optional<bool>, isForScreen);
        QFETCH(const bool, expected);
        if (isForScreen)
            m_services->answer(kPlasma, kPlasmaScreen, *isForScreen);
        else
            m_services->refuse(kPlasma, kPlasmaScreen);

        m_services->answer(kPlasma, kPlasmaList, QVariant::fromValue(inhibitions));
        QCOMPARE(isForViewing(), expected);

        QList<QStringList> ofPlasma6;
        for (const auto& [who, why] : inhibitions)
            ofPlasma6.append({who, why});
        m_services->answer(kPlasma, kPlasmaList, QVariant::fromValue(ofPlasma6));
        QCOMPARE(isForViewing(), expected);
    }

    void plasmaIsAskedForTheScreen()
    {
        m_services->answer(kPlasma, kPlasmaScreen, false);
        m_services->answer(kPlasma, kPlasmaList, QVariant::fromValue(QList<PlasmaInhibition>()));

        QCOMPARE(isForViewing(), false);

        QCOMPARE(m_services->questions(), QStringList({kPlasmaList + u"()"_s, kPlasmaScreen + u"(4)"_s}));
    }

    void ofTheLoginManagerThisUsersBlocksOfIdlenessCount_data()
    {
        QTest::addColumn<QList<LoginInhibitor>>("inhibitors");
        QTest::addColumn<bool>("expected");
        const auto varied = [](const auto& vary) {
            auto inhibitor = kVideo;
            vary(inhibitor);
            return QList {inhibitor};
        };
        QTest::newRow("none") << QList<LoginInhibitor>() << false;
        QTest::newRow("a video") << QList {kNetwork, kVideo} << true;
        QTest::newRow("others") << QList {kNetwork} << false;
        QTest::newRow("sleep, too") << varied([](auto& one) { one.what = u"sleep:idle"_s; }) << true;
        QTest::newRow("sleep only") << varied([](auto& one) { one.what = u"sleep"_s; }) << false;
        QTest::newRow("another kind") << varied([](auto& one) { one.what = u"idleness"_s; }) << false;
        QTest::newRow("shutdown, too") << varied([](auto& one) { one.what = u"shutdown:sleep:idle"_s; }) << false;
        QTest::newRow("a weak block") << varied([](auto& one) { one.mode = u"block-weak"_s; }) << true;
        QTest::newRow("a delay") << varied([](auto& one) { one.mode = u"delay"_s; }) << false;
        QTest::newRow("another user's") << varied([](auto& one) { one.user = kUser + 1; }) << false;
        QTest::newRow("sound") << varied([](auto& one) { one.why = u"Playing audio"_s; }) << false;
    }

    void ofTheLoginManagerThisUsersBlocksOfIdlenessCount()
    {
        QFETCH(const QList<LoginInhibitor>, inhibitors);
        QFETCH(const bool, expected);
        m_services->answer(kLogin, kLoginList, QVariant::fromValue(inhibitors));

        QCOMPARE(isForViewing(), expected);
    }

    void oneVoiceIsEnough()
    {
        tellGnome({});
        m_services->answer(kLogin, kLoginList, QVariant::fromValue(QList {kVideo}));
        m_services->refuse(kPlasma);

        QCOMPARE(isForViewing(), true);

        tellGnome({{kIdle, u"mpv"_s, u"Playing video"_s}});
        m_services->answer(kLogin, kLoginList, QVariant::fromValue(QList {kNetwork}));
        QCOMPARE(isForViewing(), true);
    }

    void anAnswerOfAnotherKindIsNone_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("a number") << QVariant(1);
        QTest::newRow("a truth value") << QVariant(true);
        QTest::newRow("texts") << QVariant(QStringList {u"idle"_s, u"Playing video"_s});
        QTest::newRow("a variant") << QVariant::fromValue(QDBusVariant(QVariant(u"Playing video"_s)));
        QTest::newRow("numbers") << QVariant::fromValue(QList<int> {1, 2});
        QTest::newRow("structures of login1, in a variant")
            << QVariant::fromValue(QDBusVariant(QVariant::fromValue(QList<QList<int>> {{1}})));
    }

    void anAnswerOfAnotherKindIsNone()
    {
        QFETCH(const QVariant, value);
        qDBusRegisterMetaType<QList<QList<int>>>();
        m_services->answer(kGnome, kGnomeList, value);
        m_services->answer(kPlasma, kPlasmaList, value);
        m_services->answer(kLogin, kLoginList, value);

        QCOMPARE(isForViewing(), std::nullopt);
    }

    void listsOfPlasmaMayHaveTooFewTexts()
    {
        m_services->answer(kPlasma, kPlasmaScreen, true);
        m_services->answer(kPlasma, kPlasmaList, QVariant::fromValue(QList<QStringList> {{}, {u"Orvella"_s}}));

        QCOMPARE(isForViewing(), false);
    }

    void ofAHugeListTheBeginningIsLookedAt()
    {
        const SystemClock clock;
        QList<GnomeInhibitor> many(20'000, {kIdle, u"firefox"_s, u"audio-playing"_s});
        tellGnome(many);
        QList<LoginInhibitor> others(100'000, kNetwork);
        others.append(kVideo);
        m_services->answer(kLogin, kLoginList, QVariant::fromValue(others));

        const auto start = clock.now();
        const auto answer = isForViewing();
        const auto pause = clock.now() - start;

        QVERIFY(answer != std::optional(true));
        QVERIFY(pause < 2s);
        QVERIFY(m_services->questions().size() <= 2 + 3 * 32);
    }

    void servicesThatKeepSilentAreWaitedForOnlyShortlyAndTogether()
    {
        const SystemClock clock;
        m_services->keepSilent(kGnome);
        m_services->keepSilent(kPlasma);
        m_services->keepSilent(kLogin);

        const auto start = clock.now();
        QCOMPARE(isForViewing(), std::nullopt);
        const auto pause = clock.now() - start;

        QVERIFY(pause >= 80ms);
        QVERIFY(pause < 400ms);
    }

    void inhibitorsThatKeepSilentAreWaitedForTogether()
    {
        const SystemClock clock;
        QList<QDBusObjectPath> paths;
        for (int number = 0; number < 20; ++number)
            paths.append(QDBusObjectPath(u"/org/gnome/SessionManager/Inhibitor%1"_s.arg(number)));
        m_services->answer(kGnome, kGnomeList, QVariant::fromValue(paths));

        const auto start = clock.now();
        QCOMPARE(isForViewing(), std::nullopt);
        const auto pause = clock.now() - start;

        QVERIFY(pause >= 80ms);
        QVERIFY(pause < 500ms);
    }

private:
    [[nodiscard]] static std::optional<bool> isForViewing()
    {
        const auto bus = QDBusConnection::sessionBus();
        return IdleInhibitors(bus, bus, kUser).isForViewing();
    }

    static QString inhibitorCall(qsizetype number, const QString& method)
    {
        return u"/org/gnome/SessionManager/Inhibitor%1 org.gnome.SessionManager.Inhibitor.%2"_s.arg(number).arg(method);
    }

    void tellGnome(const QList<GnomeInhibitor>& inhibitors)
    {
        QList<QDBusObjectPath> paths;
        for (const auto& [flags, who, why] : inhibitors) {
            const auto number = paths.size();
            paths.append(QDBusObjectPath(u"/org/gnome/SessionManager/Inhibitor%1"_s.arg(number)));
            // No more are asked.
            if (number > 100)
                continue;
            m_services->answer(kGnome, inhibitorCall(number, u"GetFlags"_s), flags);
            m_services->answer(kGnome, inhibitorCall(number, u"GetAppId"_s), who);
            m_services->answer(kGnome, inhibitorCall(number, u"GetReason"_s), why);
        }
        m_services->answer(kGnome, kGnomeList, QVariant::fromValue(paths));
    }

    std::unique_ptr<FakeServices> m_services;
};

QTEST_GUILESS_MAIN(IdleInhibitorsTest)

#include "IdleInhibitorsTest.moc"
