#include "screens/health/health_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using HealthFigures::Bar;

namespace {

Derived figuresOf(std::vector<ScannedTrack> tracks)
{
    return Derived(scanOf(std::move(tracks)));
}

TrackBuilder sound(const QString &title)
{
    return onDisk(u"Artist"_s, title).genre(u"House"_s).key(u"8A"_s);
}

} // namespace

class HealthFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSoundLibraryHasNoSteps()
    {
        QVERIFY(HealthFigures::steps(figuresOf({sound(u"One"_s)})).isEmpty());
        QVERIFY(HealthFigures::steps(figuresOf({})).isEmpty());
    }

    void stepsStandInTheirOrderWithOneOfEach()
    {
        const auto steps = HealthFigures::steps(
            figuresOf({lost(u"Artist"_s, u"Gone"_s).genre(u"House"_s).key(u"8A"_s),
                       sound(u"Twice"_s).bytes(2'000'000), sound(u"Twice"_s).bytes(3'000'000),
                       onDisk(u"Artist"_s, u"Bare"_s)}));
        const QList<HealthFigures::Step> expected = {
            {u"Relink 1 missing file"_s,
             u"Serato can't find these on disk. Relinking keeps their cues and grids."_s,
             Screen::Missing},
            {u"Clear 1 duplicate copy"_s,
             u"Reclaims 2 MB. The best copy is kept, the rest held for 30 days."_s,
             Screen::Duplicates},
            {u"Tag 1 track with no genre"_s,
             u"Fingerprint unnamed files to fill artist, title, label and genre."_s,
             Screen::TrackId},
            {u"Analyse 1 track with no key"_s,
             u"Keys carry across to Engine DJ and rekordbox on export."_s, Screen::Loudness},
        };
        QCOMPARE(steps, expected);
    }

    void stepsSpeakOfSeveral()
    {
        const auto steps = HealthFigures::steps(
            figuresOf({lost(u"A"_s, u"1"_s), lost(u"A"_s, u"2"_s), onDisk(u"A"_s, u"3"_s),
                       onDisk(u"A"_s, u"3"_s), onDisk(u"A"_s, u"3"_s)}));
        QStringList titles;
        for (const auto &step : steps)
            titles << step.title;
        QCOMPARE(titles,
                 (QStringList{u"Relink 2 missing files"_s, u"Clear 2 duplicate copies"_s,
                              u"Tag 5 tracks with no genre"_s, u"Analyse 5 tracks with no key"_s}));
    }

    void sixGenresAtMostTheCommonestFirst()
    {
        std::vector<ScannedTrack> tracks;
        for (const QString &genre : {u"A"_s, u"B"_s, u"C"_s, u"b"_s, u"D"_s, u"E"_s, u"F"_s, u"B"_s,
                                     u""_s, u"G"_s, u"F"_s, u"F"_s})
            tracks.push_back(onDisk(u"Artist"_s, u"Title"_s).genre(genre));
        QCOMPARE(
            HealthFigures::topGenres(figuresOf(tracks)),
            (QList<Bar>{
                {u"F"_s, 3}, {u"B"_s, 2}, {u"A"_s, 1}, {u"C"_s, 1}, {u"b"_s, 1}, {u"D"_s, 1}}));
        QVERIFY(HealthFigures::topGenres(figuresOf({})).isEmpty());
    }

    void aTempoFallsInItsBand_data()
    {
        QTest::addColumn<QString>("bpm");
        QTest::addColumn<QString>("band");
        const auto row = [](const char *bpm, const QString &band) {
            QTest::newRow(bpm) << QString::fromLatin1(bpm) << band;
        };
        row("0", {});
        row("-5", {});
        row("0.01", u"< 90"_s);
        row("89.99", u"< 90"_s);
        row("90", u"90–105"_s);
        row("105", u"105–120"_s);
        row("119.99", u"105–120"_s);
        row("120", u"120–130"_s);
        row("130", u"130–145"_s);
        row("145", u"145+"_s);
        row("998.9", u"145+"_s);
        row("999", {});
        row("abc", {});
        row("nan", {});
        row("inf", {});
        row("128 BPM", {});
        row("1e2", u"90–105"_s);
    }
    void aTempoFallsInItsBand()
    {
        QFETCH(const QString, bpm);
        QFETCH(const QString, band);
        const auto bars = HealthFigures::bpmBands(figuresOf({lost().bpm(bpm)}));
        QCOMPARE(bars.size(), 6);
        for (const Bar &bar : bars)
            QCOMPARE(bar.count, bar.label == band ? 1 : 0);
    }
};

QTEST_GUILESS_MAIN(HealthFiguresTest)
#include "health_figures_test.moc"
