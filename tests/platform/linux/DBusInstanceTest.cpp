#include "platform/linux/DBusInstance.h"

#include "base/ApplicationId.h"
#include "base/Clock.h"
#include "support/PrivateBus.h"

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

using Request = Instance::Request;
using Requests = QList<Request>;

namespace {

const auto kClaim = u"--claim"_s;
const auto kServe = u"--serve"_s;
const auto kConnection = u"first"_s;

QString nameOf(Request request)
{
    switch (request) {
    case Request::nothing:
        return u"nothing"_s;
    case Request::reopen:
        return u"reopen"_s;
    case Request::openAd:
        return u"openAd"_s;
    case Request::showSettings:
        return u"showSettings"_s;
    }
    return {};
}

/// The program once more, in a process of its own; the name of the profile follows, if there is one.
int claimAndSay()
{
    DBusInstance::Options options;
    options.environment = QProcessEnvironment::systemEnvironment();
    if (const auto arguments = QCoreApplication::arguments(); arguments.size() > 2)
        options.profile = arguments.at(2);
    const auto request = static_cast<Request>(qEnvironmentVariableIntValue("REQUEST"));
    DBusInstance instance(QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection), options);
    std::puts(instance.claim(request) ? "first" : "second");
    return 0;
}

/// The program as the bus starts it: what happens to it goes into a file, and the settings end it.
int serveAndWriteDown()
{
    QFile file(QCoreApplication::arguments().at(2));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return 1;
    const auto writeDown = [&file](const QString& line) { file.write(line.toUtf8() + '\n'); };
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection);
    // It does not outlive the test, whatever becomes of that.
    bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
        QCoreApplication::instance(), SLOT(quit()));
    DBusInstance instance(bus, {{}, {}, [&writeDown](const QString& token) { writeDown(u"token "_s + token); }});
    writeDown(instance.claim(Request::reopen) ? u"launch"_s : u"second"_s);
    instance.watch([&writeDown](Request request) {
        writeDown(nameOf(request));
        if (request == Request::showSettings)
            QCoreApplication::exit();
    });
    return QCoreApplication::exec();
}

/// What such a program says of itself.
QByteArray claimElsewhere(
    const QString& profile = {}, const QHash<QString, QString>& variables = {}, Request request = Request::reopen)
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

/// Calls the program on a bus that starts it, which is the first of these calls' doing.
class ActivatingBus final {
public:
    ActivatingBus()
    {
        m_bus.addService(
            kApplicationId, u"\"%1\" %2 \"%3\""_s.arg(QCoreApplication::applicationFilePath(), kServe, log()));
    }

    ~ActivatingBus() { QDBusConnection::disconnectFromBus(u"activating"_s); }

    void call(const QString& method, const QVariantList& arguments)
    {
        auto connection = QDBusConnection::connectToBus(m_bus.address(), u"activating"_s);
        auto call = QDBusMessage::createMethodCall(
            kApplicationId, u"/io/orvella/Orvella"_s, u"org.freedesktop.Application"_s, method);
        call.setArguments(arguments);
        QCOMPARE(connection.call(call).type(), QDBusMessage::ReplyMessage);
    }

    [[nodiscard]] QStringList events() const
    {
        QFile file(log());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }

private:
    [[nodiscard]] QString log() const { return m_folder.filePath(u"log"_s); }

    QTemporaryDir m_folder;
    PrivateBus m_bus;
};

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
        m_requests.clear();
    }

    void cleanup()
    {
        m_first.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(kConnection);
    }

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

    void aLauncherActivatesItAsTheSpecificationHasIt()
    {
        QVERIFY(m_first->claim(Request::reopen));
        watch();

        QVERIFY(launch({u"launch"_s, kApplicationId}));
        QTRY_COMPARE(m_requests.size(), 1);

        QVERIFY(launch({u"launch"_s, kApplicationId, u"/tmp/file"_s}));
        QTRY_COMPARE(m_requests.size(), 2);

        QVERIFY(launch({u"action"_s, kApplicationId, u"open-ad"_s}));
        QVERIFY(launch({u"action"_s, kApplicationId, u"settings"_s}));
        QTRY_COMPARE(m_requests.mid(2), (Requests {Request::openAd, Request::showSettings}));
    }

    void anActionThatThereIsNotDoesNothing()
    {
        QVERIFY(m_first->claim(Request::reopen));
        watch();

        QVERIFY(launch({u"action"_s, kApplicationId, u"unknown"_s, u"'parameter'"_s}));
        QVERIFY(launch({u"action"_s, kApplicationId, u"Open-Ad"_s}));

        QTest::qWait(50);
        QCOMPARE(m_requests, Requests());
    }

    void aStartByTheBusIsTheActivationItself()
    {
        ActivatingBus bus;

        bus.call(u"Activate"_s, {QVariantMap {{u"activation-token"_s, u"token"_s}}});
        QTRY_COMPARE(bus.events(), (QStringList {u"token token"_s, u"launch"_s}));
        bus.call(u"Activate"_s, {QVariantMap()});
        bus.call(u"ActivateAction"_s, {u"settings"_s, QVariantList(), QVariantMap()});

        QTRY_COMPARE(bus.events(), (QStringList {u"token token"_s, u"launch"_s, u"reopen"_s, u"showSettings"_s}));
    }

    void aStartByTheBusForAnActionDoesIt()
    {
        ActivatingBus bus;

        bus.call(
            u"ActivateAction"_s, {u"open-ad"_s, QVariantList(), QVariantMap {{u"activation-token"_s, u"token"_s}}});
        bus.call(u"ActivateAction"_s, {u"settings"_s, QVariantList(), QVariantMap()});

        QTRY_COMPARE(bus.events(), (QStringList {u"token token"_s, u"launch"_s, u"openAd"_s, u"showSettings"_s}));
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
    std::unique_ptr<DBusInstance> instance(const std::optional<QString>& profile)
    {
        return std::make_unique<DBusInstance>(m_bus,
            DBusInstance::Options {
                profile, QProcessEnvironment(), [this](const QString& token) { m_tokens.append(token); }});
    }

    void watch()
    {
        m_first->watch([this](Request request) { m_requests.append(request); });
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

    QDBusConnection m_bus {QString()};
    std::unique_ptr<DBusInstance> m_first;
    QStringList m_tokens;
    Requests m_requests;
};

int main(int argumentCount, char** arguments)
{
    QCoreApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == kClaim)
        return claimAndSay();
    if (QCoreApplication::arguments().value(1) == kServe)
        return serveAndWriteDown();
    DBusInstanceTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "DBusInstanceTest.moc"
