#include "support/ProcessFacts.h"
#include "support/ProgramProcess.h"
#include "support/RecordingProxy.h"
#include "support/SandboxProcess.h"
#include "support/VirtualDesktop.h"
#include "support/VisibleWindows.h"

#include "base/Json.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <csignal>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;
/// A second, and what a busy machine adds to it.
constexpr int kLimitMs = 1'500;
/// After which the program is ended where it stands, in the middle of a file, too.
constexpr int kAlarmMs = 1'000;
/// From the start to the money for an ad, as long as it takes with sanitizers on a machine at rest.
constexpr int kStartToPaidMs = 4'000;
constexpr int kDeliveryMs = 200;
/// How often the program is ended at moments of chance; ORVELLA_ENDS asks for more, together with a longer
/// QTEST_FUNCTION_TIMEOUT.
constexpr int kUsualEnds = 8;

int ends()
{
    bool isNumber = false;
    const auto wanted = qEnvironmentVariableIntValue("ORVELLA_ENDS", &isNumber);
    return isNumber ? wanted : kUsualEnds;
}

std::optional<QByteArray> contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

/// Moments spread over a time evenly, each moved by chance within its own share of it.
std::vector<int> momentsWithin(int milliseconds, int count, QRandomGenerator& random)
{
    std::vector<int> moments;
    for (int place = 0; place < count; ++place)
        moments.push_back(static_cast<int>((place + random.generateDouble()) * milliseconds / count));
    std::shuffle(moments.begin(), moments.end(), random);
    return moments;
}

} // namespace

/// The real program, ended whatever it is doing: the next start finds everything in order.
class EndAtAnyMomentTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_profile.emplace();
        m_service.emplace(QStringList {u"--required-seconds"_s, u"1"_s});
        m_proxy.emplace(m_service->address());
        m_token.reset();
        m_hasSettings = false;
        m_isCutShort = false;
    }

    void endedInMidRequestTheNextStartIsNormal_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("devices");
        // The answer that has the token of the device comes to nobody, twice.
        QTest::newRow("register") << u"/api/mac/device/register"_s << 3;
        QTest::newRow("wallet") << u"/api/mac/wallet"_s << 1;
        QTest::newRow("heartbeat") << u"/api/mac/device/heartbeat"_s << 1;
        QTest::newRow("available") << u"/api/mac/ads/available"_s << 1;
        QTest::newRow("start") << u"/api/mac/ads/session/start"_s << 1;
        QTest::newRow("complete") << u"/api/mac/ads/session/complete"_s << 1;
    }

    void endedInMidRequestTheNextStartIsNormal()
    {
        QFETCH(const QString, path);
        QFETCH(const int, devices);
        m_proxy->hold(path);
        for (const int signal : {SIGTERM, SIGKILL}) {
            ProgramProcess program(options());
            const auto held = m_proxy->heldAnswers().size();
            QTRY_VERIFY_WITH_TIMEOUT(m_proxy->heldAnswers().size() > held, kPatienceMs);
            endsBy(program, signal);
            isInOrder();
        }
        m_proxy->hold({});

        watchesAnAd();

        QCOMPARE(devicesOfTheService(), devices);
    }

    void endedAtAnyMomentTheNextStartIsNormal_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGKILL") << SIGKILL;
    }

    void endedAtAnyMomentTheNextStartIsNormal()
    {
        QFETCH(const int, signal);
        const auto seed = QRandomGenerator::global()->generate();
        qInfo("The seed is %u.", seed);
        QRandomGenerator random(seed);
        for (const int moment : momentsWithin(kStartToPaidMs, ends(), random)) {
            const auto devicesBefore = devicesOfTheService();
            const bool hadToken = token().has_value();
            ProgramProcess program(options());
            QTest::qWait(moment);
            // Before `main` the program has no say in how it ends; it has done nothing then.
            const bool hasBegun = signal == SIGKILL || ProcessFacts::handles(program.id(), signal);
            program.send(signal);
            if (hasBegun)
                leavesBy(program, signal);
            else
                static_cast<void>(program.exitCode());
            // What was sent before the end still arrives.
            QTest::qWait(kDeliveryMs);
            isInOrder();
            const auto newDevices = devicesOfTheService() - devicesBefore;
            QVERIFY2(newDevices <= (hadToken ? 0 : 1), qPrintable(QString::number(moment)));
            if (newDevices == 1 && !token())
                qInfo("After %d ms the program had a token and had not kept it: that device is lost.", moment);
        }

        const auto devicesBefore = devicesOfTheService();
        const bool hadToken = token().has_value();
        watchesAnAd();
        QCOMPARE(devicesOfTheService() - devicesBefore, hadToken ? 0 : 1);
    }

    void aSettingThatIsBeingWrittenIsTheOldOneOrTheNew_data() { endedAtAnyMomentTheNextStartIsNormal_data(); }

    void aSettingThatIsBeingWrittenIsTheOldOneOrTheNew()
    {
        QFETCH(const int, signal);
        const auto seed = QRandomGenerator::global()->generate();
        qInfo("The seed is %u.", seed);
        QRandomGenerator random(seed);
        constexpr int kWritings = 3;
        for (const int moment : momentsWithin(300, kWritings, random)) {
            ProgramProcess program(ProgramProcess::optionsFor(*m_profile));
            QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
            QVERIFY(VirtualDesktop::run(u"xdotool"_s,
                {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Orvella$"_s, u"windowactivate"_s, u"--sync"_s}));
            QProcess viewer;
            // The first of the settings has the keyboard: "Auto open ads when available".
            viewer.start(u"xdotool"_s,
                {u"key"_s, u"--delay"_s, u"10"_s, u"--repeat"_s, u"100"_s, u"--repeat-delay"_s, u"5"_s, u"space"_s});
            QTRY_VERIFY_WITH_TIMEOUT(settings() && settings()->contains("autoOpenAds"), kPatienceMs);
            QTest::qWait(moment);

            endsBy(program, signal);

            viewer.kill();
            viewer.waitForFinished();
            isInOrder();
            const auto kept = Json::parse(*settings());
            QVERIFY(kept && kept->object() && kept->object()->contains(u"autoOpenAds"_s));
            QVERIFY(kept->object()->at(u"autoOpenAds"_s).boolean());
        }
    }

private:
    /// With it an ad opens as soon as there is one.
    [[nodiscard]] QStringList options() const
    {
        return {u"--profile"_s, m_profile->path(), u"--set"_s, u"apiBaseURL="_s + m_proxy->address(), u"--set"_s,
            u"autoOpenAds=true"_s};
    }

    [[nodiscard]] std::optional<QByteArray> settings() const
    {
        return contentOf(m_profile->filePath(u"config/settings.json"_s));
    }

    /// As it lies in the file.
    [[nodiscard]] std::optional<QByteArray> token() const
    {
        return contentOf(m_profile->filePath(u"state/secrets.json"_s));
    }

    [[nodiscard]] qsizetype devicesOfTheService() { return m_service->lines().filter(u" registered; "_s).size(); }

    void endsBy(ProgramProcess& program, int signal)
    {
        QVERIFY(program.isRunning());
        program.send(signal);
        leavesBy(program, signal);
    }

    void leavesBy(ProgramProcess& program, int signal)
    {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(program.exitCode(), signal == SIGTERM ? 0 : -1);
        const auto time = timer.elapsed();
        QVERIFY2(time < kLimitMs, qPrintable(QString::number(time)));
        m_isCutShort = m_isCutShort || signal == SIGKILL || time >= kAlarmMs;
        QCOMPARE(program.errors(), QString());
    }

    /// What was kept is whole, and what was once kept stays.
    void isInOrder()
    {
        const auto now = token();
        if (m_token)
            QCOMPARE(now, m_token);
        if (now)
            QVERIFY(Json::parse(*now));
        m_token = now;
        const auto kept = settings();
        QVERIFY(kept || !m_hasSettings);
        if (kept)
            QVERIFY(Json::parse(*kept));
        m_hasSettings = kept.has_value();
        // Who is cut short leaves what it was writing. Nobody else can read that; the next normal start removes it.
        for (QDirIterator files(m_profile->path(), {u"*.json*"_s}, QDir::Files, QDirIterator::Subdirectories);
            files.hasNext();) {
            const auto file = files.nextFileInfo();
            QVERIFY2(m_isCutShort || file.suffix() == u"json"_s, qPrintable(file.fileName()));
            QVERIFY(!(file.permissions() & (QFile::ReadGroup | QFile::ReadOther)));
            if (file.suffix() != u"json"_s)
                qInfo("%s was not finished.", qPrintable(file.fileName()));
        }
    }

    /// The normal start.
    void watchesAnAd()
    {
        const auto paid = m_service->lines().filter(u" earned "_s).size();
        ProgramProcess program(options());
        QTRY_COMPARE_WITH_TIMEOUT(m_service->lines().filter(u" earned "_s).size(), paid + 1, kPatienceMs);
        // It has removed what was left.
        m_isCutShort = false;
        endsBy(program, SIGTERM);
        isInOrder();
    }

    std::optional<QTemporaryDir> m_profile;
    std::optional<SandboxProcess> m_service;
    std::optional<RecordingProxy> m_proxy;
    std::optional<QByteArray> m_token;
    bool m_hasSettings = false;
    /// One of the programs since the last normal start.
    bool m_isCutShort = false;
};

QTEST_GUILESS_MAIN(EndAtAnyMomentTest)

#include "EndAtAnyMomentTest.moc"
