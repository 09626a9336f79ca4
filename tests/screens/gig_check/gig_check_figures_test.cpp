#include "screens/gig_check/gig_check_figures.h"

#include "support/crate_maker.h"
#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

TrackBuilder flawless()
{
    return onDisk(u"A"_s, u"x"_s).key(u"8A"_s).tagsRead().grid().markers();
}

} // namespace

class GigCheckFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void destinationsAreTwoWaysAndTheDrives()
    {
        QCOMPARE(GigCheckFigures::destinations({}),
                 (QStringList{u"Engine DJ SD"_s, u"rekordbox USB"_s}));
        QCOMPARE(GigCheckFigures::destinations(
                     {{u"STICK"_s, u"/Volumes/STICK"_s}, {u"ARCHIVE"_s, u"/media/me/ARCHIVE"_s}}),
                 (QStringList{u"Engine DJ SD"_s, u"rekordbox USB"_s, u"STICK"_s, u"ARCHIVE"_s}));
        QCOMPARE(GigCheckFigures::noDestination(), u"Choose…"_s);
    }

    void counts()
    {
        QCOMPARE(GigCheckFigures::picked(0), u"0 picked"_s);
        QCOMPARE(GigCheckFigures::picked(1204), u"1204 picked"_s);
        QCOMPARE(GigCheckFigures::trackCount(GigCheckFigures::reportOf(GigCheck({flawless()}))),
                 u"1 tracks"_s);
    }

    void theVerdictInASentence_data()
    {
        QTest::addColumn<std::vector<ScannedTrack>>("tracks");
        QTest::addColumn<QString>("sentence");
        const auto row = [](const char *name, const std::vector<ScannedTrack> &tracks,
                            const QString &sentence) { QTest::newRow(name) << tracks << sentence; };
        row("no tracks", {}, u"Nothing selected yet."_s);
        row("one blocker", {lost()}, u"1 blocker would fail to load. Clear these first."_s);
        row("two blockers and polish", {lost(), lost(), flawless().key(u""_s)},
            u"2 blockers would fail to load. Clear these first."_s);
        row("one polish item", {flawless().key(u""_s)},
            u"1 polish item — playable, but a quick pass would tighten it."_s);
        row("three polish items", {flawless().key(u""_s), flawless().bitrate(u"128"_s)},
            u"3 polish items — playable, but a quick pass would tighten it."_s);
        row("ready", {flawless()}, u"Every track is present, gridded and tagged for STICK."_s);
    }
    void theVerdictInASentence()
    {
        QFETCH(const std::vector<ScannedTrack>, tracks);
        const auto report = GigCheckFigures::reportOf(GigCheck(tracks));
        QTEST(GigCheckFigures::sentence(report, u"STICK"_s), "sentence");
    }

    void aReportIsOnThePickedCratesAlone()
    {
        const auto result = scanOf(
            {flawless().path(u"a"_s), lost().path(u"b"_s), flawless().path(u"c"_s).key(u""_s)});
        const QList<LoadedCrate> crates = {crate(u"One"_s, {u"a"_s, u"c"_s, u"a"_s}),
                                           crate(u"Two"_s, {u"c"_s, u"b"_s, u"nowhere"_s})};
        const auto tracksOf = [&](const QSet<QString> &picked) {
            return GigCheckFigures::reportOf(*result, crates, picked).tracks;
        };
        QCOMPARE(tracksOf({}), 0);
        QCOMPARE(tracksOf({u"One"_s}), 2);
        QCOMPARE(tracksOf({u"One"_s, u"Two"_s}), 3);
        const auto report = GigCheckFigures::reportOf(*result, crates, {u"Two"_s});
        QCOMPARE(report.verdict, GigCheck::Verdict::NotYet);
        QCOMPARE(report.blockers.size(), 1);
        QCOMPARE(report.blockerCount, 1);
        QCOMPARE(report.polish.size(), 1);
        QCOMPARE(report.polishCount, 1);
    }
};

QTEST_GUILESS_MAIN(GigCheckFiguresTest)
#include "gig_check_figures_test.moc"
