#include "api/Endpoints.h"
#include "app/AppDelegate.h"
#include "platform/SystemPlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;
const QString kProgram = u"orvella-under-test"_s;

} // namespace

/// What assistive technology reads of the program on a real accessibility bus.
class AccessibilityTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_profile = std::make_unique<QTemporaryDir>();
        m_transport = std::make_unique<FakeTransport>();
        m_transport->answerEverything();
        m_platform = std::make_unique<SystemPlatform>(m_profile->path(),
            std::vector<OverlaySettings::Entry> {
                {u"apiBaseURL"_s, Json(u"https://service.test/"_s)}, {u"showLaunchWindowAtStartup"_s, Json(false)}});
        m_delegate = std::make_unique<AppDelegate>(m_platform->lend(), *m_transport);
        m_delegate->applicationDidFinishLaunching();
        // The start of a run is over then: nothing writes a secret any more that an end would interrupt.
        QTRY_VERIFY_WITH_TIMEOUT(m_transport->count(endpoints::kAdsAvailable) > 0, kPatienceMs);
    }

    void cleanup()
    {
        m_delegate.reset();
        m_platform.reset();
    }

    void theMenuNamesItsControlsAndTexts()
    {
        state().verificationUri = u"https://service.test/activate"_s;
        state().linked = false;
        m_delegate->controller()->statusItemClicked();

        QTRY_VERIFY_WITH_TIMEOUT(reads({
                                     u"check box\tAuto open ads"_s,
                                     u"check box\tAnonymous mode"_s,
                                     u"check box\tApp category signals"_s,
                                     u"check box\tI am 18 or older"_s,
                                     u"check box\tOpen at login"_s,
                                     u"check box\tShow startup window"_s,
                                     u"push button\tCheck for Updates..."_s,
                                     u"link\tLink this Mac"_s,
                                     u"label\tAvailable"_s,
                                     u"label\tLink pending"_s,
                                 }),
            kPatienceMs);
    }

    void assistiveTechnologyTogglesASwitch()
    {
        m_delegate->controller()->statusItemClicked();

        QTRY_VERIFY_WITH_TIMEOUT(reads({u"check box\tAuto open ads"_s}), kPatienceMs);

        QVERIFY(read({u"--press"_s, u"Auto open ads"_s}));

        QTRY_VERIFY_WITH_TIMEOUT(state().autoOpenAds(), kPatienceMs);
    }

    void theAdNamesItsControlsAndItsCountdown()
    {
        state().availableAd = anAd();
        m_delegate->controller()->showCurrentAd();

        QTRY_VERIFY_WITH_TIMEOUT(reads({
                                     u"push button\tOpen ad: "_s + anAd().body,
                                     u"push button\tAd information"_s,
                                     u"push button\tDismiss ad without earning"_s,
                                     u"progress bar\tAd time remaining"_s,
                                     u"label\t12 cent"_s,
                                 }),
            kPatienceMs);
        QVERIFY(m_lines.filter(QRegularExpression(u"^progress bar\tAd time remaining\t\\d+ of 15$"_s)).size() == 1);
    }

    void theStartupWindowNamesItsControls()
    {
        m_delegate->applicationShouldHandleReopen();

        QTRY_VERIFY_WITH_TIMEOUT(reads({
                                     u"check box\tAuto open ads when available"_s,
                                     u"check box\tAnonymous mode"_s,
                                     u"check box\tUse app category signals"_s,
                                     u"check box\tI am 18 or older"_s,
                                     u"check box\tShow this window when Orvella starts"_s,
                                     u"push button\tOpen dashboard"_s,
                                     u"push button\tQuit Orvella"_s,
                                     u"push button\tGot it"_s,
                                     u"label\tOrvella is running"_s,
                                 }),
            kPatienceMs);
    }

    void nothingThatCanBePressedIsWithoutAName()
    {
        state().availableAd = anAd();
        m_delegate->applicationShouldHandleReopen();
        m_delegate->controller()->statusItemClicked();
        QTRY_VERIFY_WITH_TIMEOUT(reads({u"push button\tAd information"_s, u"push button\tGot it"_s}), kPatienceMs);

        QCOMPARE(m_lines.filter(QRegularExpression(u"^(push button|check box|link)\t(\t|$)"_s)), QStringList());
    }

private:
    /// Reads the tree from another process, while this one goes on to answer.
    bool read(const QStringList& arguments = {})
    {
        QProcess reader;
        reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        reader.start(QStringLiteral(ORVELLA_ACCESSIBLE_TREE), QStringList {kProgram} + arguments);
        if (!QTest::qWaitFor([&reader] { return reader.state() == QProcess::NotRunning; }, kPatienceMs))
            return false;
        m_lines = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n');
        return reader.exitCode() == 0;
    }

    /// Whether the tree has a line that starts with each of these.
    bool reads(const QStringList& starts)
    {
        if (!read())
            return false;
        return std::ranges::all_of(starts, [this](const QString& start) {
            const bool found = std::ranges::any_of(
                m_lines, [&start](const QString& line) { return line == start || line.startsWith(start + u'\t'); });
            if (!found)
                qInfo("The tree does not have: %s", qPrintable(start));
            return found;
        });
    }

    [[nodiscard]] AppState& state() const { return m_delegate->controller()->state(); }

    std::unique_ptr<QTemporaryDir> m_profile;
    std::unique_ptr<FakeTransport> m_transport;
    std::unique_ptr<SystemPlatform> m_platform;
    std::unique_ptr<AppDelegate> m_delegate;
    QStringList m_lines;
};

int main(int argumentCount, char** arguments)
{
    QApplication application(argumentCount, arguments);
    QApplication::setApplicationName(kProgram);
    QApplication::setQuitOnLastWindowClosed(false);
    AccessibilityTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "AccessibilityTest.moc"
