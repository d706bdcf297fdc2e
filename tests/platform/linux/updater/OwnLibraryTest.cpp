#include "platform/linux/updater/OwnLibrary.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr auto kQuestion = "--where"_L1;

QString place()
{
    return ownLibrary(u"some.so"_s);
}

/// What this program answers where it is called by another name.
QString placeSaidBy(QProcess& process)
{
    if (!process.waitForFinished())
        qFatal("The program does not end.");
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

} // namespace

class OwnLibraryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itLiesWhereTheExecutableLies()
    {
        const auto executables = QFileInfo(QCoreApplication::applicationDirPath()).canonicalFilePath();

        QVERIFY(QDir::isAbsolutePath(place()));
        QCOMPARE(place(), QDir::cleanPath(executables + u"/" ORVELLA_LIBRARY_FOLDER "/some.so"_s));
    }

    void theWorkingDirectoryHasNoSay()
    {
        const auto before = place();
        const auto directory = QDir::currentPath();
        const QTemporaryDir elsewhere;

        QVERIFY(QDir::setCurrent(elsewhere.path()));
        const auto after = place();
        QVERIFY(QDir::setCurrent(directory));

        QCOMPARE(after, before);
    }

    void theNameThatTheProgramIsCalledByHasNoSay()
    {
        const QTemporaryDir elsewhere;
        const auto link = elsewhere.filePath(u"bin-orvella"_s);
        QVERIFY(QFile::link(QCoreApplication::applicationFilePath(), link));
        QProcess process;

        process.start(link, {kQuestion});

        QCOMPARE(placeSaidBy(process), place());
    }

    void theEnvironmentHasNoSay()
    {
        const QTemporaryDir elsewhere;
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto* const name : {"PATH", "PWD", "HOME", "LD_LIBRARY_PATH", "QT_PLUGIN_PATH", "XDG_DATA_HOME"})
            environment.insert(QString::fromLatin1(name), elsewhere.path());
        QProcess process;
        process.setProcessEnvironment(environment);

        process.start(QCoreApplication::applicationFilePath(), {kQuestion});

        QCOMPARE(placeSaidBy(process), place());
    }
};

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().value(1) == kQuestion) {
        std::puts(place().toLocal8Bit().constData());
        return 0;
    }
    OwnLibraryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "OwnLibraryTest.moc"
