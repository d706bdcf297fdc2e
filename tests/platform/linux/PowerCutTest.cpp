#include "platform/linux/secrets/SecretFile.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "support/SimulatedDisk.h"
#include "support/TracedProcess.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>
#include <sys/stat.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What a store must have, whatever comes between.
struct Scenario {
    /// Makes what is there before the program starts. Its paths begin with the folder.
    std::function<void(const QString&)> prepare;
    /// What the program is told to do; "@" is the folder.
    QStringList kind;
    QStringList changes;
    /// What the store reads in that folder, as one text.
    std::function<QString(const QString&)> read;
    /// What is true besides, whenever the program ends.
    std::function<bool(const QString&)> holds = [](const QString&) { return true; };
};

void write(const QString& path, const QByteArray& text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || ::fchmod(file.handle(), 0600) != 0)
        qFatal("The file cannot be written.");
}

/// Also those that the program left half-written.
bool areFilesForOwnerAlone(const QString& folder)
{
    QDirIterator found(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (found.hasNext()) {
        struct stat file {};
        if (::stat(QFile::encodeName(found.next()).constData(), &file) != 0 || (file.st_mode & 07777) != 0600)
            return false;
    }
    return true;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString settingsIn(const QString& folder)
{
    const FileSettingsStore store(folder + u"/config/settings.json"_s);
    QStringList values;
    for (const auto& key : {u"anonymousMode"_s, u"ageConfirmed"_s, u"appSignalConsent"_s, u"autoOpenAds"_s}) {
        const auto value = store.boolean(key);
        values += key + u'=' + (value ? *value ? u"true"_s : u"false"_s : u"?"_s);
    }
    return values.join(u' ');
}

QString secretsIn(const QString& folder)
{
    const SecretFile secrets(folder + u"/state"_s);
    QStringList values;
    for (const auto& service : {u"one"_s, u"two"_s}) {
        const auto value = secrets.read(service, u"default"_s);
        values += service + u'=' + (value ? QString::fromUtf8(value->reveal()) : u"?"_s);
    }
    return values.join(u' ');
}

const QStringList kSettings {u"settings"_s, u"@/config/settings.json"_s};
const QStringList kSecrets {u"secrets"_s, u"@/state"_s};
const QByteArray kOldSettings {"{\n  \"anonymousMode\": false,\n  \"ageConfirmed\": true\n}\n"};

QStringList commandFor(const Scenario& scenario, const QString& folder, qsizetype changes)
{
    auto arguments = scenario.kind + scenario.changes.first(changes);
    return QStringList(QStringLiteral(ORVELLA_STORE_WRITER)) + arguments.replaceInStrings(u"@"_s, folder);
}

bool isTelling(const TracedCall& call)
{
    return call.name == "write" && call.arguments.value(0) == "1";
}

} // namespace

Q_DECLARE_METATYPE(Scenario)

/// The program or the machine ends between any two calls that a store makes.
class PowerCutTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Nothing else keeps others out then. The programs that write inherit it.
    void initTestCase() { ::umask(0); }

    void aPowerCutLeavesTheOldOrTheNew_data() { addScenarios(); }

    void aPowerCutLeavesTheOldOrTheNew()
    {
        QFETCH(const Scenario, scenario);
        const QTemporaryDir folder;
        scenario.prepare(folder.path());
        const auto versions = versionsOf(scenario);
        SimulatedDisk disk(folder.path());
        const TracedProcess process(commandFor(scenario, folder.path(), scenario.changes.size()), {});
        QVERIFY2(process.trouble().isEmpty(), process.trouble().constData());

        qsizetype told = -1;
        auto cuts = 0;
        for (const auto& call : process.calls()) {
            disk.take(call);
            told += isTelling(call) ? 1 : 0;
            if (told < 0)
                continue;
            for (std::size_t names = 0; names <= disk.unsafeNames(); ++names) {
                for (const auto bytes :
                    {SimulatedDisk::Unsynced::lost, SimulatedDisk::Unsynced::halved, SimulatedDisk::Unsynced::kept}) {
                    const QTemporaryDir left;
                    disk.leave(left.path(), names, bytes);
                    check(scenario, left.path(), versions, told);
                    if (QTest::currentTestFailed())
                        return;
                    ++cuts;
                }
            }
        }
        QCOMPARE(told, scenario.changes.size());
        QCOMPARE(scenario.read(folder.path()), versions.last());
        QVERIFY(cuts > 20 * scenario.changes.size());
    }

    void aKilledProgramLeavesTheOldOrTheNew_data() { addScenarios(); }

    void aKilledProgramLeavesTheOldOrTheNew()
    {
        QFETCH(const Scenario, scenario);
        const auto versions = versionsOf(scenario);
        const QTemporaryDir whole;
        scenario.prepare(whole.path());
        const TracedProcess unhurt(commandFor(scenario, whole.path(), scenario.changes.size()), {});
        QVERIFY2(unhurt.trouble().isEmpty(), unhurt.trouble().constData());
        const auto calls = callsIn(unhurt, scenario.changes.size());
        QVERIFY(calls.size() > 8U * static_cast<size_t>(scenario.changes.size()));

        for (const auto& [call, number] : calls) {
            const QTemporaryDir folder;
            scenario.prepare(folder.path());
            const TracedProcess process(commandFor(scenario, folder.path(), scenario.changes.size()),
                {u"-e"_s, u"inject=%1:signal=KILL:when=%2"_s.arg(QString::fromLatin1(call)).arg(number)});

            QVERIFY2(process.trouble().isEmpty(), process.trouble().constData());
            QVERIFY(process.wasKilled());
            // The first line says that the changes begin.
            check(scenario, folder.path(), versions, std::max(process.lines().size() - 1, qsizetype {0}));
            if (QTest::currentTestFailed())
                return;
            QVERIFY(areFilesForOwnerAlone(folder.path()));
        }
    }

private:
    static void addScenarios()
    {
        QTest::addColumn<Scenario>("scenario");
        QTest::newRow("the first settings") << Scenario {[](const QString&) {}, kSettings,
            {u"anonymousMode=false"_s, u"autoOpenAds=true"_s, u"anonymousMode=true"_s}, settingsIn};
        QTest::newRow("settings that are there")
            << Scenario {[](const QString& folder) { write(folder + u"/config/settings.json"_s, kOldSettings); },
                   kSettings, {u"autoOpenAds=true"_s, u"appSignalConsent=true"_s, u"anonymousMode=true"_s}, settingsIn};
        QTest::newRow("settings behind a link")
            << Scenario {[](const QString& folder) {
                             write(folder + u"/dotfiles/orvella.json"_s, kOldSettings);
                             QDir().mkpath(folder + u"/config"_s);
                             QFile::link(u"../dotfiles/orvella.json"_s, folder + u"/config/settings.json"_s);
                         },
                   kSettings, {u"autoOpenAds=true"_s, u"anonymousMode=true"_s}, settingsIn,
                   [](const QString& folder) { return QFileInfo(folder + u"/config/settings.json"_s).isSymLink(); }};
        QTest::newRow("settings that cannot be read") << Scenario {
            [](const QString& folder) { write(folder + u"/config/settings.json"_s, "of the viewer"); }, kSettings,
            {u"autoOpenAds=true"_s, u"anonymousMode=false"_s}, settingsIn,
            [](const QString& folder) {
                const auto path = folder + u"/config/settings.json"_s;
                return contentOf(path) == "of the viewer" || contentOf(path + u".unreadable-1"_s) == "of the viewer";
            }};
        QTest::newRow("the first secret")
            << Scenario {[](const QString&) {}, kSecrets, {u"one=token-1"_s, u"two=token-2"_s}, secretsIn};
        QTest::newRow("secrets that are there")
            << Scenario {[](const QString& folder) {
                             const SecretFile secrets(folder + u"/state"_s);
                             if (!secrets.put(u"one"_s, u"default"_s, Secret("old-1"))
                                 || !secrets.put(u"two"_s, u"default"_s, Secret("old-2")))
                                 qFatal("The secrets cannot be stored.");
                         },
                   kSecrets, {u"one="_s, u"one=token-1"_s, u"two=token-2"_s}, secretsIn};
    }

    /// What the store reads before the first change and after each.
    static QStringList versionsOf(const Scenario& scenario)
    {
        QStringList versions;
        for (qsizetype changes = 0; changes <= scenario.changes.size(); ++changes) {
            const QTemporaryDir folder;
            scenario.prepare(folder.path());
            const auto command = commandFor(scenario, folder.path(), changes);
            QProcess writer;
            writer.start(command.first(), command.sliced(1));
            if (!writer.waitForFinished() || writer.exitCode() != 0)
                qFatal("The program that writes has failed.");
            versions += scenario.read(folder.path());
        }
        return versions;
    }

    static void check(const Scenario& scenario, const QString& folder, const QStringList& versions, qsizetype told)
    {
        const auto found = scenario.read(folder);
        if (found != versions.at(told) && found != versions.value(told + 1))
            QFAIL(qPrintable(u"After %1 changes it is %2."_s.arg(told).arg(found)));
        QVERIFY(scenario.holds(folder));
    }

    /// The calls of the changes, each with its number among those of its name.
    static std::vector<std::pair<QByteArray, int>> callsIn(const TracedProcess& process, qsizetype changes)
    {
        std::map<QByteArray, int> numbers;
        std::vector<std::pair<QByteArray, int>> calls;
        auto told = 0;
        for (const auto& call : process.calls()) {
            const auto number = ++numbers[call.name];
            if (told > 0 && told <= changes)
                calls.emplace_back(call.name, number);
            told += isTelling(call) ? 1 : 0;
        }
        return calls;
    }
};

QTEST_GUILESS_MAIN(PowerCutTest)

#include "PowerCutTest.moc"
