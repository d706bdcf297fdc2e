#include "api/CurlLibrary.h"

#include <QRegularExpression>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class CurlLibraryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void libcurlIsLoadedAndCanBeUsed()
    {
        const CurlLibrary curl;

        QVERIFY(curl.isReady());
        auto* const easy = curl.easyInit();
        QVERIFY(easy != nullptr);
        QCOMPARE(curl.easySetopt(easy, CURLOPT_URL, "https://service.example/"), CURLE_OK);
        curl.easyCleanup(easy);
    }

    void severalAreReadyAtOnce()
    {
        const CurlLibrary first;
        {
            const CurlLibrary second;
            QVERIFY(second.isReady());
        }

        auto* const easy = first.easyInit();

        QVERIFY(easy != nullptr);
        first.easyCleanup(easy);
    }

    void aLibraryThatIsNotThereIsSaidSo()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^libcurl cannot be used: .*orvella-nothing"_s));

        const CurlLibrary nothing(u"orvella-nothing"_s);

        QVERIFY(!nothing.isReady());
    }
};

QTEST_GUILESS_MAIN(CurlLibraryTest)
#include "CurlLibraryTest.moc"
