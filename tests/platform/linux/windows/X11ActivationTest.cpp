#include "platform/linux/windows/X11WindowSystem.h"

#include "support/VirtualDesktop.h"
#include "support/WindowManager.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QTest>
#include <QWindow>

#include <cstdio>
#include <memory>
#include <utility>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

/// A window of the program that keeps what is typed into it.
class OwnWindow final : public QWindow {
public:
    explicit OwnWindow(Qt::WindowFlags flags = Qt::Window)
    {
        setFlags(flags);
        setGeometry(700, 400, 200, 100);
    }

    QString typed;

private:
    void keyPressEvent(QKeyEvent* event) override { typed += event->text(); }
};

const auto kOther = u"--other-program"_s;
constexpr QRect kOtherPlace {300, 200, 200, 100};

void print(const QByteArray& line)
{
    // What the program has told the display counts from here on.
    QGuiApplication::sync();
    std::puts(line.constData());
    std::fflush(stdout);
}

int beOtherProgram()
{
    struct Window final : QWindow {
        void keyPressEvent(QKeyEvent* event) override { print(event->text().toUtf8()); }
    } window;
    window.setGeometry(kOtherPlace);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return 1;
    print(QByteArray::number(window.winId()));
    return QGuiApplication::exec();
}

/// The window that the window manager says has the keyboard; 0 where there is none.
quint32 activeWindow()
{
    QProcess question;
    question.start(u"xdotool"_s, {u"getactivewindow"_s});
    question.waitForFinished();
    return question.readAllStandardOutput().trimmed().toUInt();
}

bool type(const QString& text)
{
    return VirtualDesktop::run(u"xdotool"_s, {u"type"_s, text});
}

/// A program with one window. Like all real ones it tells the window manager when it was last used.
class OtherProgram final {
public:
    ~OtherProgram()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    [[nodiscard]] bool start()
    {
        m_process.start(QCoreApplication::applicationFilePath(), {kOther});
        if (!m_process.waitForReadyRead())
            return false;
        m_window = m_process.readAllStandardOutput().trimmed().toUInt();
        return true;
    }

    [[nodiscard]] quint32 window() const { return m_window; }

    /// Has the viewer type a letter into it.
    [[nodiscard]] bool use()
    {
        return VirtualDesktop::click(kOtherPlace.center())
            && QTest::qWaitFor([this] { return activeWindow() == m_window; }) && type(u"x"_s)
            && m_process.waitForReadyRead() && m_process.readAllStandardOutput() == "x\n";
    }

private:
    QProcess m_process;
    quint32 m_window = 0;
};

} // namespace

/// Runs once for each window manager, on a desktop where they can be exchanged.
class X11ActivationTest : public QObject {
    Q_OBJECT

public:
    explicit X11ActivationTest(const QString& manager)
        : m_manager(manager)
    {
    }

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::platformName(), u"xcb"_s);
        QVERIFY(VirtualDesktop::run(u"xfconf-query"_s,
            {u"-c"_s, u"xfwm4"_s, u"-p"_s, u"/general/prevent_focus_stealing"_s, u"-n"_s, u"-t"_s, u"bool"_s, u"-s"_s,
                u"true"_s}));
        QVERIFY(m_manager.start());
        const auto display = X11Display::current();
        QVERIFY(display);
        m_windows = std::make_unique<X11WindowSystem>(*display);
    }

    void cleanupTestCase()
    {
        m_other.reset();
        m_windows.reset();
    }

    void aWindowThatIsJustShownGetsTheKeyboard_data()
    {
        QTest::addColumn<int>("flags");
        QTest::newRow("a window") << int(Qt::Window);
        QTest::newRow("a panel") << int(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    }

    void aWindowThatIsJustShownGetsTheKeyboard()
    {
        QFETCH(const int, flags);
        useAnotherProgram();
        OwnWindow own {Qt::WindowFlags(flags)};

        own.show();
        m_windows->activate(own);

        QTRY_COMPARE(activeWindow(), own.winId());
        QVERIFY(type(u"own"_s));
        QTRY_COMPARE(own.typed, u"own"_s);
        QVERIFY(own.isActive());
    }

    void aWindowThatIsThereAlreadyGetsTheKeyboard()
    {
        OwnWindow own;
        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));
        useAnotherProgram();

        m_windows->activate(own);

        QTRY_COMPARE(activeWindow(), own.winId());
        QVERIFY(type(u"own"_s));
        QTRY_COMPARE(own.typed, u"own"_s);
    }

    void aMinimisedWindowComesBack()
    {
        OwnWindow own;
        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));
        own.showMinimized();
        QTRY_VERIFY(!own.isExposed());
        useAnotherProgram();

        m_windows->activate(own);

        QTRY_COMPARE(activeWindow(), own.winId());
        QTRY_VERIFY(own.isExposed());
    }

    void aWindowOnAnotherWorkspaceGetsTheKeyboard()
    {
        OwnWindow own;
        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));
        QVERIFY(VirtualDesktop::run(u"xdotool"_s, {u"set_desktop_for_window"_s, QString::number(own.winId()), u"1"_s}));
        QTRY_VERIFY(!own.isExposed());
        useAnotherProgram();

        m_windows->activate(own);

        QTRY_COMPARE(activeWindow(), own.winId());
        QTRY_VERIFY(own.isExposed());
    }

    void theLastOfTwoWindowsCounts()
    {
        useAnotherProgram();
        OwnWindow first;
        OwnWindow second;

        first.show();
        m_windows->activate(first);
        second.show();
        m_windows->activate(second);

        QTRY_COMPARE(activeWindow(), second.winId());
        letPass();
        QCOMPARE(activeWindow(), second.winId());
    }

    void aRequestEndsWithTheWindowThatItWasFor()
    {
        OwnWindow own;
        own.show();
        m_windows->activate(own);
        own.hide();
        letPass();
        useAnotherProgram();
        // Qt's windows are shown like that by WA_ShowWithoutActivating.
        own.setProperty("_q_showWithoutActivating", true);

        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));
        letPass();

        QCOMPARE(activeWindow(), m_other->window());
    }

protected:
    /// Lets the program and the window manager do what they have to do.
    static void letPass() { QTest::qWait(300); }

    /// Has the viewer work in another program's window, after anything that the program itself has seen.
    void useAnotherProgram()
    {
        m_other = std::make_unique<OtherProgram>();
        QVERIFY(m_other->start());
        QVERIFY(m_other->use());
    }

    std::unique_ptr<X11WindowSystem> m_windows;
    std::unique_ptr<OtherProgram> m_other;

private:
    WindowManager m_manager;
};

/// The same under a window manager that is known to keep windows from taking the keyboard by themselves.
class X11ActivationAgainstPreventionTest final : public X11ActivationTest {
    Q_OBJECT

public:
    using X11ActivationTest::X11ActivationTest;

private Q_SLOTS:
    void aWindowThatNobodyAskedForStaysBehind()
    {
        OwnWindow own;
        own.show();
        m_windows->activate(own);
        QTRY_COMPARE(activeWindow(), own.winId());
        letPass();
        useAnotherProgram();
        OwnWindow other;

        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        letPass();

        QCOMPARE(activeWindow(), m_other->window());
    }
};

int main(int argumentCount, char** arguments)
{
    QGuiApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == kOther)
        return beOtherProgram();
    X11ActivationTest underOpenbox(u"openbox"_s);
    const int failures = QTest::qExec(&underOpenbox, argumentCount, arguments);
    X11ActivationAgainstPreventionTest underXfwm(u"xfwm4"_s);
    return failures + QTest::qExec(&underXfwm, argumentCount, arguments);
}

#include "X11ActivationTest.moc"
