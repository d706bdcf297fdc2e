#include "base/ApplicationId.h"
#include "platform/linux/instance/InstanceFixture.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const auto kServe = u"--serve"_s;

QString nameOf(Instance::Request request)
{
    switch (request) {
    case Instance::Request::nothing:
        return u"nothing"_s;
    case Instance::Request::reopen:
        return u"reopen"_s;
    case Instance::Request::openAd:
        return u"openAd"_s;
    case Instance::Request::showSettings:
        return u"showSettings"_s;
    }
    return {};
}

/// The program as the bus starts it: what happens to it goes into a file, and the settings end it.
int serveAndWriteDown()
{
    QFile file(QCoreApplication::arguments().at(2));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return 1;
    const auto writeDown = [&file](const QString& line) { file.write(line.toUtf8() + '\n'); };
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"serving"_s);
    // It does not outlive the test, whatever becomes of that.
    bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
        QCoreApplication::instance(), SLOT(quit()));
    DBusInstance instance(bus, {{}, {}, [&writeDown](const QString& token) { writeDown(u"token "_s + token); }});
    writeDown(instance.claim(Instance::Request::reopen) ? u"launch"_s : u"second"_s);
    instance.watch([&writeDown](Instance::Request request) {
        writeDown(nameOf(request));
        if (request == Instance::Request::showSettings)
            QCoreApplication::exit();
    });
    return QCoreApplication::exec();
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

} // namespace

/// The program as launchers and the bus call it, which know it by its desktop entry.
class DBusActivationTest final : public QObject, private InstanceFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

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

private:
    /// What GLib offers for launching applications over the bus.
    static bool launch(const QStringList& arguments)
    {
        QProcess launcher;
        launcher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        launcher.start(u"gapplication"_s, arguments);
        return QTest::qWaitFor([&launcher] { return launcher.state() == QProcess::NotRunning; }, 20000)
            && launcher.exitCode() == 0;
    }
};

int main(int argumentCount, char** arguments)
{
    QCoreApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == kServe)
        return serveAndWriteDown();
    DBusActivationTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "DBusActivationTest.moc"
