#include "platform/linux/login/AutostartLoginItem.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;
/// Sessions start their entries at once, in no certain order.
constexpr int kPauseMs = 300;

void write(const QString& path, const QString& text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Append));
    file.write(text.toUtf8());
}

} // namespace

/// Real session managers, and what they make of the entry. The test runs on a desktop without a panel.
class LoginAtSessionTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // XFCE's session wants a program to start besides, and would leave its agents behind. Its settings come from a
        // service that belongs to the desktop around the test.
        const auto folder = QDir::homePath() + u"/.config/xfce4/xfconf/xfce-perchannel-xml"_s;
        QVERIFY(QDir().mkpath(folder));
        write(folder + u"/xfce4-session.xml"_s, uR"(<?xml version="1.0"?>
<channel name="xfce4-session" version="1.0">
  <property name="general" type="empty"><property name="FailsafeSessionName" type="string" value="Failsafe"/></property>
  <property name="sessions" type="empty"><property name="Failsafe" type="empty">
    <property name="IsFailsafe" type="bool" value="true"/>
    <property name="Count" type="int" value="1"/>
    <property name="Client0_Command" type="array"><value type="string" value="true"/></property>
    <property name="Client0_PerScreen" type="bool" value="false"/>
  </property></property>
  <property name="startup" type="empty">
    <property name="ssh-agent" type="empty"><property name="enabled" type="bool" value="false"/></property>
    <property name="gpg-agent" type="empty"><property name="enabled" type="bool" value="false"/></property>
  </property>
</channel>
)"_s);
    }

    void init()
    {
        m_home.emplace();
        for (const auto& folder : {u"bin dir"_s, u"empty"_s, u"config/autostart"_s})
            QVERIFY(QDir(m_home->path()).mkpath(folder));
        addProgram(u"orvella"_s);
        addProgram(u"control"_s);
        write(path(u"config/autostart/control.desktop"_s),
            u"[Desktop Entry]\nType=Application\nName=Control\nExec=\"%1\"\n"_s.arg(path(u"bin dir/control"_s)));
    }

    void theStatusIsWhatTheSessionDoes_data()
    {
        QTest::addColumn<QString>("session");
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QString>("lines");
        QTest::addColumn<bool>("starts");

        const std::initializer_list<std::pair<QString, QString>> sessions {
            {u"xfce4-session"_s, u"XFCE"_s}, {u"mate-session"_s, u"MATE"_s}, {u"lxqt-session"_s, u"LXQt"_s}};
        for (const auto& [session, desktop] : sessions) {
            const auto row = [&](const char* name, const QString& lines, bool starts) {
                QTest::addRow("%s, %s", qPrintable(session), name) << session << desktop << lines << starts;
            };
            row("as it is", u""_s, true);
            row("hidden", u"Hidden=true\n"_s, false);
            row("for others", u"OnlyShowIn=GNOME;\n"_s, false);
        }
        const auto xfce = [](const char* name, const QString& lines, bool starts) {
            QTest::newRow(name) << u"xfce4-session"_s << u"XFCE"_s << lines << starts;
        };
        xfce("xfce4-session, for this one", u"OnlyShowIn=GNOME;XFCE;\n"_s, true);
        xfce("xfce4-session, not for this one", u"NotShowIn=XFCE;\n"_s, false);
        xfce("xfce4-session, forced", u"OnlyShowIn=GNOME;\nX-XFCE-Autostart-Override=true\n"_s, true);
    }

    void theStatusIsWhatTheSessionDoes()
    {
        QFETCH(const QString, session);
        QFETCH(const QString, desktop);
        QFETCH(const QString, lines);
        QFETCH(const bool, starts);
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CURRENT_DESKTOP"_s, desktop);
        environment.insert(u"XDG_CONFIG_HOME"_s, path(u"config"_s));
        // What the machine starts for everybody is left out.
        environment.insert(u"XDG_CONFIG_DIRS"_s, path(u"empty"_s));
        AutostartLoginItem item(
            {path(u"config/autostart"_s), {path(u"bin dir/orvella"_s), u"--autostart"_s}, environment});
        QVERIFY(item.registerItem());
        write(path(u"config/autostart/io.orvella.Orvella.desktop"_s), lines);

        QProcess process;
        process.setProcessEnvironment(environment);
        process.setStandardOutputFile(path(u"session.log"_s));
        process.setStandardErrorFile(path(u"session.log"_s), QIODevice::Append);
        process.start(session, QStringList());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(u"control.log"_s)), kPatienceMs);
        QTest::qWait(kPauseMs);
        process.terminate();
        QVERIFY(process.waitForFinished(kPatienceMs));

        QCOMPARE(item.status() == LoginItem::Status::enabled, starts);
        QCOMPARE(QFile::exists(path(u"orvella.log"_s)), starts);
        if (starts)
            QCOMPARE(read(path(u"orvella.log"_s)), u"--autostart\n"_s);
    }

private:
    [[nodiscard]] QString path(const QString& name) const { return m_home->filePath(name); }

    /// A program that writes down its arguments.
    void addProgram(const QString& name) const
    {
        const auto program = path(u"bin dir/"_s + name);
        write(program, u"#!/bin/sh\necho \"$*\" >>\"%1\"\n"_s.arg(path(name + u".log"_s)));
        QVERIFY(QFile::setPermissions(program, QFile::Permissions(0x7755)));
    }

    static QString read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    std::optional<QTemporaryDir> m_home;
};

QTEST_GUILESS_MAIN(LoginAtSessionTest)

#include "LoginAtSessionTest.moc"
