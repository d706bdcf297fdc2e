#include "platform/OverlaySettings.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A store in memory.
class Store final : public SettingsStore {
public:
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override
    {
        const auto found = booleans.find(key);
        return found == booleans.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] std::optional<QString> string(const QString& key) const override
    {
        const auto found = strings.find(key);
        return found == strings.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] bool contains(const QString& key) const override
    {
        return booleans.contains(key) || strings.contains(key) || integers.contains(key);
    }

    void setBoolean(const QString& key, bool value) override { booleans.insert_or_assign(key, value); }

    void setInteger(const QString& key, qint64 value) override { integers.insert_or_assign(key, value); }

    std::map<QString, bool> booleans;
    std::map<QString, qint64> integers;
    std::map<QString, QString> strings;
};

} // namespace

class OverlaySettingsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void anEntryIsReadFromKeyAndValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("key");
        QTest::addColumn<Json>("value");

        const auto row = [](const QString& text, const QString& key, const Json& value) {
            QTest::newRow(qUtf8Printable(text)) << text << key << value;
        };
        row(u"autoOpenAds=true"_s, u"autoOpenAds"_s, Json(true));
        row(u"autoOpenAds=false"_s, u"autoOpenAds"_s, Json(false));
        row(u"a=\"true\""_s, u"a"_s, Json(u"true"_s));
        row(u"a=True"_s, u"a"_s, Json(u"True"_s));
        row(u"a=yes"_s, u"a"_s, Json(u"yes"_s));
        row(u"a=12"_s, u"a"_s, Json(qint64 {12}));
        row(u"a=null"_s, u"a"_s, Json());
        row(u"a=[1]"_s, u"a"_s, Json(Json::Array {Json(qint64 {1})}));
        row(u"a="_s, u"a"_s, Json(QString()));
        row(u"a=b=c"_s, u"a"_s, Json(u"b=c"_s));
        row(u"a=\u00e4\U0001f4b5"_s, u"a"_s, Json(u"\u00e4\U0001f4b5"_s));
        row(u"apiBaseURL=http://127.0.0.1:8787"_s, u"apiBaseURL"_s, Json(u"http://127.0.0.1:8787"_s));
    }

    void anEntryIsReadFromKeyAndValue()
    {
        QFETCH(QString, text);
        QFETCH(QString, key);
        QFETCH(Json, value);

        const auto entry = OverlaySettings::Entry::parse(text);

        QVERIFY(entry);
        QCOMPARE(entry->key, key);
        QCOMPARE(entry->value, value);
    }

    void withoutKeyOrEqualsSignThereIsNoEntry()
    {
        for (const auto& text : {u""_s, u"autoOpenAds"_s, u"=true"_s, u"="_s}) {
            const auto entry = OverlaySettings::Entry::parse(text);

            QVERIFY(!entry);
            QCOMPARE(entry.error().kind, Failure::Kind::refused);
        }
    }

    void readingSeesTheOverlayFirst()
    {
        Store store;
        store.booleans = {{u"a"_s, false}, {u"b"_s, false}};
        store.strings = {{u"s"_s, u"below"_s}, {u"t"_s, u"below"_s}};

        const OverlaySettings overlay(store, {{u"a"_s, Json(true)}, {u"s"_s, Json(u"above"_s)}});

        QCOMPARE(overlay.boolean(u"a"_s), true);
        QCOMPARE(overlay.boolean(u"b"_s), false);
        QCOMPARE(overlay.boolean(u"c"_s), std::nullopt);
        QCOMPARE(overlay.string(u"s"_s), u"above"_s);
        QCOMPARE(overlay.string(u"t"_s), u"below"_s);
        QCOMPARE(overlay.string(u"u"_s), std::nullopt);
    }

    void aValueOfAnotherTypeHidesTheStoresAndCountsAsMissing()
    {
        Store store;
        store.booleans = {{u"anonymousMode"_s, false}};
        store.strings = {{u"apiBaseURL"_s, u"below"_s}};

        const OverlaySettings overlay(
            store, {{u"anonymousMode"_s, Json(u"no"_s)}, {u"apiBaseURL"_s, Json(qint64 {1})}});

        QCOMPARE(overlay.boolean(u"anonymousMode"_s), std::nullopt);
        QCOMPARE(overlay.string(u"apiBaseURL"_s), std::nullopt);
    }

    void ofEqualKeysTheLastOneCounts()
    {
        Store store;

        const OverlaySettings overlay(store, {{u"a"_s, Json(true)}, {u"a"_s, Json(false)}});

        QCOMPARE(overlay.boolean(u"a"_s), false);
    }

    void writingDropsTheOverlayAndGoesToTheStore()
    {
        Store store;
        OverlaySettings overlay(store, {{u"a"_s, Json(true)}, {u"b"_s, Json(true)}});

        overlay.setBoolean(u"a"_s, false);

        QCOMPARE(overlay.boolean(u"a"_s), false);
        QCOMPARE(store.booleans, (std::map<QString, bool> {{u"a"_s, false}}));
        store.booleans.clear();
        QCOMPARE(overlay.boolean(u"a"_s), std::nullopt);
        QCOMPARE(overlay.boolean(u"b"_s), true);
    }

    void whatIsInEitherIsContained()
    {
        Store store;
        store.strings = {{u"below"_s, u"text"_s}};

        const OverlaySettings overlay(store, {{u"above"_s, Json()}});

        QVERIFY(overlay.contains(u"above"_s));
        QVERIFY(overlay.contains(u"below"_s));
        QVERIFY(!overlay.contains(u"nowhere"_s));
    }

    void anIntegerGoesToTheStoreToo()
    {
        Store store;
        OverlaySettings overlay(store, {{u"a"_s, Json(qint64 {1})}});

        overlay.setInteger(u"a"_s, 2);

        QCOMPARE(store.integers, (std::map<QString, qint64> {{u"a"_s, 2}}));
        QVERIFY(overlay.contains(u"a"_s));
    }

    void nothingOfTheOverlayReachesTheStoreByItself()
    {
        Store store;

        const OverlaySettings overlay(store, {{u"a"_s, Json(true)}});

        QCOMPARE(overlay.boolean(u"a"_s), true);
        QVERIFY(store.booleans.empty());
    }
};

QTEST_GUILESS_MAIN(OverlaySettingsTest)

#include "OverlaySettingsTest.moc"
