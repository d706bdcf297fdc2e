#include "core/WalletQuestions.h"
#include "support/FakeClock.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;

class WalletQuestionsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsOpenAtFirst()
    {
        const FakeClock clock;
        const WalletQuestions questions(clock);

        QVERIFY(!questions.areOpen());
    }

    void anAnswerIsNews()
    {
        const FakeClock clock;
        WalletQuestions questions(clock);

        QVERIFY(questions.answered(questions.ask()));
        QVERIFY(questions.answered(questions.ask()));
    }

    void anAnswerThatALaterOneHasOvertakenIsNone()
    {
        const FakeClock clock;
        WalletQuestions questions(clock);
        const auto early = questions.ask();
        const auto late = questions.ask();
        QVERIFY(questions.answered(late));

        QVERIFY(!questions.answered(early));
    }

    void aFailedQuestionIsOpenUntilALaterOneIsAnswered()
    {
        const FakeClock clock;
        WalletQuestions questions(clock);
        const auto early = questions.ask();
        questions.failed(questions.ask());
        QVERIFY(questions.areOpen());

        QVERIFY(questions.answered(early));
        QVERIFY(questions.areOpen());
        QVERIFY(questions.answered(questions.ask()));

        QVERIFY(!questions.areOpen());
    }

    void aFailureThatALaterAnswerHasOvertakenLeavesNothingOpen()
    {
        const FakeClock clock;
        WalletQuestions questions(clock);
        const auto early = questions.ask();
        QVERIFY(questions.answered(questions.ask()));

        questions.failed(early);

        QVERIFY(!questions.areOpen());
    }

    void aDoubtOutlastsAQuestionAskedAMomentBeforeItsEnd()
    {
        FakeClock clock;
        WalletQuestions questions(clock);
        questions.doubt();
        clock.advance(60s - 1ns);

        QVERIFY(questions.answered(questions.ask()));

        QVERIFY(questions.areOpen());
    }

    void aDoubtEndsWithAQuestionAskedAtItsEnd()
    {
        FakeClock clock;
        WalletQuestions questions(clock);
        questions.doubt();
        const auto early = questions.ask();
        clock.advance(60s);

        QVERIFY(questions.answered(questions.ask()));

        QVERIFY(!questions.areOpen());
        QVERIFY(!questions.answered(early));
        QVERIFY(!questions.areOpen());
    }
};

QTEST_APPLESS_MAIN(WalletQuestionsTest)

#include "WalletQuestionsTest.moc"
