#include "api/ServiceAddress.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <tuple>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class ServiceAddressTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void thePathIsResolvedAgainstTheBase_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("address");

        const auto row = [](const char* name, const QString& base, const QString& path, const QString& address) {
            QTest::newRow(name) << base << path << address;
        };
        row("a bare origin", u"https://a.example"_s, u"/api/mac/wallet"_s, u"https://a.example/api/mac/wallet"_s);
        row("without a leading slash", u"https://a.example"_s, u"api/mac/wallet"_s,
            u"https://a.example/api/mac/wallet"_s);
        row("an origin and a slash", u"https://a.example/"_s, u"/api/mac/wallet"_s,
            u"https://a.example/api/mac/wallet"_s);
        row("a port", u"http://127.0.0.1:8787"_s, u"/api/mac/wallet"_s, u"http://127.0.0.1:8787/api/mac/wallet"_s);
        row("a prefix that ends in a slash stays", u"https://a.example/pre/fix/"_s, u"/api/x"_s,
            u"https://a.example/pre/fix/api/x"_s);
        row("a prefix that does not loses its last segment", u"https://a.example/pre/fix"_s, u"/api/x"_s,
            u"https://a.example/pre/api/x"_s);
        row("two slashes start at the root", u"https://a.example/pre/fix/"_s, u"//api/x"_s,
            u"https://a.example/api/x"_s);
        row("three slashes name a host", u"https://a.example/pre/"_s, u"///b.example/x"_s, u"https://b.example/x"_s);
        row("a query is kept", u"https://a.example/?q"_s, u"/api/x?y=1"_s, u"https://a.example/api/x?y=1"_s);
        row("the query of the base is not", u"https://a.example/p?q"_s, u"/api/x"_s, u"https://a.example/api/x"_s);
        row("nothing but a slash", u"https://a.example/pre/"_s, u"/"_s, u"https://a.example/pre/"_s);
        row("nothing", u"https://a.example/pre/"_s, u""_s, u"https://a.example/pre/"_s);
        row("escapes stay", u"https://a.example/"_s, u"/a%2Fb%20c"_s, u"https://a.example/a%2Fb%20c"_s);
    }

    void thePathIsResolvedAgainstTheBase()
    {
        QFETCH(QString, base);
        QFETCH(QString, path);
        QFETCH(QString, address);

        QCOMPARE(QString::fromLatin1(ServiceAddress::resolve(QUrl(base), path).toEncoded()), address);
    }

    void whatCannotBeResolvedStopsTheProgram_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("path");

        QTest::newRow("no reference") << u"https://a.example/"_s << u"/a b<"_s;
        QTest::newRow("a broken host") << u"https://a.example/"_s << u"///[x"_s;
        QTest::newRow("a base without a scheme") << u"a.example"_s << u"/api/x"_s;
    }

    void whatCannotBeResolvedStopsTheProgram()
    {
        QFETCH(QString, base);
        QFETCH(QString, path);
        QProcess child;

        child.start(QCoreApplication::applicationFilePath(), {u"--resolve"_s, base, path});

        QVERIFY(child.waitForFinished());
        QVERIFY(child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0);
        QVERIFY(child.readAllStandardError().contains("A request path cannot be resolved"));
    }

    void whatCanBeResolvedDoesNotStopTheProgram()
    {
        QProcess child;

        child.start(QCoreApplication::applicationFilePath(), {u"--resolve"_s, u"https://a.example/"_s, u"/api/x"_s});

        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QCOMPARE(child.exitCode(), 0);
    }
};

int main(int argumentCount, char** arguments)
{
    const QCoreApplication application(argumentCount, arguments);
    const auto given = QCoreApplication::arguments();
    if (given.value(1) == u"--resolve"_s) {
        std::ignore = ServiceAddress::resolve(QUrl(given.value(2)), given.value(3));
        return 0;
    }
    ServiceAddressTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "ServiceAddressTest.moc"
