#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDir kRoot(QStringLiteral(ORVELLA_SOURCE_DIR));

QString text(const QString& path)
{
    QFile file(kRoot.filePath(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The paragraphs under a heading of docs/platform.md.
QString section(const QString& heading)
{
    const auto whole = text(u"docs/platform.md"_s);
    const auto begin = whole.indexOf(u"\n### "_s + heading + u'\n');
    if (begin < 0)
        return {};
    const auto end = whole.indexOf(u"\n### "_s, begin + 1);
    return whole.mid(begin, end < 0 ? -1 : end - begin);
}

QString pathOf(const QString& file)
{
    return file.startsWith(u"packaging/"_s) ? file : u"Velmora/"_s + file;
}

} // namespace

/// What docs/platform.md says of the Mac is still where it says.
class DemandsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyDemandIsMetWhereTheTableSays_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("name");
        static const QRegularExpression row(u"^\\| (?<demand>[^|]+) \\| `(?<file>[^`]+)` \\| `(?<name>[^`]+)` \\|$"_s,
            QRegularExpression::MultilineOption);
        for (const auto& match : row.globalMatch(section(u"Demands, and what meets them"_s)))
            QTest::newRow(qPrintable(match.captured(u"demand"))) << match.captured(u"file") << match.captured(u"name");
    }

    void everyDemandIsMetWhereTheTableSays()
    {
        QFETCH(const QString, file);
        QFETCH(const QString, name);

        QVERIFY2(text(pathOf(file)).contains(name), qPrintable(file + u" has no "_s + name));
    }

    void theTableIsRead()
    {
        const auto lines = section(u"Demands, and what meets them"_s).count(u"\n| "_s);

        // The heading and the line below it are no demands.
        QVERIFY(lines > 50);
        QCOMPARE(rows(), lines - 1);
    }

private:
    /// How many rows of the table are understood.
    static qsizetype rows()
    {
        static const QRegularExpression row(
            u"^\\| [^|]+ \\| `[^`]+` \\| `[^`]+` \\|$"_s, QRegularExpression::MultilineOption);
        qsizetype count = 0;
        for ([[maybe_unused]] const auto& match : row.globalMatch(section(u"Demands, and what meets them"_s)))
            ++count;
        return count;
    }
};

QTEST_GUILESS_MAIN(DemandsTest)

#include "DemandsTest.moc"
