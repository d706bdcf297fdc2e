#include "platform/linux/environment/XdgDirectories.h"

#include <QDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

QProcessEnvironment environment(const std::vector<std::pair<QString, QString>>& variables)
{
    QProcessEnvironment made;
    for (const auto& [name, value] : variables)
        made.insert(name, value);
    return made;
}

} // namespace

class XdgDirectoriesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void withoutVariablesTheDefaultsUnderHomeCount()
    {
        const XdgDirectories directories(environment({{u"HOME"_s, u"/home/ann"_s}}), std::nullopt);

        QCOMPARE(directories.config(), u"/home/ann/.config/orvella"_s);
        QCOMPARE(directories.state(), u"/home/ann/.local/state/orvella"_s);
        QCOMPARE(directories.data(), u"/home/ann/.local/share/orvella"_s);
        QCOMPARE(directories.autostart(), u"/home/ann/.config/autostart"_s);
        QCOMPARE(directories.applications(),
            QStringList({u"/home/ann/.local/share/applications"_s, u"/usr/local/share/applications"_s,
                u"/usr/share/applications"_s}));
        QCOMPARE(directories.icons(),
            QStringList({u"/home/ann/.local/share/icons"_s, u"/usr/local/share/icons"_s, u"/usr/share/icons"_s}));
    }

    void theVariablesCount()
    {
        const XdgDirectories directories(
            environment({{u"HOME"_s, u"/home/ann"_s}, {u"XDG_CONFIG_HOME"_s, u"/c/"_s}, {u"XDG_STATE_HOME"_s, u"/s"_s},
                {u"XDG_DATA_HOME"_s, u"/d"_s}, {u"XDG_DATA_DIRS"_s, u"/one:/two/"_s}}),
            std::nullopt);

        QCOMPARE(directories.config(), u"/c/orvella"_s);
        QCOMPARE(directories.state(), u"/s/orvella"_s);
        QCOMPARE(directories.data(), u"/d/orvella"_s);
        QCOMPARE(directories.autostart(), u"/c/autostart"_s);
        QCOMPARE(directories.applications(),
            QStringList({u"/d/applications"_s, u"/one/applications"_s, u"/two/applications"_s}));
        QCOMPARE(directories.icons(), QStringList({u"/d/icons"_s, u"/one/icons"_s, u"/two/icons"_s}));
    }

    void relativeAndEmptyVariablesAreIgnored()
    {
        const XdgDirectories directories(
            environment({{u"HOME"_s, u"/home/ann"_s}, {u"XDG_CONFIG_HOME"_s, u"c"_s}, {u"XDG_STATE_HOME"_s, u""_s},
                {u"XDG_DATA_HOME"_s, u"./d"_s}, {u"XDG_DATA_DIRS"_s, u"one::../two"_s}}),
            std::nullopt);

        QCOMPARE(directories.config(), u"/home/ann/.config/orvella"_s);
        QCOMPARE(directories.state(), u"/home/ann/.local/state/orvella"_s);
        QCOMPARE(directories.data(), u"/home/ann/.local/share/orvella"_s);
        QCOMPARE(directories.applications().size(), 3);
    }

    void aProfileTakesEverythingThatIsWritten()
    {
        const XdgDirectories directories(
            environment({{u"HOME"_s, u"/home/ann"_s}, {u"XDG_CONFIG_HOME"_s, u"/c"_s}}), u"/try"_s);

        QCOMPARE(directories.config(), u"/try/config"_s);
        QCOMPARE(directories.state(), u"/try/state"_s);
        QCOMPARE(directories.data(), u"/try/data"_s);
        QCOMPARE(directories.autostart(), u"/try/autostart"_s);
        QCOMPARE(directories.applications().constFirst(), u"/home/ann/.local/share/applications"_s);
        QCOMPARE(directories.icons().constFirst(), u"/home/ann/.local/share/icons"_s);
    }

    void aRelativeProfileIsTakenFromTheWorkingFolder()
    {
        const XdgDirectories directories(environment({{u"HOME"_s, u"/home/ann"_s}}), u"build/../try"_s);

        QCOMPARE(directories.config(), QDir::currentPath() + u"/try/config"_s);
    }

    void withoutAHomeTheUsersOwnIsTaken()
    {
        const XdgDirectories directories(environment({}), std::nullopt);

        QCOMPARE(directories.config(), QDir::homePath() + u"/.config/orvella"_s);
    }
};

QTEST_GUILESS_MAIN(XdgDirectoriesTest)

#include "XdgDirectoriesTest.moc"
