#include "support/Corpus.h"
#include "support/EveryRecord.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kNotJson = u"The service's answer could not be read: it is not JSON."_s;

/// How much deeper a value lies in a reply than by itself.
constexpr int kDepthOfReply = 2;

} // namespace

/// The texts that parsers and programs are known to stumble over, as answers of the service.
class RecordsCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void noneOfTheTextsIsAnAnswer_data() { addFiles(); }

    void noneOfTheTextsIsAnAnswer()
    {
        QFETCH(const QByteArray, text);

        forEveryRecord([&text]<class T>(const T&) {
            const auto decoded = decodeRecord<APIResponse<T>>(text);

            QVERIFY(!decoded);
            QVERIFY(decoded.error().description.startsWith(u"The service's answer could not be read: "_s));
        });
        QVERIFY(!decodeRecord<APIResponse<EmptyPayload>>(text));
    }

    void inTheirPlaceAMemberIsWhatItsTypeSays_data() { addFiles(); }

    void inTheirPlaceAMemberIsWhatItsTypeSays()
    {
        QFETCH(const QByteArray, text);
        const auto value = Json::parse(text);
        // A byte order mark is one only at the very beginning, and what is as deep as may be is too deep there.
        const bool isReadAnywhere = value && !text.startsWith("\xEF\xBB\xBF") && !isTooDeep(text);

        forEveryMember([&](const auto& record, const QString& key, auto) {
            const auto problem = problemWithBytes(record, key, text);
            QCOMPARE(problem, isReadAnywhere ? problemWith(record, key, *value) : kNotJson);
        });
    }

    void everyTextOfARecordMayBeAnyString()
    {
        const auto strings = Corpus::json(u"strings/blns-part.json"_s);
        QVERIFY(strings.array()->size() > 100);
        for (const auto& string : *strings.array()) {
            forEveryMember([&]<class T, class Member>(const T& record, const QString&, Member T::* member) {
                if constexpr (std::is_same_v<Member, QString>) {
                    auto changed = record;
                    changed.*member = *string.string();
                    const auto decoded = decodeRecord<APIResponse<T>>(replyOf(toJson(changed)));
                    QVERIFY(decoded);
                    QCOMPARE(decoded->data.*member, *string.string());
                }
            });
        }
    }

private:
    static void addFiles()
    {
        QTest::addColumn<QByteArray>("text");
        for (const auto& folder : {u"json/test_parsing/"_s, u"json/test_transform/"_s}) {
            for (const auto& name : Corpus::filesIn(folder))
                QTest::newRow(qUtf8Printable(name)) << Corpus::file(folder + name);
        }
    }

    static bool isTooDeep(const QByteArray& text)
    {
        return !Json::parse(QByteArray(kDepthOfReply, '[') + text + QByteArray(kDepthOfReply, ']'));
    }
};

QTEST_GUILESS_MAIN(RecordsCorpusTest)

#include "RecordsCorpusTest.moc"
