#include "base/WebAddress.h"

#include "support/Corpus.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class WebAddressCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void noAddressHasAnotherHostThanBrowsersSee_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<bool>("isFailure");
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("scheme");

        const auto table = Corpus::json(u"url/urltestdata-part.json"_s);
        for (const auto& entry : *table.array()) {
            const auto input = Corpus::text(entry, u"input"_s);
            const auto* const failure = Corpus::member(entry, u"failure"_s).boolean();
            QTest::addRow("%s", qUtf8Printable(input))
                << input << (failure != nullptr && *failure) << Corpus::text(entry, u"hostname"_s)
                << Corpus::text(entry, u"protocol"_s);
        }
    }

    void noAddressHasAnotherHostThanBrowsersSee()
    {
        QFETCH(QString, input);
        QFETCH(bool, isFailure);
        QFETCH(QString, host);
        QFETCH(QString, scheme);

        const auto address = webAddress(input);

        if (!address)
            return;
        QVERIFY(!isFailure);
        QCOMPARE(Corpus::hostIn(address->host(QUrl::FullyEncoded)), Corpus::hostIn(host));
        QCOMPARE(address->scheme() + u':', scheme);
    }

    void manyAddressesOfTheTableAreAccepted()
    {
        const auto table = Corpus::json(u"url/urltestdata-part.json"_s);
        int accepted = 0;

        for (const auto& entry : *table.array())
            accepted += webAddress(Corpus::text(entry, u"input"_s)) ? 1 : 0;

        QVERIFY2(accepted >= 30, qPrintable(QString::number(accepted)));
    }
};

QTEST_GUILESS_MAIN(WebAddressCorpusTest)

#include "WebAddressCorpusTest.moc"
