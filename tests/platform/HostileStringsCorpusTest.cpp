#include "base/Json.h"
#include "base/WebAddress.h"
#include "platform/OverlaySettings.h"
#include "platform/linux/IcuViewerLocale.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "support/Corpus.h"

#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// Strings that are known to break programs, wherever texts from outside come in.
class HostileStringsCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void jsonKeepsThemAsValuesAndAsKeys()
    {
        for (const auto& string : m_strings) {
            const Json value(Json::Object {{string, Json(string)}});

            const auto written = value.serialise();

            QVERIFY(written);
            QCOMPARE(Json::parse(*written), Result<Json>(value));
        }
    }

    void noneIsTakenForAWebAddressUnlessItIsOne()
    {
        for (const auto& string : m_strings) {
            const auto address = webAddress(string);
            if (!address)
                continue;
            QVERIFY2(string.startsWith(u"http://") || string.startsWith(u"https://"), qUtf8Printable(string));
            QVERIFY2(address->userInfo().isEmpty(), qUtf8Printable(string));
        }
    }

    void theSettingsFileKeepsThem()
    {
        const QTemporaryDir folder;
        const auto path = folder.filePath(u"settings.json"_s);
        Json::Object values;
        for (const auto& string : m_strings)
            values.insert_or_assign(string, Json(string));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(*Json(values).serialise());
        file.close();
        FileSettingsStore store(path);
        for (const auto& string : m_strings) {
            QCOMPARE(store.string(string), string);
            QCOMPARE(store.boolean(string), std::nullopt);
        }

        const auto& last = m_strings.constLast();
        store.setBoolean(last, true);

        const FileSettingsStore next(path);
        for (const auto& string : m_strings) {
            QCOMPARE(next.string(string), string == last ? std::nullopt : std::optional(string));
            QCOMPARE(next.boolean(string), string == last ? std::optional(true) : std::nullopt);
        }
    }

    void anOptionOfTheCommandLineKeepsThem()
    {
        for (const auto& string : m_strings) {
            const auto entry = OverlaySettings::Entry::parse(u"key="_s + string);

            QVERIFY(entry);
            QCOMPARE(entry->key, u"key"_s);
            QCOMPARE(entry->value, Json::parse(string.toUtf8()).value_or(Json(string)));
        }
    }

    void noneIsALocaleWithoutATextForMoney()
    {
        for (const auto& string : m_strings) {
            QProcessEnvironment environment;
            environment.insert(u"LC_ALL"_s, string);

            const IcuViewerLocale locale(environment);

            QVERIFY2(locale.usDollars(1234).contains(u"12"), qUtf8Printable(string));
            QVERIFY2(locale.languageCode().value_or(u"en"_s).size() <= 3, qUtf8Printable(string));
        }
    }

private:
    const QStringList m_strings = Corpus::hostileStrings();
};

QTEST_GUILESS_MAIN(HostileStringsCorpusTest)

#include "HostileStringsCorpusTest.moc"
