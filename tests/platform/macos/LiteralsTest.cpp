#include "platform/macos/Literals.h"

#include "app/AppDelegate.h"
#include "base/ApplicationId.h"
#include "support/FakeMac.h"
#include "support/FakeTransport.h"

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <set>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const QDir kRoot(QStringLiteral(ORVELLA_SOURCE_DIR));

QString text(const QString& path)
{
    QFile file(kRoot.filePath(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList sources(const QStringList& patterns)
{
    QStringList paths;
    for (const auto& name : QDir(kRoot.filePath(u"Velmora/platform/macos"_s)).entryList(patterns, QDir::Files))
        paths.append(u"Velmora/platform/macos/"_s + name);
    return paths;
}

QString everything(const QStringList& paths)
{
    QString whole;
    for (const auto& path : paths)
        whole += text(path);
    return whole;
}

/// "- (BOOL)take:(NSString*)one with:(int)two" is "take:with:".
QString selectorOf(QString declaration)
{
    static const QRegularExpression types(u"\\([^()]*\\)"_s);
    static const QRegularExpression arguments(u":\\s*\\w+"_s);
    static const QRegularExpression spaces(u"\\s+"_s);
    return declaration.remove(types).replace(arguments, u":"_s).remove(spaces).remove(u'-');
}

/// The methods that are declared or defined between the two texts.
std::set<QString> methods(const QString& source, const QString& begin, const QString& end)
{
    static const QRegularExpression method(u"^(- \\([^;{]+)"_s, QRegularExpression::MultilineOption);
    std::set<QString> found;
    for (auto at = source.indexOf(begin); at >= 0; at = source.indexOf(begin, at + 1)) {
        const auto part = source.mid(at, source.indexOf(end, at) - at);
        for (const auto& match : method.globalMatch(part))
            found.insert(selectorOf(match.captured(1)));
    }
    return found;
}

/// The defaults and the keychain of a program that has been started for the first time.
struct FirstRun {
    FakeMac mac;
    FakeTransport transport;
    std::unique_ptr<AppDelegate> delegate;

    FirstRun()
    {
        transport.answerEverything();
        delegate = std::make_unique<AppDelegate>(mac.lend(), transport);
        delegate->applicationDidFinishLaunching();
    }
};

} // namespace

/// The texts that no compiler sees through, against what the rest of the program uses.
class LiteralsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theDefaultsHoldTheseKeysAndNoOthers()
    {
        const FirstRun run;

        const std::set<std::string> used(run.mac.defaults.used.begin(), run.mac.defaults.used.end());

        QCOMPARE(used, std::set<std::string>(literals::kDefaultsKeys.begin(), literals::kDefaultsKeys.end()));
    }

    void thePlacementKeysAreThoseOfTheItemsName()
    {
        const std::string name = literals::kStatusItemName;

        QCOMPARE(literals::kPreferredPositionKey, "NSStatusItem Preferred Position " + name);
        QCOMPARE(literals::kVisibleKey, "NSStatusItem Visible " + name);
    }

    void theTokenIsKeptUnderTheServiceAndTheAccount()
    {
        FirstRun run;

        QTRY_COMPARE(run.mac.keychain.items().size(), 1U);

        const auto item = run.mac.keychain.items().front();
        QCOMPARE(item.service, literals::kTokenService);
        QCOMPARE(item.account, literals::kTokenAccount);
    }

    void theTokenIsLookedForUnderTheOlderService()
    {
        FakeMac mac;
        mac.keychain.put({literals::kOlderTokenService, literals::kTokenAccount, "old"});
        FakeTransport transport;
        transport.answerEverything();
        AppDelegate delegate(mac.lend(), transport);

        delegate.applicationDidFinishLaunching();

        QTRY_COMPARE(mac.keychain.items().size(), 2U);
        QCOMPARE(mac.keychain.items().back(),
            (FakeCocoaSecrets::Item {literals::kTokenService, literals::kTokenAccount, "old"}));
    }

    void theBundleHasTheVersionsKeyAndTheProgramsIdentifier()
    {
        const auto plist = text(u"packaging/macos/Info.plist.in"_s);
        const auto filledIn = [&](const QString& key, const QString& property) {
            return plist.contains(u"<key>%1</key>\n    <string>${%2}</string>"_s.arg(key, property));
        };
        const auto build = text(u"Velmora/CMakeLists.txt"_s);

        QVERIFY(filledIn(QString::fromUtf8(literals::kVersionKey), u"MACOSX_BUNDLE_SHORT_VERSION_STRING"_s));
        QVERIFY(filledIn(u"CFBundleIdentifier"_s, u"MACOSX_BUNDLE_GUI_IDENTIFIER"_s));
        QVERIFY(build.contains(u"MACOSX_BUNDLE_GUI_IDENTIFIER %1\n"_s.arg(kApplicationId)));
        QVERIFY(build.contains(u"MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION}\n"_s));
        QVERIFY(plist.contains(u"<key>LSUIElement</key>\n    <true/>"_s));
    }

    void everyMethodOfADelegateIsOneThatTheSystemCalls()
    {
        const auto declared = methods(text(u"tests/macos/declarations/AppKit/AppKit.h"_s), u"@optional"_s, u"@end"_s);
        const auto defined = methods(everything(sources({u"*.mm"_s})), u"@implementation "_s, u"\n@end"_s);
        std::set<QString> listed;
        for (const auto* const literal : literals::kDelegateMethods)
            listed.insert(QString::fromUtf8(literal));
        // What a class of ours has of its own, and what it takes over from NSObject.
        const std::set<QString> others {u"statusItemClicked:"_s, u"displayOptionsChanged:"_s, u"respondsToSelector:"_s,
            u"forwardingTargetForSelector:"_s};

        QCOMPARE(declared, listed);
        auto expected = listed;
        expected.insert(others.begin(), others.end());
        QCOMPARE(defined, expected);
    }

    void theDocumentationNamesThem_data()
    {
        QTest::addColumn<QString>("literal");
        for (const auto* const literal : {literals::kScreenIsLocked, literals::kBoundsWidth, literals::kBoundsHeight,
                 literals::kStatusItemName, literals::kPreferredPositionKey, literals::kVisibleKey,
                 literals::kVersionKey, literals::kCurrency, literals::kUpdateFramework, literals::kUpdaterClass,
                 literals::kTokenService, literals::kOlderTokenService, literals::kTokenAccount})
            QTest::newRow(literal) << QString::fromUtf8(literal);
        for (const auto* const literal : literals::kDefaultsKeys)
            QTest::newRow(literal) << QString::fromUtf8(literal);
    }

    void theDocumentationNamesThem()
    {
        QFETCH(const QString, literal);
        static const QRegularExpression quoted(u"`([^`\n]+)`"_s);
        std::set<QString> names;
        for (const auto& match : quoted.globalMatch(text(u"docs/platform.md"_s)))
            names.insert(match.captured(1));

        const auto isNamed = [&](const QString& name) { return name == literal || name == literal + u" 140"_s; };
        QVERIFY(std::ranges::any_of(names, isNamed));
    }

    void objectiveCHasNoTextsOfItsOwn()
    {
        static const QRegularExpression texts(u"\"(?!platform/)[^\"\n]+\""_s);

        QStringList found;
        for (const auto& path : sources({u"*.mm"_s, u"CocoaObjects.h"_s})) {
            for (const auto& match : texts.globalMatch(text(path)))
                found.append(path + u": "_s + match.captured());
        }

        QCOMPARE(found, QStringList());
    }

    void theSeamKnowsNothingOfQt()
    {
        static const QRegularExpression qt(u"#\\s*include\\s*<Q|\\bQ[A-Z]\\w+|\\bq[iu]?nt\\d+\\b"_s);
        const auto paths = sources({u"*.mm"_s, u"Cocoa*.h"_s, u"PropertyValue.*"_s, u"Literals.h"_s});

        QStringList found;
        for (const auto& path : paths) {
            for (const auto& match : qt.globalMatch(text(path)))
                found.append(path + u": "_s + match.captured());
        }

        QVERIFY(paths.size() > 16);
        QCOMPARE(found, QStringList());
    }
};

QTEST_MAIN(LiteralsTest)

#include "LiteralsTest.moc"
