#include "platform/linux/ActivationTokens.h"

#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;

class ActivationTokensTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aTokenIsGivenOutOnce()
    {
        ActivationTokens tokens;
        tokens.receive(u"first"_s);

        QCOMPARE(tokens.take(), u"first"_s);
        QCOMPARE(tokens.take(), QString());
    }

    void aNewerTokenTakesThePlaceOfAnOlderOne()
    {
        ActivationTokens tokens;
        tokens.receive(u"first"_s);
        tokens.receive(u"second"_s);

        QCOMPARE(tokens.take(), u"second"_s);
        QCOMPARE(tokens.take(), QString());
    }

    void withoutATokenThereIsNone()
    {
        ActivationTokens tokens;

        QCOMPARE(tokens.take(), QString());
    }
};

QTEST_GUILESS_MAIN(ActivationTokensTest)

#include "ActivationTokensTest.moc"
