#include "platform/linux/instance/InstanceLock.h"

#include "platform/linux/instance/DBusInstance.h"
#include "support/PrivateBus.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

using Request = Instance::Request;

namespace {

QDBusConnection noBus()
{
    return QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s);
}

} // namespace

/// Who is the first program where the session bus does not tell.
class InstanceLockTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder.emplace(); }

    void withoutABusTheFirstIsWhoHasTheLock()
    {
        auto first = std::make_unique<DBusInstance>(noBus(), options());
        DBusInstance second(noBus(), options());

        QVERIFY(first->claim(Request::reopen));
        QVERIFY(!second.claim(Request::reopen));

        first.reset();
        QVERIFY(second.claim(Request::reopen));
    }

    void whoFindsNoBusFindsTheOneThatHasTheName()
    {
        const PrivateBus session;
        DBusInstance first(QDBusConnection::connectToBus(session.address(), u"first"_s), options());
        DBusInstance second(noBus(), options());

        QVERIFY(first.claim(Request::reopen));
        QVERIFY(!second.claim(Request::reopen));
        QDBusConnection::disconnectFromBus(u"first"_s);
    }

    void twoSessionsHaveAProgramEach()
    {
        const PrivateBus session;
        const PrivateBus otherSession;
        DBusInstance first(QDBusConnection::connectToBus(session.address(), u"first"_s), options());
        DBusInstance second(QDBusConnection::connectToBus(otherSession.address(), u"second"_s), options());

        QVERIFY(first.claim(Request::reopen));
        QVERIFY(second.claim(Request::reopen));
        QDBusConnection::disconnectFromBus(u"first"_s);
        QDBusConnection::disconnectFromBus(u"second"_s);
    }

    void onABusThatGivesNobodyTheNameTheLockCounts()
    {
        const PrivateBus session("<policy context='default'><deny own='*'/></policy>");
        DBusInstance first(QDBusConnection::connectToBus(session.address(), u"first"_s), options());
        DBusInstance second(QDBusConnection::connectToBus(session.address(), u"second"_s), options());

        QVERIFY(first.claim(Request::reopen));
        QVERIFY(!second.claim(Request::reopen));
        QDBusConnection::disconnectFromBus(u"first"_s);
        QDBusConnection::disconnectFromBus(u"second"_s);
    }

    void aFileThatCannotBeMadeTellsNobodyApart()
    {
        InstanceLock first(u"/proc/nowhere/instance.lock"_s);
        InstanceLock second(u"/proc/nowhere/instance.lock"_s);

        QVERIFY(first.take());
        QVERIFY(second.take());
    }

    void theFileIsTheUsersAloneAndItsContentIsLeftAlone()
    {
        QFile file(path());
        QVERIFY(QDir(m_folder->path()).mkdir(u"state"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("kept");
        file.close();
        InstanceLock lock(path());

        QVERIFY(lock.take());

        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), "kept");
        file.remove();
        InstanceLock another(path());
        QVERIFY(another.take());
        QCOMPARE(QFile::permissions(path()) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther),
            QFile::Permissions());
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"state/instance.lock"_s); }

    [[nodiscard]] DBusInstance::Options options() const { return {{}, {}, {}, path()}; }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(InstanceLockTest)

#include "InstanceLockTest.moc"
