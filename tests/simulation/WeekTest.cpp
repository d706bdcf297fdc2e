#include "simulation/Life.h"
#include "support/SecretForms.h"

#include <QDirIterator>
#include <QLoggingCategory>
#include <QSet>
#include <QTemporaryFile>
#include <QTest>

#include <cstdio>
#include <unistd.h>

using namespace orvella;
using namespace orvella::simulation;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Takes everything that the process writes to its standard streams while it lives.
class Output final {
public:
    Output()
    {
        m_file.open();
        for (const auto stream : {STDOUT_FILENO, STDERR_FILENO}) {
            m_before.push_back({stream, ::dup(stream)});
            ::dup2(m_file.handle(), stream);
        }
    }

    ~Output() { restore(); }

    [[nodiscard]] QByteArray text()
    {
        restore();
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    void restore()
    {
        std::fflush(nullptr);
        for (const auto& [stream, before] : std::exchange(m_before, {})) {
            ::dup2(before, stream);
            ::close(before);
        }
    }

    QTemporaryFile m_file;
    std::vector<std::pair<int, int>> m_before;
};

/// What must not be found where it does not belong; what writes it may have changed its letters before.
QByteArrayList formsInBothCases(const QByteArray& secret)
{
    return formsOf(secret) + formsOf(secret.toLower());
}

/// What the service knows.
const QStringList kCategories {u"ai_tools"_s, u"cloud_infrastructure"_s, u"communication"_s, u"customer_support"_s,
    u"data_analytics"_s, u"design_tools"_s, u"developer_tools"_s, u"ecommerce"_s, u"education_research"_s,
    u"finance_business"_s, u"hr_recruiting"_s, u"legal_compliance"_s, u"media_creation"_s, u"productivity"_s,
    u"project_management"_s, u"sales_marketing"_s, u"security_privacy"_s, u"writing_content"_s};

} // namespace

/// Whole weeks, and all that is written and sent in them.
class WeekTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules(u"*=true"_s);
        Output output;
        for (quint64 seed = 1; seed <= 4; ++seed)
            live(seed);
        m_output = output.text();

        QCOMPARE(m_brokenRules, QStringList());
        QVERIFY2(m_requests.size() > 1000, "So few requests say nothing.");
        QVERIFY2(m_reports.size() > 10, "So few reports say nothing.");
        QVERIFY2(m_files.size() > 10, "So few files say nothing.");
        QVERIFY2(!m_output.isEmpty(), "Qt is to say what it likes.");
    }

    /// Else the tests below would find nothing because nothing can be found.
    void everyFormIsFound_data()
    {
        QTest::addColumn<QByteArray>("text");
        const QByteArray secret = "Bearer " + QByteArray(SimulatedService::kTokenMark.data()) + "17";
        const auto wide = QString::fromLatin1(secret);
        QTest::newRow("as it is") << secret;
        QTest::newRow("in lower case") << secret.toLower();
        QTest::newRow("hexadecimal") << secret.toHex();
        QTest::newRow("percent-encoded") << "%" + secret.toHex('%').toUpper();
        QTest::newRow("UTF-16") << QByteArray(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2);
        for (int before = 0; before < 3; ++before)
            QTest::addRow("Base64, %d before", before) << (QByteArray(before, '-') + secret).toBase64();
    }

    void everyFormIsFound()
    {
        QFETCH(const QByteArray, text);

        QVERIFY(containsAnyForm(text, m_tokenForms));
        QVERIFY(!containsAnyForm("Bearer something else", m_tokenForms));
    }

    void nothingThatIsWrittenHoldsTheToken()
    {
        for (const auto& text : written())
            QVERIFY2(!containsAnyForm(text, m_tokenForms), text.left(2000).constData());
    }

    void nothingThatIsWrittenHoldsTheNameOfAnApplication()
    {
        for (const auto& text : written())
            QVERIFY2(!containsAnyForm(text, m_applicationForms), text.left(2000).constData());
    }

    void theTokenIsSentInItsHeaderOnly()
    {
        qint64 authorized = 0;
        for (const auto& request : m_requests) {
            QVERIFY(!containsAnyForm(request.url.toEncoded() + request.body, m_tokenForms));
            for (const auto& [name, value] : request.headers) {
                if (name == "authorization")
                    ++authorized;
                else
                    QVERIFY2(!containsAnyForm(value, m_tokenForms), name.constData());
            }
        }
        QVERIFY(authorized > 1000);
    }

    void noNameOfAnApplicationIsSent()
    {
        for (const auto& request : m_requests) {
            QVERIFY(!containsAnyForm(request.url.toEncoded() + request.body, m_applicationForms));
            for (const auto& [name, value] : request.headers)
                QVERIFY2(!containsAnyForm(value, m_applicationForms), name.constData());
        }
    }

    void onlyKnownCategoriesAreSent()
    {
        qint64 sent = 0;
        for (const auto& request : m_requests) {
            const auto body = Json::parse(request.body);
            const auto* const members = body ? body->object() : nullptr;
            if (!members || !members->contains(u"categories"_s))
                continue;
            for (const auto& category : *members->at(u"categories"_s).array()) {
                QVERIFY(category.string());
                QVERIFY2(kCategories.contains(*category.string()), qPrintable(*category.string()));
                ++sent;
            }
        }
        QVERIFY2(sent > 10, "So few categories say nothing.");
    }

private:
    void live(quint64 seed)
    {
        Life life(seed, Journal::Telling::whenBroken);
        life.network().captured = [this](const HttpRequest& request) { m_requests.push_back(request); };
        life.viewer().reported = [this](const QString& report) { m_reports.append(report.toUtf8()); };
        life.journal().heard = [this, &life](const QString& /*event*/) { readFiles(life.folder()); };
        life.live(std::chrono::days(7));
        life.end();
        readFiles(life.folder());
        if (life.journal().isBroken())
            m_brokenRules.append(life.journal().brokenRule());
    }

    /// Whatever stands there now, also if it goes again.
    void readFiles(const QString& folder)
    {
        QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QFile::ReadOnly))
                m_files.insert(file.fileName().toUtf8() + file.readAll());
        }
    }

    [[nodiscard]] QByteArrayList written() const { return QByteArrayList {m_output} + m_reports + m_files.values(); }

    const QByteArrayList m_tokenForms = formsInBothCases(SimulatedService::kTokenMark.data());
    const QByteArrayList m_applicationForms = formsInBothCases(SimulatedDesktop::kApplicationMark.data());
    std::vector<HttpRequest> m_requests;
    QByteArrayList m_reports;
    QSet<QByteArray> m_files;
    QByteArray m_output;
    QStringList m_brokenRules;
};

QTEST_MAIN(WeekTest)
#include "WeekTest.moc"
