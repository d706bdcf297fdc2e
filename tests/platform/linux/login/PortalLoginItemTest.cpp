#include "platform/linux/login/PortalLoginItem.h"

#include "support/FakeBackgroundPortal.h"

#include <QDBusConnection>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

using Status = LoginItem::Status;

namespace {

constexpr int kPauseMs = 100;

} // namespace

class PortalLoginItemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        m_outcomes.clear();
        m_portal = std::make_unique<FakeBackgroundPortal>();
        m_portal->start();
        m_item = item();
    }

    void cleanup()
    {
        m_item.reset();
        m_portal.reset();
    }

    void nothingIsRegisteredAndNobodyIsAskedBeforeTheViewerWantsIt()
    {
        QTest::qWait(kPauseMs);

        QCOMPARE(m_item->status(), Status::notRegistered);
        QVERIFY(m_portal->requests().isEmpty());
    }

    void everythingIsSaidInEachRequest()
    {
        QVERIFY(m_item->registerItem());
        QTRY_COMPARE(m_portal->requests().size(), 1);
        m_portal->answer(0, 0, true);
        QTRY_COMPARE(m_outcomes.size(), 1);
        QVERIFY(m_item->unregisterItem());
        QTRY_COMPARE(m_portal->requests().size(), 2);

        for (const bool wanted : {true, false}) {
            const auto options = m_portal->requests().at(wanted ? 0 : 1);
            QCOMPARE(options.value(u"autostart"_s), QVariant(wanted));
            QCOMPARE(options.value(u"commandline"_s), QVariant(QStringList {u"orvella"_s, u"--autostart"_s}));
            QCOMPARE(options.value(u"dbus-activatable"_s), QVariant(false));
            QVERIFY(!options.value(u"reason"_s).toString().isEmpty());
            QVERIFY(!options.value(u"handle_token"_s).toString().isEmpty());
        }
        QVERIFY(m_portal->path(0) != m_portal->path(1));
    }

    void theItemIsWhatThePortalAnswers_data()
    {
        QTest::addColumn<uint>("response");
        QTest::addColumn<QVariantMap>("results");
        QTest::addColumn<Status>("status");
        const auto autostart = [](const QVariant& value) { return QVariantMap {{u"autostart"_s, value}}; };
        QTest::newRow("granted") << 0U << autostart(true) << Status::enabled;
        QTest::newRow("refused by the viewer") << 1U << QVariantMap() << Status::requiresApproval;
        QTest::newRow("refused by the viewer, in all words") << 1U << autostart(false) << Status::requiresApproval;
        QTest::newRow("granted and refused") << 1U << autostart(true) << Status::requiresApproval;
        QTest::newRow("background only") << 0U << autostart(false) << Status::requiresApproval;
        QTest::newRow("not a word of it") << 0U << QVariantMap() << Status::requiresApproval;
        QTest::newRow("another end") << 2U << QVariantMap() << Status::requiresApproval;
    }

    void theItemIsWhatThePortalAnswers()
    {
        QFETCH(const uint, response);
        QFETCH(const QVariantMap, results);
        QFETCH(const Status, status);

        QVERIFY(m_item->registerItem());
        QTRY_COMPARE(m_portal->requests().size(), 1);
        QCOMPARE(m_item->status(), Status::notRegistered);
        m_portal->answer(0, response, results);

        QTRY_COMPARE(m_outcomes.size(), 1);
        QCOMPARE(m_item->status(), status);
        QCOMPARE(m_outcomes.first().has_value(), status == Status::enabled);
        if (status != Status::enabled) {
            QCOMPARE(m_outcomes.first().error().kind, Failure::Kind::refused);
            QCOMPARE(m_outcomes.first().error().description, u"The desktop does not let Orvella start at login."_s);
        }
    }

    void theAnswerIsKeptForTheNextRun_data()
    {
        QTest::addColumn<uint>("response");
        QTest::addColumn<bool>("autostart");
        QTest::addColumn<Status>("status");
        QTest::newRow("granted") << 0U << true << Status::enabled;
        QTest::newRow("refused") << 1U << false << Status::requiresApproval;
    }

    void theAnswerIsKeptForTheNextRun()
    {
        QFETCH(const uint, response);
        QFETCH(const bool, autostart);
        registerAndAnswer(response, autostart);

        const auto next = item();

        QTEST(next->status(), "status");
    }

    void anItemThatIsTakenAwayIsGoneInTheNextRun()
    {
        registerAndAnswer(0, true);

        QVERIFY(m_item->unregisterItem());
        QTRY_COMPARE(m_portal->requests().size(), 2);
        QCOMPARE(m_item->status(), Status::enabled);
        m_portal->answer(1, 0, false);

        QTRY_COMPARE(m_outcomes.size(), 2);
        QVERIFY(m_outcomes.last());
        QCOMPARE(m_item->status(), Status::notRegistered);
        QCOMPARE(item()->status(), Status::notRegistered);
    }

    void anItemThatThePortalDoesNotTakeAwayIsStillThere()
    {
        registerAndAnswer(0, true);

        QVERIFY(m_item->unregisterItem());
        QTRY_COMPARE(m_portal->requests().size(), 2);
        m_portal->answer(1, 2, true);

        QTRY_COMPARE(m_outcomes.size(), 2);
        QVERIFY(!m_outcomes.last());
        QCOMPARE(m_item->status(), Status::enabled);
    }

    void theAnswerMayComeBeforeTheReplyToTheQuestion()
    {
        m_portal->reply = FakeBackgroundPortal::Reply::afterTheAnswer;

        registerAndAnswer(0, true);
        QTest::qWait(kPauseMs);

        QCOMPARE(m_item->status(), Status::enabled);
        QCOMPARE(m_outcomes.size(), 1);
    }

    void aPortalMayChooseThePathOfTheRequest()
    {
        m_portal->ownPath = u"/org/freedesktop/portal/desktop/request/1"_s;
        QVERIFY(m_item->registerItem());
        QTRY_COMPARE(m_portal->requests().size(), 1);
        QTest::qWait(kPauseMs);

        m_portal->answer(0, 0, true);

        QTRY_COMPARE(m_item->status(), Status::enabled);
    }

    void withoutAPortalNothingChanges()
    {
        m_portal->stop();

        QVERIFY(m_item->registerItem());

        QTRY_COMPARE(m_outcomes.size(), 1);
        QVERIFY(!m_outcomes.first());
        QCOMPARE(
            m_outcomes.first().error().description, u"The desktop cannot change whether Orvella starts at login."_s);
        QCOMPARE(m_item->status(), Status::notRegistered);
        QCOMPARE(item()->status(), Status::notRegistered);
    }

    void withoutABusTheCallFails()
    {
        PortalLoginItem nowhere(
            QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s), {u"orvella"_s}, file());

        QVERIFY(!nowhere.registerItem());
        QVERIFY(!nowhere.unregisterItem());
        QCOMPARE(nowhere.status(), Status::notRegistered);
    }

    void aPortalThatRefusesTheQuestionChangesNothing()
    {
        m_portal->reply = FakeBackgroundPortal::Reply::refused;

        QVERIFY(m_item->registerItem());

        QTRY_COMPARE(m_outcomes.size(), 1);
        QVERIFY(!m_outcomes.first());
        QCOMPARE(m_item->status(), Status::notRegistered);
    }

    void aPortalThatEndsBeforeTheAnswerChangesNothing_data()
    {
        QTest::addColumn<int>("reply");
        QTest::newRow("after the reply") << static_cast<int>(FakeBackgroundPortal::Reply::beforeTheAnswer);
        QTest::newRow("before the reply") << static_cast<int>(FakeBackgroundPortal::Reply::never);
    }

    void aPortalThatEndsBeforeTheAnswerChangesNothing()
    {
        QFETCH(const int, reply);
        m_portal->reply = static_cast<FakeBackgroundPortal::Reply>(reply);
        registerAndAnswer(0, true);

        QVERIFY(m_item->unregisterItem());
        QTRY_COMPARE(m_portal->requests().size(), 2);
        QTest::qWait(kPauseMs);
        m_portal->stop();

        QTRY_COMPARE(m_outcomes.size(), 2);
        QVERIFY(!m_outcomes.last());
        QCOMPARE(m_item->status(), Status::enabled);
        QTest::qWait(kPauseMs);
        QCOMPARE(m_outcomes.size(), 2);
    }

    void aLaterRequestTakesTheEarlierOneBack()
    {
        QVERIFY(m_item->registerItem());
        QTRY_COMPARE(m_portal->requests().size(), 1);

        QVERIFY(m_item->unregisterItem());
        QTRY_COMPARE(m_portal->requests().size(), 2);
        QTRY_COMPARE(m_portal->closed(), QStringList {m_portal->path(0)});

        // What the portal says to the earlier one all the same does not count.
        m_portal->answer(1, 0, false);
        QTRY_COMPARE(m_outcomes.size(), 1);
        m_portal->answer(0, 0, true);
        QTest::qWait(kPauseMs);
        QCOMPARE(m_outcomes.size(), 1);
        QVERIFY(m_outcomes.first());
        QCOMPARE(m_item->status(), Status::notRegistered);
    }

    void anAnswerCountsOnce()
    {
        registerAndAnswer(0, true);

        m_portal->answer(0, 1, false);
        QTest::qWait(kPauseMs);

        QCOMPARE(m_item->status(), Status::enabled);
        QCOMPARE(m_outcomes.size(), 1);
        QVERIFY(m_portal->closed().isEmpty());
    }

    void anAnswerAfterTheEndOfTheItemIsLost()
    {
        QVERIFY(m_item->registerItem());
        QTRY_COMPARE(m_portal->requests().size(), 1);

        m_item.reset();
        m_portal->answer(0, 0, true);
        QTest::qWait(kPauseMs);

        QCOMPARE(m_outcomes.size(), 0);
        QCOMPARE(item()->status(), Status::notRegistered);
    }

    void aFileThatSaysSomethingElseSaysNothing()
    {
        QFile other(file());
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.write("enabled\nenabled\n");
        other.close();

        QCOMPARE(item()->status(), Status::notRegistered);
    }

private:
    [[nodiscard]] QString file() const { return m_folder->filePath(u"login-item"_s); }

    std::unique_ptr<PortalLoginItem> item()
    {
        auto made = std::make_unique<PortalLoginItem>(
            QDBusConnection::sessionBus(), QStringList {u"orvella"_s, u"--autostart"_s}, file());
        made->watch([this](const Result<void>& outcome) { m_outcomes.append(outcome); });
        return made;
    }

    void registerAndAnswer(uint response, bool autostart)
    {
        QVERIFY(m_item->registerItem());
        QTRY_COMPARE(m_portal->requests().size(), 1);
        m_portal->answer(0, response, autostart);
        QTRY_COMPARE(m_outcomes.size(), 1);
    }

    std::optional<QTemporaryDir> m_folder;
    std::unique_ptr<FakeBackgroundPortal> m_portal;
    std::unique_ptr<PortalLoginItem> m_item;
    QList<Result<void>> m_outcomes;
};

QTEST_GUILESS_MAIN(PortalLoginItemTest)

#include "PortalLoginItemTest.moc"
