#include "support/FakeStatusArea.h"
#include "support/KeyringDaemon.h"
#include "support/PlainWindow.h"
#include "support/ProcessFacts.h"
#include "support/ProgramProcess.h"
#include "support/RecordingProxy.h"
#include "support/SandboxProcess.h"
#include "support/SecretForms.h"
#include "support/VirtualDesktop.h"
#include "support/VisibleWindows.h"

#include "base/Json.h"
#include "signals/CategoryRules.h"

#include <QDirIterator>
#include <QFile>
#include <QTest>

#include <csignal>
#include <map>
#include <sys/resource.h>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;
/// In the names of the application that runs besides, and nowhere else.
constexpr auto kApplicationWord = "zanzibar";

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("A file of the test cannot be written.");
}

QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(kPatienceMs);
    return process.readAllStandardOutput() + process.readAllStandardError();
}

QStringList knownCategories()
{
    QStringList known;
    for (const auto& rule : categoryRules()) {
        for (const auto category : rule.categories)
            known.append(category.toString());
    }
    return known;
}

/// The categories that a request tells the service; nothing where it tells none.
std::optional<QStringList> categoriesIn(const RawRequest& request)
{
    const auto body = Json::parse(request.body);
    const auto* const members = body ? body->object() : nullptr;
    if (members == nullptr || !members->contains(u"categories"_s))
        return std::nullopt;
    QStringList categories;
    const auto* const values = members->at(u"categories"_s).array();
    for (const auto& value : values ? *values : Json::Array()) {
        const auto* const text = value.string();
        categories.append(text ? *text : u"no text"_s);
    }
    return categories;
}

/// The token that a request was made with.
QByteArray tokenIn(const RawRequest& request)
{
    const auto header = request.header("authorization").value_or(QByteArray());
    return header.startsWith("Bearer ") ? header.sliced(7) : QByteArray();
}

} // namespace

/// The real program through all that it does, with all logging on and category signals consented to: neither the
/// device's token nor the name of an application that runs is in anything that leaves it.
class NoSecretOutTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // What keeps a dump from being written has to be the program's doing.
        rlimit limit {};
        QCOMPARE(getrlimit(RLIMIT_CORE, &limit), 0);
        limit.rlim_cur = limit.rlim_max;
        QCOMPARE(setrlimit(RLIMIT_CORE, &limit), 0);

        QVERIFY(QDir(m_elsewhere.path()).mkpath(u"share/applications"_s));
        write(m_elsewhere.filePath(u"share/applications/org.example.Zanzibar.desktop"_s),
            "[Desktop Entry]\nType=Application\nName=Zanzibar Blender\nStartupWMClass=zanzibar-window\n");
        QVERIFY(QDir(m_elsewhere.path()).mkpath(u"bin"_s));
        const auto browser = m_elsewhere.filePath(u"bin/xdg-open"_s);
        write(browser, "#!/bin/sh\n{ env; printf '%s\\n' \"$@\"; } >>\"$HOME/browser\"\n");
        QVERIFY(QFile::setPermissions(browser, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void init()
    {
        m_home.emplace();
        m_seen.clear();
        QVERIFY(QDir::setCurrent(m_home->path()));
        QVERIFY(QDir(m_home->path()).mkdir(u"tmp"_s));
    }

    void neitherTheTokenNorAnApplicationsNameComesOut_data()
    {
        QTest::addColumn<bool>("hasKeyring");
        QTest::newRow("with a keyring") << true;
        QTest::newRow("without") << false;
    }

    void neitherTheTokenNorAnApplicationsNameComesOut()
    {
        QFETCH(const bool, hasKeyring);
        KeyringDaemon keyring;
        QVERIFY(!hasKeyring || keyring.start());
        FakeStatusArea bar;
        QVERIFY(bar.start());
        const PlainWindow application({"zanzibar", "Zanzibar-Window", {}, {}});
        QProcess bus;
        bus.setStandardOutputFile(m_elsewhere.filePath(u"bus"_s));
        bus.start(u"dbus-monitor"_s, {u"--session"_s, u"--binary"_s});
        QVERIFY(bus.waitForStarted());
        const auto database = m_elsewhere.filePath(hasKeyring ? u"first.db"_s : u"second.db"_s);

        std::vector<RawRequest> requests;
        goesWell(database, bar, requests);
        goesWrong(database, bar, requests);
        m_seen[u"--diagnose, while none runs"_s] = diagnose(u"http://127.0.0.1:9"_s);

        bus.terminate();
        QVERIFY(bus.waitForFinished());
        m_seen[u"D-Bus"_s] = contentOf(m_elsewhere.filePath(u"bus"_s));
        judge(requests, hasKeyring);
    }

private:
    [[nodiscard]] static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] static QStringList options(const QString& service)
    {
        QStringList options {u"--set"_s, u"apiBaseURL="_s + service};
        for (const auto& setting :
            {u"autoOpenAds=true"_s, u"anonymousMode=false"_s, u"ageConfirmed=true"_s, u"appSignalConsent=true"_s})
            options += {u"--set"_s, setting};
        return options;
    }

    /// Everything that the program may write to lies in one folder, and every library tells what it does.
    [[nodiscard]] ProgramProcess::Variables variables() const
    {
        return {
            {u"HOME"_s, m_home->path()},
            {u"TMPDIR"_s, m_home->filePath(u"tmp"_s)},
            {u"XDG_CONFIG_HOME"_s, m_home->filePath(u"config"_s)},
            {u"XDG_STATE_HOME"_s, m_home->filePath(u"state"_s)},
            {u"XDG_CACHE_HOME"_s, m_home->filePath(u"cache"_s)},
            {u"XDG_DATA_HOME"_s, m_home->filePath(u"data"_s)},
            {u"XDG_DATA_DIRS"_s, m_elsewhere.filePath(u"share"_s)},
            {u"PATH"_s, m_elsewhere.filePath(u"bin:"_s) + qEnvironmentVariable("PATH")},
            {u"QT_LOGGING_RULES"_s, u"*=true"_s},
            {u"QDBUS_DEBUG"_s, u"1"_s},
            {u"G_MESSAGES_DEBUG"_s, u"all"_s},
            {u"ASAN_OPTIONS"_s, qEnvironmentVariable("ASAN_OPTIONS") + u":disable_coredump=0"_s},
        };
    }

    [[nodiscard]] QByteArray diagnose(const QString& service)
    {
        ProgramProcess program(options(service) + QStringList {u"--diagnose"_s}, variables());
        // The running program writes too, and what it writes has to be read.
        if (!QTest::qWaitFor([&program] { return !program.isRunning(); }, kPatienceMs) || program.exitCode() != 0)
            qWarning("There is no report.");
        return program.output().toUtf8() + program.errors().toUtf8();
    }

    /// What others on this computer see of the program.
    void lookAround(const ProgramProcess& program, const QString& when)
    {
        auto& seen = m_seen[u"from outside, "_s + when];
        for (const auto process : ProcessFacts::descendants(program.id()) + QList {program.id()})
            seen += ProcessFacts::file(process, u"cmdline"_s) + ProcessFacts::file(process, u"environ"_s);
        const auto windows = outputOf(
            u"xdotool"_s, {u"search"_s, u"--all"_s, u"--pid"_s, QString::number(program.id()), u"--name"_s, QString()});
        for (const auto& window : windows.simplified().split(' '))
            seen += outputOf(u"xprop"_s, {u"-id"_s, QString::fromLatin1(window)});
    }

    /// A start, a registration, an ad that is paid and clicked through, the menu, a setting, a report.
    void goesWell(const QString& database, FakeStatusArea& bar, std::vector<RawRequest>& requests)
    {
        SandboxProcess service({u"--database"_s, database, u"--required-seconds"_s, u"3"_s});
        const RecordingProxy proxy(service.address());
        ProgramProcess program(options(proxy.address()), variables());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);
        lookAround(program, u"with an ad"_s);
        clickTheAd(program);
        QTRY_VERIFY_WITH_TIMEOUT(!contentOf(m_home->filePath(u"browser"_s)).isEmpty(), kPatienceMs);
        // What is started finds the viewer's own choice of display.
        QVERIFY(contentOf(m_home->filePath(u"browser"_s)).contains("QT_QPA_PLATFORM=xcb\n"));
        QTRY_COMPARE_WITH_TIMEOUT(service.lines().filter(u" earned "_s).size(), 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);

        bar.call(bar.items().constLast(), u"Activate"_s, {10, 10});
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);
        lookAround(program, u"with the menu"_s);
        QVERIFY(VirtualDesktop::run(u"xdotool"_s, {u"key"_s, u"Escape"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
        changeASetting(proxy);
        m_seen[u"--diagnose"_s] = diagnose(proxy.address());

        program.send(SIGTERM);
        QCOMPARE(program.exitCode(), 0);
        m_seen[u"stdout"_s] = program.output().toUtf8();
        m_seen[u"stderr"_s] = program.errors().toUtf8();
        requests.insert(requests.end(), proxy.requests().begin(), proxy.requests().end());
    }

    /// A start at which each request fails in another way, and a crash.
    void goesWrong(const QString& database, FakeStatusArea& bar, std::vector<RawRequest>& requests)
    {
        SandboxProcess service({u"--database"_s, database, u"--fault"_s,
            u"wallet=status:401,heartbeat=garbage,available=truncated,preferences=status:500"_s});
        const RecordingProxy proxy(service.address());
        const auto items = bar.items().size();
        ProgramProcess program(options(proxy.address()), variables());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(bar.items().size() > items, kPatienceMs);
        changeASetting(proxy);
        bar.call(bar.items().constLast(), u"Activate"_s, {10, 10});
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);
        lookAround(program, u"with errors"_s);
        m_seen[u"--diagnose, with errors"_s] = diagnose(proxy.address());
        QVERIFY(m_seen[u"--diagnose, with errors"_s].contains("\nerror, 0 min ago"));
        QVERIFY(!isDumped(program));

        program.send(SIGABRT);
        QCOMPARE(program.exitCode(), -1);
        m_seen[u"stdout, of the crash"_s] = program.output().toUtf8();
        m_seen[u"stderr, of the crash"_s] = program.errors().toUtf8();
        requests.insert(requests.end(), proxy.requests().begin(), proxy.requests().end());
    }

    /// In the left part of the panel, the flattest of the windows, is the ad's text.
    static void clickTheAd(const ProgramProcess& program)
    {
        const auto script = u"for window in $(xdotool search --onlyvisible --pid $0); do "
                            "eval $(xdotool getwindowgeometry --shell $window); ((HEIGHT < 100)) && "
                            "xdotool mousemove $((X + WIDTH / 3)) $((Y + HEIGHT / 2)) click 1; done; true"_s;
        QVERIFY(VirtualDesktop::run(u"bash"_s, {u"-c"_s, script, QString::number(program.id())}));
    }

    /// The first one in the startup window, which has the keyboard.
    static void changeASetting(const RecordingProxy& proxy)
    {
        const auto isSent = [&proxy] {
            return std::ranges::any_of(proxy.requests(),
                [](const RawRequest& request) { return request.firstLine().contains("/api/mac/preferences"); });
        };
        QVERIFY(VirtualDesktop::run(u"xdotool"_s,
            {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Orvella$"_s, u"windowactivate"_s, u"--sync"_s}));
        QVERIFY(VirtualDesktop::run(u"xdotool"_s, {u"key"_s, u"space"_s}));
        QTRY_VERIFY_WITH_TIMEOUT(isSent(), kPatienceMs);
    }

    /// Whether a crash of it would leave a dump, in a file or to a program.
    [[nodiscard]] static bool isDumped(const ProgramProcess& program)
    {
        const auto limits = ProcessFacts::file(program.id(), u"limits"_s);
        const QByteArray name = "Max core file size";
        const auto soft = limits.sliced(limits.indexOf(name) + name.size()).simplified().split(' ').constFirst();
        return soft != "1" && soft != "0";
    }

    void judge(const std::vector<RawRequest>& requests, bool hasKeyring)
    {
        QByteArray token;
        int withCategories = 0;
        for (const auto& request : requests) {
            token = tokenIn(request).isEmpty() ? token : tokenIn(request);
            QVERIFY2(!namesAnApplication(request.head + request.body), request.firstLine());
            const auto categories = categoriesIn(request).value_or(QStringList());
            withCategories += categories.isEmpty() ? 0 : 1;
            for (const auto& category : categories)
                QVERIFY2(knownCategories().contains(category), qPrintable(category));
        }
        QVERIFY(token.size() >= 16);
        QVERIFY(withCategories >= 4);

        const auto forms = formsOf(token);
        const auto kept = m_home->filePath(u"state/orvella/secrets.json"_s);
        QCOMPARE(containsAnyForm(contentOf(kept), forms), !hasKeyring);
        for (QDirIterator files(m_home->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
            files.hasNext();) {
            const auto path = files.next();
            QVERIFY2(!path.section(u'/', -1).startsWith(u"core"_s), qPrintable(path));
            if (path != kept)
                m_seen[path] = contentOf(path);
        }
        QVERIFY(m_seen[u"D-Bus"_s].contains("io.orvella.Orvella"));
        QVERIFY(m_seen[u"stderr"_s].contains("qt.qpa"));
        for (const auto& [where, what] : m_seen) {
            QVERIFY2(!what.isEmpty() || where.startsWith(u"std"_s) || where.startsWith(u'/'), qPrintable(where));
            QVERIFY2(!containsAnyForm(what, forms), qPrintable(where));
            QVERIFY2(!namesAnApplication(what), qPrintable(where));
        }
    }

    [[nodiscard]] static bool namesAnApplication(const QByteArray& bytes)
    {
        return containsAnyForm(bytes.toLower(), formsOf(kApplicationWord).first(3))
            || containsAnyForm(bytes, formsOf("Zanzibar"));
    }

    /// Not the program's: what it reads, and what the test writes down.
    QTemporaryDir m_elsewhere;
    std::optional<QTemporaryDir> m_home;
    std::map<QString, QByteArray> m_seen;
};

QTEST_GUILESS_MAIN(NoSecretOutTest)

#include "NoSecretOutTest.moc"
