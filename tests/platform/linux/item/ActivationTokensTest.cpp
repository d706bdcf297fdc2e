#include "platform/linux/item/ActivationTokens.h"

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

    void aTokenOf1024CharactersIsTaken()
    {
        const QString token(1024, u'x');
        ActivationTokens tokens;
        tokens.receive(token);

        QCOMPARE(tokens.take(), token);
    }

    void whatHas1025CharactersIsNoToken()
    {
        ActivationTokens tokens;
        tokens.receive(u"first"_s);
        tokens.receive(QString(1025, u'x'));

        QCOMPARE(tokens.take(), u"first"_s);
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
