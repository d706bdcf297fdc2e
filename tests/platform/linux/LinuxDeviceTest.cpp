#include "platform/linux/LinuxDevice.h"

#include "base/Version.h"

#include <QDir>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class LinuxDeviceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_root.emplace();
        QVERIFY(QDir(m_root->path()).mkdir(u"etc"_s));
    }

    void theNameIsTheOneItsUserGave_data()
    {
        QTest::addColumn<QByteArray>("machineInfo");
        QTest::addColumn<QString>("name");

        QTest::newRow("quoted") << QByteArray("PRETTY_HOSTNAME=\"Ann's computer\"\n") << u"Ann's computer"_s;
        QTest::newRow("bare") << QByteArray("CHASSIS=laptop\nPRETTY_HOSTNAME=laptop") << u"laptop"_s;
        QTest::newRow("escapes") << QByteArray("PRETTY_HOSTNAME=\"a \\\"b\\\" \\$c \\\\\"\n") << u"a \"b\" $c \\"_s;
        QTest::newRow("single quotes") << QByteArray("PRETTY_HOSTNAME='a \\b \"c\"'\n") << u"a \\b \"c\""_s;
        QTest::newRow("other scripts") << QByteArray("PRETTY_HOSTNAME=\"B\xc3\xbcro \xf0\x9f\x92\xb5\"")
                                       << u"B\u00fcro \U0001f4b5"_s;
        QTest::newRow("the last one counts") << QByteArray("PRETTY_HOSTNAME=a\nPRETTY_HOSTNAME=b\n") << u"b"_s;
        QTest::newRow("a comment") << QByteArray("#PRETTY_HOSTNAME=a\n") << u"workshop"_s;
        QTest::newRow("empty") << QByteArray("PRETTY_HOSTNAME=\"\"\n") << u"workshop"_s;
        QTest::newRow("blank") << QByteArray("PRETTY_HOSTNAME=\"  \"\n") << u"workshop"_s;
        QTest::newRow("another key") << QByteArray("XPRETTY_HOSTNAME=a\n") << u"workshop"_s;
        QTest::newRow("nothing") << QByteArray() << u"workshop"_s;
    }

    void theNameIsTheOneItsUserGave()
    {
        QFETCH(QByteArray, machineInfo);
        QFETCH(QString, name);
        write(u"machine-info"_s, machineInfo);
        write(u"hostname"_s, "# comment\n\n workshop \n");

        QCOMPARE(LinuxDevice(m_root->path()).name(), name);
    }

    void withoutFilesTheKernelsNameCounts()
    {
        const LinuxDevice device(m_root->path());

        QCOMPARE(device.name().value_or(QString()), QSysInfo::machineHostName());
    }

    void aNewNameIsSeenAtOnce()
    {
        const LinuxDevice device(m_root->path());
        write(u"hostname"_s, "first\n");
        QCOMPARE(device.name(), u"first"_s);

        write(u"machine-info"_s, "PRETTY_HOSTNAME=Second\n");

        QCOMPARE(device.name(), u"Second"_s);
    }

    void theVersionIsTheBuilds()
    {
        QCOMPARE(LinuxDevice().applicationVersion(), QString(kVersion));
        QVERIFY(!kVersion.isEmpty());
    }

private:
    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(m_root->filePath(u"etc/"_s + name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    std::optional<QTemporaryDir> m_root;
};

QTEST_GUILESS_MAIN(LinuxDeviceTest)

#include "LinuxDeviceTest.moc"
