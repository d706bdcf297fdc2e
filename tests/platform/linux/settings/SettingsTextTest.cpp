#include "platform/linux/settings/SettingsText.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class SettingsTextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void settingsReadAsTheyWereWritten()
    {
        const Json::Object settings {{u"anonymousMode"_s, Json(false)}, {u"b"_s, Json(0.1)}, {u""_s, Json()}};

        QCOMPARE(SettingsText::parse(SettingsText::of(settings)), settings);
        QCOMPARE(SettingsText::parse(SettingsText::of({})), Json::Object());
    }

    void aTextThatWasCutOffIsNoSettings()
    {
        const auto whole = SettingsText::of({{u"anonymousMode"_s, Json(true)}, {u"b"_s, Json(qint64 {12})}}).trimmed();

        for (qsizetype length = 0; length < whole.size(); ++length)
            QCOMPARE(SettingsText::parse(whole.first(length)), std::nullopt);
        QVERIFY(SettingsText::parse(whole));
    }

    void whatCannotBeWrittenIsLeftOut()
    {
        const QString half(QChar(0xd800));

        const auto written = SettingsText::of({{half, Json(true)}, {u"a"_s, Json(half)}, {u"b"_s, Json(true)}});

        QCOMPARE(written, "{\n  \"b\": true\n}\n");
    }
};

QTEST_GUILESS_MAIN(SettingsTextTest)

#include "SettingsTextTest.moc"
