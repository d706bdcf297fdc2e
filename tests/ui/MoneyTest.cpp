#include "ui/Money.h"

#include "platform/ViewerLocale.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <limits>
#include <tuple>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
// The greatest double below 2^63.
constexpr double kLast = 0x1.fffffffffffffp62;

/// A locale whose texts show that they are its own.
class Locale final : public ViewerLocale {
public:
    [[nodiscard]] std::optional<QString> languageCode() const override { return std::nullopt; }

    [[nodiscard]] QString usDollars(qint64 cents) const override { return u"<%1>"_s.arg(cents); }
};

/// Runs this program again for one call only and says whether it stopped itself, and how.
QByteArray endOf(const QString& call, double cents)
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {u"--call"_s, call, QString::number(cents, 'g', 17)});
    if (!child.waitForFinished())
        return "it did not end";
    if (child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0)
        return "it returned";
    return child.readAllStandardError();
}

} // namespace

class MoneyTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void anApproximateAmountIsWholeCentsRoundedDown_data()
    {
        QTest::addColumn<double>("cents");
        QTest::addColumn<QString>("text");

        const auto row = [](double cents, const QString& text) { QTest::addRow("%.17g", cents) << cents << text; };
        row(0.0, u"0 cent"_s);
        row(-0.0, u"0 cent"_s);
        row(0.4, u"0 cent"_s);
        row(0.999998, u"0 cent"_s);
        row(0.9999989, u"0 cent"_s);
        row(0.999999, u"1 cent"_s);
        row(1.0, u"1 cent"_s);
        row(12.0, u"12 cent"_s);
        row(12.999, u"12 cent"_s);
        row(12.9999995, u"13 cent"_s);
        row(25.75, u"25 cent"_s);
        row(1234567.9, u"1234567 cent"_s);
        row(-3.0, u"0 cent"_s);
        row(-kInfinity, u"0 cent"_s);
        row(kNan, u"0 cent"_s);
        row(kLast, u"9223372036854774784 cent"_s);
    }

    void anApproximateAmountIsWholeCentsRoundedDown()
    {
        QFETCH(double, cents);
        QFETCH(QString, text);

        QCOMPARE(Money::formatApproximate(cents), text);
    }

    void thePreciseDescriptionShowsCentsAndDollars_data()
    {
        QTest::addColumn<double>("cents");
        QTest::addColumn<QString>("figures");

        const auto row = [](double cents, const QString& figures) {
            QTest::addRow("%.17g", cents) << cents << figures;
        };
        row(12.5, u"12.5¢ ($0.125)"_s);
        row(7, u"7¢ ($0.07)"_s);
        row(0, u"0¢ ($0.00)"_s);
        row(0.123456, u"0.1235¢ ($0.001235)"_s);
        row(3.25, u"3.25¢ ($0.0325)"_s);
        row(1234567, u"1234567¢ ($12345.67)"_s);
        row(0x1p63, u"9223372036854776000¢ ($92233720368547760.00)"_s);
        row(-12.5, u"-12.5¢ (-$0.125)"_s);
        row(-0.0, u"-0¢ (-$0.00)"_s);
        row(-0.00004, u"-0¢ (-$0.00)"_s);
        row(kNan, u"NaN¢ ($NaN)"_s);
        row(kInfinity, u"INF¢ ($INF)"_s);
        row(-kInfinity, u"-INF¢ (-$INF)"_s);
    }

    void thePreciseDescriptionShowsCentsAndDollars()
    {
        QFETCH(double, cents);
        QFETCH(QString, figures);

        QCOMPARE(Money::preciseDescription(cents), u"Exact earnings: "_s + figures);
    }

    void tiesRoundToTheEvenDigitOfTheDecimalValue_data()
    {
        QTest::addColumn<double>("cents");
        QTest::addColumn<QString>("figures");

        const auto row = [](const char* cents, const QString& figures) {
            QTest::newRow(cents) << QByteArray(cents).toDouble() << figures;
        };
        row("0.03125", u"0.0312¢ ($0.000312)"_s);
        row("0.09375", u"0.0938¢ ($0.000938)"_s);
        // These ties are none in binary: the double is below or above the decimal value that it shows. A hundredth of
        // the first one shows as 0.0000014999999999999998 and is no tie.
        row("0.00015", u"0.0002¢ ($0.000001)"_s);
        row("0.00025", u"0.0002¢ ($0.000002)"_s);
        row("0.00035", u"0.0004¢ ($0.000004)"_s);
        row("0.00005", u"0¢ ($0.00)"_s);
        row("1.00005", u"1¢ ($0.01)"_s);
        row("12.34565", u"12.3456¢ ($0.123456)"_s);
        row("12.34575", u"12.3458¢ ($0.123458)"_s);
        row("-0.00025", u"-0.0002¢ (-$0.000002)"_s);
    }

    void tiesRoundToTheEvenDigitOfTheDecimalValue()
    {
        QFETCH(double, cents);
        QFETCH(QString, figures);

        QCOMPARE(Money::preciseDescription(cents), u"Exact earnings: "_s + figures);
    }

    void aBalanceFollowsTheViewersLocale()
    {
        QCOMPARE(Money::formatDollars(1234, Locale()), u"<1234>"_s);
        QCOMPARE(Money::formatDollars(-5, Locale()), u"<-5>"_s);
    }

    void theLifetimeFigureNeverShowsLessThanTheLastAd_data()
    {
        QTest::addColumn<qint64>("lifetime");
        QTest::addColumn<std::optional<double>>("last");
        QTest::addColumn<qint64>("shown");

        using Last = std::optional<double>;
        QTest::newRow("nothing earned yet in this run") << qint64 {10} << Last() << qint64 {10};
        QTest::newRow("the wallet is behind") << qint64 {10} << Last(12.5) << qint64 {12};
        QTest::newRow("the wallet has caught up") << qint64 {40} << Last(12.5) << qint64 {40};
        QTest::newRow("equal") << qint64 {12} << Last(12.5) << qint64 {12};
        QTest::newRow("a hair below") << qint64 {10} << Last(12.9999995) << qint64 {13};
        QTest::newRow("negative") << qint64 {0} << Last(-3.0) << qint64 {0};
        QTest::newRow("not a number") << qint64 {0} << Last(kNan) << qint64 {0};
        QTest::newRow("a negative lifetime and none earned") << qint64 {-5} << Last() << qint64 {0};
        QTest::newRow("the greatest") << qint64 {0} << Last(kLast) << qint64 {9223372036854774784};
    }

    void theLifetimeFigureNeverShowsLessThanTheLastAd()
    {
        QFETCH(qint64, lifetime);
        QFETCH(std::optional<double>, last);
        QFETCH(qint64, shown);

        QCOMPARE(Money::displayedLifetimeCents(lifetime, last), shown);
    }

    void anAmountThatIsTooLargeStopsTheProgram_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<double>("cents");

        for (const auto& call : {u"approximate"_s, u"lifetime"_s}) {
            QTest::addRow("%s of 2^63", qUtf8Printable(call)) << call << 0x1p63;
            QTest::addRow("%s of 1e300", qUtf8Printable(call)) << call << 1e300;
            QTest::addRow("%s of infinity", qUtf8Printable(call)) << call << kInfinity;
        }
    }

    void anAmountThatIsTooLargeStopsTheProgram()
    {
        QFETCH(QString, call);
        QFETCH(double, cents);

        QCOMPARE(endOf(call, 1), "it returned");
        QVERIFY(endOf(call, cents).contains("An amount of money is not below 2^63 cents."));
    }
};

int main(int argumentCount, char** arguments)
{
    QCoreApplication application(argumentCount, arguments);
    const auto given = QCoreApplication::arguments();
    if (given.value(1) == u"--call"_s) {
        const auto cents = given.value(3).toDouble();
        if (given.value(2) == u"approximate"_s)
            std::ignore = Money::formatApproximate(cents);
        else
            std::ignore = Money::displayedLifetimeCents(0, cents);
        return 0;
    }
    MoneyTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "MoneyTest.moc"
