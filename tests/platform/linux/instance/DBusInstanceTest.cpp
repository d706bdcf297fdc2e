#include "base/ApplicationId.h"
#include "base/Clock.h"
#include "platform/linux/instance/InstanceFixture.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QRegularExpression>

#include <cstdio>

using namespace orvella;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto kClaim = u"--claim"_s;

/// The program once more, in a process of its own; the name of the profile follows, if there is one.
int claimAndSay()
{
    DBusInstance::Options options;
    options.environment = QProcessEnvironment::systemEnvironment();
    if (const auto arguments = QCoreApplication::arguments(); arguments.size() > 2)
        options.profile = arguments.at(2);
    const auto request = static_cast<Instance::Request>(qEnvironmentVariableIntValue("REQUEST"));
    DBusInstance instance(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"claiming"_s), options);
    std::puts(instance.claim(request) ? "first" : "second");
    return 0;
}

/// What such a program says of itself.
QByteArray claimElsewhere(const QString& profile = {}, const QHash<QString, QString>& variables = {},
    Instance::Request request = Instance::Request::reopen)
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    environment.insert(u"REQUEST"_s, QString::number(static_cast<int>(request)));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
        profile.isEmpty() ? QStringList {kClaim} : QStringList {kClaim, profile});
    // The first program answers from this main loop.
    if (!QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 20000))
        return "it does not end";
    return process.readAllStandardOutput().trimmed();
}

/// Owns the name as a program that does not do what it should.
class OddOwner final : public QDBusVirtualObject {
public:
    enum class Manner { keepsSilent, refuses, dies };

    explicit OddOwner(Manner manner)
        : m_manner(manner)
        , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"odd"_s))
    {
        if (!m_bus.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath)
            || !m_bus.registerService(kApplicationId))
            qFatal("The name is taken.");
    }

    ~OddOwner() override { QDBusConnection::disconnectFromBus(u"odd"_s); }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        ++calls;
        if (m_manner == Manner::refuses)
            connection.send(message.createErrorReply(QDBusError::UnknownMethod, u"no"_s));
        if (m_manner == Manner::dies)
            m_bus.unregisterService(kApplicationId);
        return true;
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    int calls = 0;

private:
    Manner m_manner;
    QDBusConnection m_bus;
};

} // namespace

/// One program for each profile: the second has the first do what it was started for.
class DBusInstanceTest final : public QObject, private InstanceFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

    void theFirstProgramHasTheNameOfTheApplication()
    {
        QVERIFY(m_first->claim(Request::reopen));

        QCOMPARE(m_first->name(), u"io.orvella.Orvella"_s);
        QVERIFY(isOwned(u"io.orvella.Orvella"_s));
    }

    void aSecondProgramReopensTheFirst()
    {
        QVERIFY(m_first->claim(Request::reopen));
        watch();

        QCOMPARE(claimElsewhere(), "second");
        QTRY_COMPARE(m_requests.size(), 1);

        QCOMPARE(claimElsewhere(), "second");
        QTRY_COMPARE(m_requests.size(), 2);
    }

    void aProgramIsTheFirstAgainAfterTheEndOfAnother()
    {
        QCOMPARE(claimElsewhere(), "first");
        QCOMPARE(claimElsewhere(), "first");

        QVERIFY(m_first->claim(Request::reopen));
        m_first.reset();

        QCOMPARE(claimElsewhere(), "first");
    }

    void eachProfileHasAProgramOfItsOwn()
    {
        QVERIFY(m_first->claim(Request::reopen));
        watch();
        auto other = instance(u"/home/viewer/other"_s);
        QVERIFY(other->claim(Request::reopen));

        QCOMPARE(claimElsewhere(u"/home/viewer/other"_s), "second");
        QCOMPARE(claimElsewhere(u"/home/viewer/third"_s), "first");

        QTest::qWait(50);
        QCOMPARE(m_requests.size(), 0);
    }

    void theNameOfAProfileIsAValidNameThatSaysNothingOfItsFolder()
    {
        const auto name = instance(u"/home/viewer/é 1.2-3"_s)->name();

        static const QRegularExpression expected(u"^io\\.orvella\\.Orvella\\.Profile[0-9a-z]{16}$"_s);
        QVERIFY2(expected.match(name).hasMatch(), qPrintable(name));
        QVERIFY(name != instance(u"/home/viewer/é 1.2-4"_s)->name());
        QCOMPARE(name, instance(u"/home/viewer/é 1.2-3"_s)->name());
    }

    void aSecondProgramHasTheFirstDoWhatItWasStartedFor_data()
    {
        QTest::addColumn<Request>("request");
        QTest::newRow("the ad") << Request::openAd;
        QTest::newRow("the settings") << Request::showSettings;
    }

    void aSecondProgramHasTheFirstDoWhatItWasStartedFor()
    {
        QFETCH(const Request, request);
        QVERIFY(m_first->claim(Request::reopen));
        watch();

        QCOMPARE(claimElsewhere({}, {{u"XDG_ACTIVATION_TOKEN"_s, u"token"_s}}, request), "second");

        QTRY_COMPARE(m_requests, Requests {request});
        QCOMPARE(m_tokens, QStringList {u"token"_s});
    }

    void aSecondProgramThatTheSessionStartedLeavesTheFirstAlone()
    {
        QVERIFY(m_first->claim(Request::reopen));
        watch();

        QCOMPARE(claimElsewhere({}, {{u"XDG_ACTIVATION_TOKEN"_s, u"token"_s}}, Request::nothing), "second");

        QTest::qWait(50);
        QCOMPARE(m_requests, Requests());
        QCOMPARE(m_tokens, QStringList());
    }

    void aProgramThatTheSessionStartedIsTheFirstLikeAnyOther()
    {
        QCOMPARE(claimElsewhere({}, {}, Request::nothing), "first");
    }

    void requestsFromBeforeTheWatchAreHandedOverInTheirOrder()
    {
        QVERIFY(m_first->claim(Request::reopen));
        QCOMPARE(claimElsewhere({}, {}, Request::openAd), "second");
        QCOMPARE(claimElsewhere({}, {}, Request::reopen), "second");
        QCOMPARE(claimElsewhere({}, {}, Request::showSettings), "second");
        QTest::qWait(50);

        watch();

        const Requests all {Request::openAd, Request::reopen, Request::showSettings};
        QTRY_COMPARE(m_requests, all);
        QTest::qWait(50);
        QCOMPARE(m_requests, all);
    }

    void aReopeningBetweenTheClaimAndTheWatchIsNotLost()
    {
        QVERIFY(m_first->claim(Request::reopen));
        QCOMPARE(claimElsewhere(), "second");
        QTest::qWait(50);

        watch();

        QTRY_COMPARE(m_requests.size(), 1);
        QTest::qWait(50);
        QCOMPARE(m_requests.size(), 1);
    }

    void theListenerMayReplaceItselfInsideItsCall()
    {
        QVERIFY(m_first->claim(Request::reopen));
        m_first->watch([this](Request) { watch(); });

        QCOMPARE(claimElsewhere(), "second");
        QCOMPARE(claimElsewhere(), "second");

        QTRY_COMPARE(m_requests.size(), 1);
    }

    void theRightToComeToTheFrontIsHandedOver_data()
    {
        QTest::addColumn<QString>("token");
        QTest::addColumn<QString>("startupId");
        QTest::addColumn<QStringList>("handedOver");
        QTest::newRow("nothing") << u""_s << u""_s << QStringList();
        QTest::newRow("a token") << u"token"_s << u""_s << QStringList {u"token"_s};
        QTest::newRow("a startup id") << u""_s << u"id_TIME1"_s << QStringList {u"id_TIME1"_s};
        QTest::newRow("both") << u"token"_s << u"id_TIME1"_s << QStringList {u"token"_s};
    }

    void theRightToComeToTheFrontIsHandedOver()
    {
        QFETCH(const QString, token);
        QFETCH(const QString, startupId);
        QVERIFY(m_first->claim(Request::reopen));
        watch();

        QCOMPARE(
            claimElsewhere({}, {{u"XDG_ACTIVATION_TOKEN"_s, token}, {u"DESKTOP_STARTUP_ID"_s, startupId}}), "second");

        QTRY_COMPARE(m_requests.size(), 1);
        QTEST(m_tokens, "handedOver");
    }

    void anOwnerThatKeepsSilentIsWaitedForForTwoSeconds()
    {
        const SystemClock clock;
        OddOwner owner(OddOwner::Manner::keepsSilent);

        const auto start = clock.now();
        QCOMPARE(claimElsewhere(), "second");
        const auto pause = clock.now() - start;

        QCOMPARE(owner.calls, 1);
        QVERIFY(pause >= 1900ms);
        QVERIFY(pause < 10s);
    }

    void anOwnerThatRefusesIsTheFirstAllTheSame()
    {
        OddOwner owner(OddOwner::Manner::refuses);

        QCOMPARE(claimElsewhere(), "second");

        QCOMPARE(owner.calls, 1);
    }

    void anOwnerThatEndsInsteadOfAnsweringIsSucceeded()
    {
        OddOwner owner(OddOwner::Manner::dies);

        QCOMPARE(claimElsewhere(), "first");

        QCOMPARE(owner.calls, 1);
    }

    void withoutASessionBusEveryProgramIsTheFirst()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        const auto nowhere = QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s);
        DBusInstance first(nowhere, {});
        DBusInstance second(nowhere, {});

        QVERIFY(first.claim(Request::reopen));
        QVERIFY(second.claim(Request::reopen));
        first.watch([](Request) {});
    }

    void onABusThatGivesNobodyTheNameEveryProgramIsTheFirst()
    {
        const PrivateBus bus("<policy context='default'><deny own='*'/></policy>");

        QCOMPARE(claimElsewhere({}, {{u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address()}}), "first");
    }

private:
    static bool isOwned(const QString& name)
    {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(name);
    }
};

int main(int argumentCount, char** arguments)
{
    QCoreApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == kClaim)
        return claimAndSay();
    DBusInstanceTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "DBusInstanceTest.moc"
