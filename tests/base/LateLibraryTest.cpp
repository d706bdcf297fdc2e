#include "base/LateLibrary.h"

#include <curl/curl.h>

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class LateLibraryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFunctionIsFoundByItsName()
    {
        LateLibrary library(u"curl"_s, 4);
        decltype(&curl_version_info) versionInfo = nullptr;

        library.find(versionInfo, "curl_version_info");

        QVERIFY(library.isWhole());
        QVERIFY(versionInfo != nullptr && versionInfo(CURLVERSION_NOW)->version_num >= LIBCURL_VERSION_NUM);
    }

    void aFunctionThatIsMissingIsNotForgottenOverALaterOne()
    {
        LateLibrary library(u"curl"_s, 4);
        decltype(&curl_version_info) first = nullptr;
        decltype(&curl_version_info) second = nullptr;

        library.find(first, "orvella_has_no_such_function");
        library.find(second, "curl_version_info");

        QVERIFY(!library.isWhole());
        QVERIFY(first == nullptr);
        QCOMPARE(library.missing(), u"orvella_has_no_such_function"_s);
    }

    void nothingIsFoundInALibraryThatIsNotThere()
    {
        LateLibrary library(u"orvella-nothing"_s, 1);
        decltype(&curl_version_info) versionInfo = [](CURLversion) -> curl_version_info_data* { return nullptr; };

        library.find(versionInfo, "curl_version_info");

        QVERIFY(!library.isWhole());
        QVERIFY(versionInfo == nullptr);
        QVERIFY(library.missing().contains(u"orvella-nothing"_s));
    }
};

QTEST_GUILESS_MAIN(LateLibraryTest)
#include "LateLibraryTest.moc"
