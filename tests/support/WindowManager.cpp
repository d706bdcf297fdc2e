#include "support/WindowManager.h"

#include "support/PlainWindow.h"

#include <QRegularExpression>
#include <QTest>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

QString printed(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The window of the window manager that is in charge, and its name; empty where there is none.
struct InCharge {
    QString window;
    QString name;
};

InCharge inCharge()
{
    static const QRegularExpression window(u"window id # (0x[0-9a-f]+)"_s);
    static const QRegularExpression name(u"= \"(.*)\""_s);
    const auto check = u"_NET_SUPPORTING_WM_CHECK"_s;
    const auto id = window.match(printed(u"xprop"_s, {u"-root"_s, check})).captured(1);
    if (id.isEmpty() || window.match(printed(u"xprop"_s, {u"-id"_s, id, check})).captured(1) != id)
        return {};
    return {id, name.match(printed(u"xprop"_s, {u"-id"_s, id, u"_NET_WM_NAME"_s})).captured(1)};
}

} // namespace

WindowManager::WindowManager(QString program)
    : m_program(std::move(program))
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

WindowManager::~WindowManager()
{
    m_process.terminate();
    m_process.waitForFinished();
}

bool WindowManager::start()
{
    const auto before = inCharge();
    m_process.start(m_program, {u"--replace"_s});
    const auto isInCharge = [this, &before] {
        const auto now = inCharge();
        return now.window != before.window && now.name.compare(m_program, Qt::CaseInsensitive) == 0;
    };
    // It may say so before it hears of new windows.
    const auto managesWindows = [] {
        const PlainWindow window({});
        return QTest::qWaitFor([&window] { return window.isShown(); }, 500);
    };
    return m_process.waitForStarted() && QTest::qWaitFor(isInCharge, 20000) && QTest::qWaitFor(managesWindows, 20000);
}

void WindowManager::crash()
{
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace orvella
