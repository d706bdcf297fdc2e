#include "api/ServiceAddress.h"

#include "base/WebAddress.h"
#include "support/Corpus.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class ServiceAddressCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void referencesResolveByTheStandard_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("reference");
        QTest::addColumn<QString>("result");

        const auto table = Corpus::json(u"url/rfc3986-5.4.1.json"_s);
        for (const auto& entry : *Corpus::member(table, u"cases"_s).array()) {
            const auto reference = Corpus::text(entry, u"reference"_s);
            QTest::addRow("'%s'", qUtf8Printable(reference))
                << Corpus::text(table, u"base"_s) << reference << Corpus::text(entry, u"result"_s);
        }
    }

    void referencesResolveByTheStandard()
    {
        QFETCH(QString, base);
        QFETCH(QString, reference);
        QFETCH(QString, result);

        const auto address = ServiceAddress::resolve(QUrl(base), u'/' + reference);

        QCOMPARE(QString::fromLatin1(address.toEncoded()), result);
        if (!reference.startsWith(u'/'))
            QCOMPARE(ServiceAddress::resolve(QUrl(base), reference), address);
    }

    void noReferenceLeadsToAnotherHostThanBrowsersSee_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("reference");
        QTest::addColumn<bool>("isFailure");
        QTest::addColumn<QString>("host");

        const auto table = Corpus::json(u"url/urltestdata-part.json"_s);
        for (const auto& entry : *table.array()) {
            const auto base = Corpus::text(entry, u"base"_s);
            const auto reference = Corpus::text(entry, u"input"_s);
            // A service has a web address; a text that is no reference stops the program.
            if (!webAddress(base) || !QUrl(reference, QUrl::StrictMode).isValid())
                continue;
            const auto* const failure = Corpus::member(entry, u"failure"_s).boolean();
            QTest::addRow("%s + %s", qUtf8Printable(base), qUtf8Printable(reference))
                << base << reference << (failure != nullptr && *failure) << Corpus::text(entry, u"hostname"_s);
        }
    }

    void noReferenceLeadsToAnotherHostThanBrowsersSee()
    {
        QFETCH(QString, base);
        QFETCH(QString, reference);
        QFETCH(bool, isFailure);
        QFETCH(QString, host);

        const auto resolved = ServiceAddress::resolve(QUrl(base), u'/' + reference);

        const auto address = webAddress(QString::fromLatin1(resolved.toEncoded()));
        if (!address)
            return;
        // A reference that is an address itself is judged as it is written: QUrl mends a few.
        if (isFailure)
            QVERIFY(!QUrl(reference).isRelative() && !webAddress(reference));
        else
            QCOMPARE(Corpus::hostIn(address->host(QUrl::FullyEncoded)), Corpus::hostIn(host));
    }
};

QTEST_GUILESS_MAIN(ServiceAddressCorpusTest)

#include "ServiceAddressCorpusTest.moc"
