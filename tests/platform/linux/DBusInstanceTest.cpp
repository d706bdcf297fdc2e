#include "platform/linux/DBusInstance.h"

#include "base/ApplicationId.h"
#include "base/Clock.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto kClaim = u"--claim"_s;
const auto kConnection = u"first"_s;

/// The program once more, in a process of its own; the name of the profile follows, if there is one.
int claimAndSay()
{
    DBusInstance::Options options;
    options.environment = QProcessEnvironment::systemEnvironment();
    if (const auto arguments = QCoreApplication::arguments(); arguments.size() > 2)
        options.profile = arguments.at(2);
    DBusInstance instance(QDBusConnection::sessionBus(), options);
    std::puts(instance.claim() ? "first" : "second");
    return 0;
}

/// What such a program says of itself.
QByteArray claimElsewhere(const QString& profile = {}, const QHash<QString, QString>& variables = {})
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        environment.insert(variable.key(), variable.value());
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

class DBusInstanceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection);
        QVERIFY(m_bus.isConnected());
        m_first = instance({});
        m_tokens.clear();
        m_reopenings = 0;
    }

    void cleanup()
    {
        m_first.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(kConnection);
    }

    void theFirstProgramHasTheNameOfTheApplication()
    {
        QVERIFY(m_first->claim());

        QCOMPARE(m_first->name(), u"io.orvella.Orvella"_s);
        QVERIFY(isOwned(u"io.orvella.Orvella"_s));
    }

    void aSecondProgramReopensTheFirst()
    {
        QVERIFY(m_first->claim());
        watch();

        QCOMPARE(claimElsewhere(), "second");
        QTRY_COMPARE(m_reopenings, 1);

        QCOMPARE(claimElsewhere(), "second");
        QTRY_COMPARE(m_reopenings, 2);
    }

    void aProgramIsTheFirstAgainAfterTheEndOfAnother()
    {
        QCOMPARE(claimElsewhere(), "first");
        QCOMPARE(claimElsewhere(), "first");

        QVERIFY(m_first->claim());
        m_first.reset();

        QCOMPARE(claimElsewhere(), "first");
    }

    void eachProfileHasAProgramOfItsOwn()
    {
        QVERIFY(m_first->claim());
        watch();
        auto other = instance(u"/home/viewer/other"_s);
        QVERIFY(other->claim());

        QCOMPARE(claimElsewhere(u"/home/viewer/other"_s), "second");
        QCOMPARE(claimElsewhere(u"/home/viewer/third"_s), "first");

        QTest::qWait(50);
        QCOMPARE(m_reopenings, 0);
    }

    void theNameOfAProfileIsAValidNameThatSaysNothingOfItsFolder()
    {
        const auto name = instance(u"/home/viewer/é 1.2-3"_s)->name();

        static const QRegularExpression expected(u"^io\\.orvella\\.Orvella\\.Profile[0-9a-z]{16}$"_s);
        QVERIFY2(expected.match(name).hasMatch(), qPrintable(name));
        QVERIFY(name != instance(u"/home/viewer/é 1.2-4"_s)->name());
        QCOMPARE(name, instance(u"/home/viewer/é 1.2-3"_s)->name());
    }

    void aReopeningBetweenTheClaimAndTheWatchIsNotLost()
    {
        QVERIFY(m_first->claim());
        QCOMPARE(claimElsewhere(), "second");
        QTest::qWait(50);

        watch();

        QTRY_COMPARE(m_reopenings, 1);
        QTest::qWait(50);
        QCOMPARE(m_reopenings, 1);
    }

    void theListenerMayReplaceItselfInsideItsCall()
    {
        QVERIFY(m_first->claim());
        m_first->watch([this] { m_first->watch([this] { ++m_reopenings; }); });

        QCOMPARE(claimElsewhere(), "second");
        QCOMPARE(claimElsewhere(), "second");

        QTRY_COMPARE(m_reopenings, 1);
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
        QVERIFY(m_first->claim());
        watch();

        QCOMPARE(
            claimElsewhere({}, {{u"XDG_ACTIVATION_TOKEN"_s, token}, {u"DESKTOP_STARTUP_ID"_s, startupId}}), "second");

        QTRY_COMPARE(m_reopenings, 1);
        QTEST(m_tokens, "handedOver");
    }

    void aLauncherActivatesItAsTheSpecificationHasIt()
    {
        QVERIFY(m_first->claim());
        watch();

        QVERIFY(launch({u"launch"_s, kApplicationId}));
        QTRY_COMPARE(m_reopenings, 1);

        QVERIFY(launch({u"launch"_s, kApplicationId, u"/tmp/file"_s}));
        QTRY_COMPARE(m_reopenings, 2);

        QVERIFY(launch({u"action"_s, kApplicationId, u"unknown"_s, u"'parameter'"_s}));
        QTest::qWait(50);
        QCOMPARE(m_reopenings, 2);
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

        QVERIFY(first.claim());
        QVERIFY(second.claim());
        first.watch([] {});
    }

    void onABusThatGivesNobodyTheNameEveryProgramIsTheFirst()
    {
        QProcess daemon;
        QTemporaryDir folder;
        QVERIFY(startStrictBus(daemon, folder));

        QCOMPARE(claimElsewhere({}, {{u"DBUS_SESSION_BUS_ADDRESS"_s, QString::fromUtf8(daemon.readLine().trimmed())}}),
            "first");

        daemon.kill();
        daemon.waitForFinished();
    }

private:
    std::unique_ptr<DBusInstance> instance(const std::optional<QString>& profile)
    {
        return std::make_unique<DBusInstance>(m_bus,
            DBusInstance::Options {
                profile, QProcessEnvironment(), [this](const QString& token) { m_tokens.append(token); }});
    }

    void watch()
    {
        m_first->watch([this] { ++m_reopenings; });
    }

    static bool isOwned(const QString& name)
    {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(name);
    }

    /// What GLib offers for launching applications over the bus.
    static bool launch(const QStringList& arguments)
    {
        QProcess launcher;
        launcher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        launcher.start(u"gapplication"_s, arguments);
        return QTest::qWaitFor([&launcher] { return launcher.state() == QProcess::NotRunning; }, 20000)
            && launcher.exitCode() == 0;
    }

    static bool startStrictBus(QProcess& daemon, const QTemporaryDir& folder)
    {
        QFile file(folder.filePath(u"bus.conf"_s));
        if (!file.open(QIODevice::WriteOnly))
            return false;
        file.write("<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>"
                   "<policy context='default'><allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/>"
                   "<deny own='*'/></policy></busconfig>");
        file.close();
        daemon.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + file.fileName()});
        return daemon.waitForStarted() && daemon.waitForReadyRead();
    }

    QDBusConnection m_bus {QString()};
    std::unique_ptr<DBusInstance> m_first;
    QStringList m_tokens;
    int m_reopenings = 0;
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
