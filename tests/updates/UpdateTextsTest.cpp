#include "updates/UpdateTexts.h"

#include <QTest>

#include <set>

using namespace orvella;
using namespace Qt::StringLiterals;
using Stage = UpdateState::Stage;
using Kind = PackageTrouble::Kind;
using Activity = PackageProgress::Activity;

namespace {

UpdateState at(Stage stage)
{
    UpdateState state;
    state.stage = stage;
    state.currentVersion = u"0.1.0"_s;
    state.newVersion = u"0.2.0"_s;
    return state;
}

UpdateState failedBy(Kind kind, const QString& words = {})
{
    auto state = at(Stage::checkFailed);
    state.trouble = {kind, words};
    return state;
}

} // namespace

class UpdateTextsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyStageSaysWhatItIs_data()
    {
        QTest::addColumn<Stage>("stage");
        QTest::addColumn<QString>("headline");
        QTest::addColumn<QString>("detail");

        QTest::newRow("checking") << Stage::checking << u"Looking for a newer version…"_s << QString();
        QTest::newRow("up to date") << Stage::upToDate << u"Orvella is up to date."_s << u"You have version 0.1.0."_s;
        QTest::newRow("available") << Stage::available << u"Version 0.2.0 is available."_s
                                   << u"You have version 0.1.0."_s;
        QTest::newRow("held back") << Stage::heldBack << u"Version 0.2.0 is available."_s
                                   << u"Your system is set to keep version 0.1.0."_s;
        QTest::newRow("installing") << Stage::installing << u"Installing version 0.2.0…"_s
                                    << u"Preparing the installation…"_s;
        QTest::newRow("installed") << Stage::installed << u"Version 0.2.0 is installed."_s
                                   << u"It takes effect when Orvella is started again."_s;
        QTest::newRow("check failed") << Stage::checkFailed << u"Orvella could not look for updates."_s
                                      << u"Your system's package service reports an error."_s;
        QTest::newRow("installation failed") << Stage::installationFailed << u"Version 0.2.0 could not be installed."_s
                                             << u"Your system's package service reports an error."_s;
    }

    void everyStageSaysWhatItIs()
    {
        QFETCH(const Stage, stage);
        QFETCH(const QString, headline);
        QFETCH(const QString, detail);

        QCOMPARE(UpdateTexts::headline(at(stage)), headline);
        QCOMPARE(UpdateTexts::detail(at(stage)), detail);
    }

    void anOldListIsMentioned()
    {
        auto state = at(Stage::upToDate);
        state.isListRenewed = false;

        QCOMPARE(UpdateTexts::detail(state),
            u"You have version 0.1.0. The list of packages could not be renewed, so there may be a newer one."_s);
    }

    void everyActivityHasItsOwnWords()
    {
        std::set<QString> words;
        for (const auto activity :
            {Activity::preparing, Activity::waiting, Activity::asking, Activity::downloading, Activity::installing}) {
            auto state = at(Stage::installing);
            state.progress.activity = activity;
            words.insert(UpdateTexts::detail(state));
        }

        QCOMPARE(words.size(), 5U);
    }

    void everyTroubleHasItsOwnSentence()
    {
        std::set<QString> sentences;
        for (const auto kind : {Kind::cancelled, Kind::absent, Kind::refused, Kind::noNetwork, Kind::busy,
                 Kind::untrusted, Kind::wouldRemove, Kind::unknownPackage, Kind::silent, Kind::gone, Kind::failed}) {
            const auto sentence = UpdateTexts::detail(failedBy(kind));
            QVERIFY2(sentence.endsWith(u'.'), qPrintable(sentence));
            sentences.insert(sentence);
        }

        QCOMPARE(sentences.size(), 11U);
    }

    void theServicesOwnWordsAreQuoted()
    {
        QCOMPARE(UpdateTexts::detail(failedBy(Kind::failed, u"No space is left."_s)),
            u"Your system's package service reports: No space is left."_s);
    }

    void placesInTheServicesWordsStayAsTheyAre()
    {
        QCOMPARE(UpdateTexts::detail(failedBy(Kind::failed, u"%1 of %2"_s)),
            u"Your system's package service reports: %1 of %2"_s);
    }
};

QTEST_GUILESS_MAIN(UpdateTextsTest)

#include "UpdateTextsTest.moc"
