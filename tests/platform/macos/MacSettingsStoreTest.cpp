#include "platform/macos/MacSettingsStore.h"

#include "support/FakeCocoa.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class MacSettingsStoreTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aBooleanIsWhatCanBeReadAsOne_data()
    {
        QTest::addColumn<PropertyValue>("value");
        QTest::addColumn<std::optional<bool>>("expected");
        QTest::newRow("missing") << PropertyValue() << std::optional<bool>();
        QTest::newRow("one") << PropertyValue(1.0) << std::optional(true);
        QTest::newRow("zero") << PropertyValue(0.0) << std::optional(false);
        QTest::newRow("two") << PropertyValue(2.0) << std::optional<bool>();
        QTest::newRow("a half") << PropertyValue(0.5) << std::optional<bool>();
        QTest::newRow("no") << PropertyValue("no") << std::optional<bool>();
        QTest::newRow("a list") << PropertyValue(OtherValue()) << std::optional<bool>();
    }

    void aBooleanIsWhatCanBeReadAsOne()
    {
        QFETCH(const PropertyValue, value);
        QFETCH(const std::optional<bool>, expected);
        FakeCocoaSettings defaults;
        defaults.values["key"] = value;
        const MacSettingsStore settings(defaults);

        QCOMPARE(settings.boolean(u"key"_s), expected);
    }

    void onlyATextIsAString()
    {
        FakeCocoaSettings defaults;
        defaults.values = {{"text", "grün"}, {"number", 1.0}};
        const MacSettingsStore settings(defaults);

        QCOMPARE(settings.string(u"text"_s), u"grün"_s);
        QCOMPARE(settings.string(u"number"_s), std::nullopt);
        QCOMPARE(settings.string(u"missing"_s), std::nullopt);
    }

    void aValueOfWhateverTypeIsThere()
    {
        FakeCocoaSettings defaults;
        defaults.values = {{"list", OtherValue()}};
        const MacSettingsStore settings(defaults);

        QVERIFY(settings.contains(u"list"_s));
        QVERIFY(!settings.contains(u"missing"_s));
    }

    void whatIsStoredIsReadAgain()
    {
        FakeCocoaSettings defaults;
        MacSettingsStore settings(defaults);

        settings.setBoolean(u"yes"_s, true);
        settings.setBoolean(u"no"_s, false);
        settings.setInteger(u"position"_s, 140);

        QCOMPARE(settings.boolean(u"yes"_s), true);
        QCOMPARE(settings.boolean(u"no"_s), false);
        QCOMPARE(std::get<double>(defaults.values.at("position")), 140.0);
    }
};

QTEST_GUILESS_MAIN(MacSettingsStoreTest)

#include "MacSettingsStoreTest.moc"
