#include "signals/AppSignalClassifier.h"

#include <QLocale>
#include <QTest>

#include <algorithm>
#include <array>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

RunningApplication named(const QString& name)
{
    return {.isRegular = true, .identifier = std::nullopt, .name = name};
}

RunningApplication identified(const QString& identifier)
{
    return {.isRegular = true, .identifier = identifier, .name = std::nullopt};
}

QStringList keysOf(std::vector<RunningApplication> applications)
{
    return AppSignalClassifier::categories(applications).keys;
}

class FixedApplications final : public RunningApplications {
public:
    [[nodiscard]] std::vector<RunningApplication> list() const override { return applications; }

    std::vector<RunningApplication> applications;
};

/// A row of the table: its keys and what each of them adds, separated by ", ".
void row(const char* name, const char* keys, const char* categories)
{
    QTest::newRow(name) << QString::fromLatin1(keys).split(u", "_s) << QString::fromLatin1(categories).split(u", "_s);
}

} // namespace

class AppSignalClassifierTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void eachKeyAddsTheCategoriesOfItsRow_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QStringList>("categories");
        row("developer tools",
            "xcode, visual-studio-code, vscode, cursor, terminal, iterm, warp, postman, github, tower, sublime, "
            "jetbrains, zed",
            "developer_tools");
        row("cloud infrastructure",
            "docker, kubernetes, lens, tableplus, datagrip, sequel, mongodb, redis, aws, azure, google cloud",
            "cloud_infrastructure, developer_tools");
        row("data analytics", "excel, numbers, tableau, power bi, looker, metabase, supabase, postgres, mysql, sqlite",
            "data_analytics");
        row("design tools",
            "figma, sketch, principle, framer, photoshop, illustrator, indesign, fusion360, fusion 360, blender, "
            "cinema 4d",
            "design_tools");
        row("media creation",
            "final cut, premiere, after effects, davinci, resolve, audition, garageband, logic pro, obs, screenflow",
            "media_creation");
        row("productivity", "obsidian, notion, notes, calendar, reminders, things, todoist, bear, craft, evernote",
            "productivity");
        row("project management", "linear, jira, trello, asana, clickup, monday, basecamp", "project_management");
        row("communication", "whatsapp, telegram, slack, discord, messages, mail, outlook, zoom, meet, teams",
            "communication");
        row("customer support", "zendesk, intercom, helpscout, freshdesk, front", "customer_support");
        row("sales marketing", "salesforce, hubspot, mailchimp, klaviyo, pipedrive, apollo, instantly",
            "sales_marketing");
        row("writing content", "pages, word, ulysses, ia writer, grammarly, scrivener, ghost, substack",
            "writing_content");
        row("education research", "zotero, mendeley, kindle, books, skim, devonthink", "education_research");
        row("security privacy",
            "surfshark, nordvpn, proton, 1password, bitwarden, dashlane, little snitch, tailscale, wireshark",
            "security_privacy");
        row("finance business", "quickbooks, xero, stripe, wise, revolut, bank, wallet", "finance_business");
        row("legal compliance", "docusign, panda doc, pandadoc, adobe acrobat, preview", "legal_compliance");
        row("hr recruiting", "greenhouse, lever, workday, bamboohr, deel, rippling", "hr_recruiting");
        row("ecommerce", "shopify, woocommerce, amazon seller, etsy, square", "ecommerce");
        row("ai tools", "chatgpt, claude, openai, perplexity, poe, raycast", "ai_tools");
    }

    void eachKeyAddsTheCategoriesOfItsRow()
    {
        QFETCH(const QStringList, keys);
        QFETCH(const QStringList, categories);
        const auto rules = categoryRules();
        const auto rule = std::ranges::find_if(
            rules, [&](const CategoryRule& candidate) { return candidate.keys.front().text == keys.front(); });
        QVERIFY(rule != rules.end());

        QStringList writtenKeys;
        for (const auto& key : rule->keys)
            writtenKeys.append(key.text.toString());

        QStringList writtenCategories;
        for (const auto category : rule->categories)
            writtenCategories.append(category.toString());

        QCOMPARE(writtenKeys, keys);
        QCOMPARE(writtenCategories, categories);
        for (const auto& key : keys) {
            const auto found = keysOf({named(u"My "_s + key.toUpper() + u" 2"_s)});
            for (const auto& category : categories)
                QVERIFY2(found.contains(category), qPrintable(key));
        }
    }

    void theTableHas146KeysIn18RowsInItsOrder()
    {
        const auto rules = categoryRules();
        std::size_t keys = 0;
        QStringList firstCategories;
        for (const auto& rule : rules) {
            keys += rule.keys.size();
            firstCategories.append(rule.categories.front().toString());
        }

        QCOMPARE(rules.size(), 18U);
        QCOMPARE(keys, 146U);
        QCOMPARE(firstCategories,
            (QStringList {u"developer_tools"_s, u"cloud_infrastructure"_s, u"data_analytics"_s, u"design_tools"_s,
                u"media_creation"_s, u"productivity"_s, u"project_management"_s, u"communication"_s,
                u"customer_support"_s, u"sales_marketing"_s, u"writing_content"_s, u"education_research"_s,
                u"security_privacy"_s, u"finance_business"_s, u"legal_compliance"_s, u"hr_recruiting"_s, u"ecommerce"_s,
                u"ai_tools"_s}));
    }

    void allCategoriesTogetherAreSortedAndEachIsThereOnce()
    {
        std::vector<RunningApplication> applications;
        for (const auto& rule : categoryRules())
            for (const auto& key : rule.keys)
                applications.push_back(named(key.text.toString()));

        const auto all = AppSignalClassifier::categories(applications);

        QCOMPARE(all.keys,
            (QStringList {u"ai_tools"_s, u"cloud_infrastructure"_s, u"communication"_s, u"customer_support"_s,
                u"data_analytics"_s, u"design_tools"_s, u"developer_tools"_s, u"ecommerce"_s, u"education_research"_s,
                u"finance_business"_s, u"hr_recruiting"_s, u"legal_compliance"_s, u"media_creation"_s,
                u"productivity"_s, u"project_management"_s, u"sales_marketing"_s, u"security_privacy"_s,
                u"writing_content"_s}));
        QCOMPARE(all.rawAppCount, 146);
    }

    void noApplicationsGiveAnEmptyListAndACountOfZero()
    {
        const auto none = AppSignalClassifier::categories({});

        QCOMPARE(none.keys, QStringList());
        QCOMPARE(none.rawAppCount, 0);
    }

    void agentsAndHelpersAreNeitherClassifiedNorCounted()
    {
        const std::vector<RunningApplication> running {
            {.isRegular = false, .identifier = u"com.docker.helper"_s, .name = u"Docker"_s},
            {.isRegular = true, .identifier = u"com.tinyspeck.slackmacgap"_s, .name = u"Slack"_s},
            {.isRegular = false, .identifier = std::nullopt, .name = std::nullopt},
        };

        const auto found = AppSignalClassifier::categories(running);

        QCOMPARE(found.keys, QStringList {u"communication"_s});
        QCOMPARE(found.rawAppCount, 1);
    }

    void anApplicationWithoutIdentifierAndNameIsCountedAndAddsNothing()
    {
        const std::vector<RunningApplication> running {{}};

        const auto found = AppSignalClassifier::categories(running);

        QCOMPARE(found.keys, QStringList());
        QCOMPARE(found.rawAppCount, 1);
    }

    void substringsMatchOnPurposeAndBroadly()
    {
        QCOMPARE(keysOf({named(u"1Password"_s)}), (QStringList {u"security_privacy"_s, u"writing_content"_s}));
        QCOMPARE(keysOf({named(u"Obsidian"_s)}), (QStringList {u"media_creation"_s, u"productivity"_s}));
        QCOMPARE(keysOf({identified(u"com.example.webmailer"_s)}), QStringList {u"communication"_s});
        QCOMPARE(keysOf({named(u"Docker"_s)}), (QStringList {u"cloud_infrastructure"_s, u"developer_tools"_s}));
    }

    void aKeyWithABlankMatchesTheName()
    {
        QCOMPARE(keysOf({named(u"Google Cloud"_s)}), (QStringList {u"cloud_infrastructure"_s, u"developer_tools"_s}));
        QCOMPARE(keysOf({identified(u"com.google.cloud"_s)}), QStringList());
        QCOMPARE(keysOf({identified(u"com.googlecloud"_s)}), QStringList());
    }

    void aKeyWithABlankMatchesAcrossTheJoiningSpace()
    {
        QCOMPARE(keysOf({{.isRegular = true, .identifier = u"com.google"_s, .name = u"Cloud"_s}}),
            (QStringList {u"cloud_infrastructure"_s, u"developer_tools"_s}));
        QCOMPARE(keysOf({{.isRegular = true, .identifier = u"Cloud"_s, .name = u"Google"_s}}), QStringList());
    }

    void twoApplicationsDoNotFormAMatchTogether()
    {
        QCOMPARE(keysOf({named(u"Google"_s), named(u"Cloud"_s)}), QStringList());
        QCOMPARE(keysOf({identified(u"Google"_s), named(u"Cloud"_s)}), QStringList());
    }

    void aHyphenatedKeyMatchesTheIdentifierButNotANameWithSpaces()
    {
        QCOMPARE(keysOf({named(u"Visual Studio Code"_s)}), QStringList());
        QCOMPARE(keysOf({{.isRegular = true, .identifier = u"visual-studio-code"_s, .name = u"Visual Studio Code"_s}}),
            QStringList {u"developer_tools"_s});
    }

    void upperCaseNeverPreventsAMatch()
    {
        QCOMPARE(keysOf({identified(u"COM.FIGMA.DESKTOP"_s)}), QStringList {u"design_tools"_s});
        QCOMPARE(keysOf({named(u"FIGMA"_s)}), QStringList {u"design_tools"_s});
    }

    void lowerCasingDoesNotDependOnTheViewersLanguage()
    {
        QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
        const auto found = keysOf({named(u"TERMINAL"_s), named(u"FIGMA"_s)});
        QLocale::setDefault(QLocale::c());

        QCOMPARE(found, (QStringList {u"design_tools"_s, u"developer_tools"_s}));
    }

    void lowerCasingFollowsUnicodeBeyondAscii()
    {
        const QString kelvinSign(QChar(0x212A));
        const QString dotlessI(QChar(0x0131));
        const QString capitalIWithDot(QChar(0x0130));

        QCOMPARE(keysOf({named(u"s"_s + kelvinSign + u"etch"_s)}), QStringList {u"design_tools"_s});
        QCOMPARE(keysOf({named(u"f"_s + dotlessI + u"gma"_s)}), QStringList());
        QCOMPARE(keysOf({named(u"F"_s + capitalIWithDot + u"GMA"_s)}), QStringList());
        QCOMPARE(
            keysOf({named(u"OUTLOO"_s + capitalIWithDot + u" MAIL \U0001F600"_s)}), QStringList {u"communication"_s});
    }

    void twoApplicationsOfACategoryYieldItOnce()
    {
        const std::vector<RunningApplication> running {named(u"Slack"_s), named(u"Zoom"_s)};

        const auto found = AppSignalClassifier::categories(running);

        QCOMPARE(found.keys, QStringList {u"communication"_s});
        QCOMPARE(found.rawAppCount, 2);
    }

    void designToolsComeBeforeDeveloperTools()
    {
        QCOMPARE(
            keysOf({named(u"Xcode"_s), named(u"Figma"_s)}), (QStringList {u"design_tools"_s, u"developer_tools"_s}));
    }

    void theRunningApplicationsAreAskedAfreshEachTime()
    {
        FixedApplications system;
        system.applications = {named(u"Slack"_s)};
        const auto before = AppSignalClassifier::currentCategories(system);
        system.applications = {named(u"Figma"_s), named(u"Calculator"_s)};

        const auto after = AppSignalClassifier::currentCategories(system);

        QCOMPARE(before.keys, QStringList {u"communication"_s});
        QCOMPARE(after.keys, QStringList {u"design_tools"_s});
        QCOMPARE(after.rawAppCount, 2);
    }

    void matchingComparesCharactersExactly()
    {
        const std::array keys {CategoryKey(u"obs"), CategoryKey(u"ia writer")};

        QVERIFY(AppSignalClassifier::matches(keys, u"obs"));
        QVERIFY(AppSignalClassifier::matches(keys, u"jobs"));
        QVERIFY(AppSignalClassifier::matches(keys, u"the media writer"));
        QVERIFY(!AppSignalClassifier::matches(keys, u"OBS"));
        QVERIFY(!AppSignalClassifier::matches(keys, u"ob s"));
        QVERIFY(!AppSignalClassifier::matches(keys, u"ob"));
        QVERIFY(!AppSignalClassifier::matches(keys, u"bsob"));
        QVERIFY(!AppSignalClassifier::matches(keys, u""));
    }

    void anEmptyListOfKeysMatchesNothing()
    {
        QVERIFY(!AppSignalClassifier::matches({}, u"xcode"));
        QVERIFY(!AppSignalClassifier::matches({}, u""));
    }

    void theFingerprintOfATextNeverHidesAKey()
    {
        QString text;
        for (const auto& rule : categoryRules())
            for (const auto& key : rule.keys)
                text += key.text.toString() + u'\u00DF';

        for (const auto& rule : categoryRules())
            for (const auto& key : rule.keys) {
                QVERIFY(CharacterPairs(text).mayContain(key.pairs));
                QVERIFY(CharacterPairs(u"\uFFFFx"_s + key.text.toString() + QChar(0xD83D)).mayContain(key.pairs));
            }
    }
};

QTEST_GUILESS_MAIN(AppSignalClassifierTest)

#include "AppSignalClassifierTest.moc"
