#include "screens/gig_run/gig_run_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using GigRunFigures::Outcome;
using GigRunFigures::SetSheet;
using GigRunFigures::Step;
using GigRunFigures::StepState;

namespace {

ScannedTrack timed(const QString &length, const QString &bpm = {}, const QString &key = {})
{
    ScannedTrack scanned = onDisk().bpm(bpm).key(key);
    scanned.track.lengthText = length;
    return scanned;
}

} // namespace

class GigRunFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepsHaveTheirTitles()
    {
        QCOMPARE(GigRunFigures::titles(),
                 (QStringList{u"Relink"_s, u"Analyze grids"_s, u"Detect keys"_s, u"Level"_s,
                              u"Dedupe set"_s, u"Render stems"_s, u"Write Engine stick"_s,
                              u"Verify"_s}));
        QCOMPARE(GigRunFigures::titles().size(), GigRunFigures::stepCount);
    }

    void aStateIsShownByItsLineAndItsSymbol_data()
    {
        QTest::addColumn<StepState>("state");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("pending") << StepState() << u"Waiting"_s << QString();
        QTest::newRow("running") << StepState(GigRunFigures::StepRunning{}) << u"Working…"_s
                                 << u"arrow.clockwise"_s;
        QTest::newRow("done") << StepState(GigRunFigures::StepDone{u"All keyed"_s})
                              << u"All keyed"_s << u"checkmark"_s;
        QTest::newRow("skipped") << StepState(GigRunFigures::StepSkipped{u"3 dupe groups"_s})
                                 << u"3 dupe groups"_s << u"clock"_s;
    }
    void aStateIsShownByItsLineAndItsSymbol()
    {
        QFETCH(const StepState, state);
        QTEST(GigRunFigures::statusOf(state), "line");
        QTEST(GigRunFigures::symbolOf(state), "symbol");
    }

    void textsOfTheHead()
    {
        QCOMPARE(GigRunFigures::summary(1204, 7), u"1204 tracks · 7 crates"_s);
        QCOMPARE(GigRunFigures::runTitle(false), u"Run gig prep"_s);
        QCOMPARE(GigRunFigures::runTitle(true), u"Running…"_s);
    }

    void stepsTellWhatTheyFind_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<QString>("clean");
        QTest::addColumn<QString>("messy");
        const auto row = [](const char *name, Step step, const QString &clean,
                            const QString &messy) {
            QTest::newRow(name) << int(step) << clean << messy;
        };
        row("relink", Step::Relink, u"done All files present"_s, u"skipped 1 need relinking"_s);
        row("grids", Step::Grids, u"done Every track gridded"_s, u"skipped 1 without a grid"_s);
        row("keys", Step::Keys, u"done All keyed"_s, u"skipped 4 without a key"_s);
        row("level", Step::Level, u"done Levels even"_s, u"skipped 2 off by ≥1.5 dB"_s);
        row("dedupe", Step::Dedupe, u"done No duplicates"_s, u"skipped 1 dupe groups"_s);
        row("stems", Step::Stems, u"skipped Stems arrive in a later phase"_s,
            u"skipped Stems arrive in a later phase"_s);
        row("stick", Step::EngineStick, u"skipped Engine export arrives in Phase 5"_s,
            u"skipped Engine export arrives in Phase 5"_s);
        row("verify", Step::Verify, u"done Set sheet ready"_s, u"done Set sheet ready"_s);
    }
    void stepsTellWhatTheyFind()
    {
        QFETCH(const int, step);
        const Derived clean(scanOf({onDisk(u"A"_s, u"One"_s).key(u"8A"_s).tagsRead().grid(),
                                    onDisk(u"A"_s, u"Unread"_s).key(u"8A"_s)}));
        const Derived messy(scanOf({lost(u"A"_s, u"Gone"_s).tagsRead(),
                                    onDisk(u"A"_s, u"Twice"_s).tagsRead().gain().autogain(1.5),
                                    onDisk(u"A"_s, u"Twice"_s).grid().tagsRead(),
                                    onDisk(u"A"_s, u"Low"_s).grid().gain().autogain(-1.5)}));
        QTEST(described(GigRunFigures::findings(Step(step), clean)), "clean");
        QTEST(described(GigRunFigures::findings(Step(step), messy)), "messy");
    }

    void aTrackIsOffFromOneAndAHalfDecibels()
    {
        const Derived even(
            scanOf({onDisk().gain().autogain(1.49), onDisk().gain().autogain(-1.49)}));
        QCOMPARE(described(GigRunFigures::findings(Step::Level, even)), u"done Levels even"_s);
        QVERIFY(GigRunFigures::levelling(even).empty());
        const Derived off(scanOf({onDisk().gain().autogain(1.5), onDisk().gain().autogain(-1.5)}));
        QCOMPARE(GigRunFigures::levelling(off).size(), 2u);
        QCOMPARE(GigRunFigures::levelled(2), u"Levelled 2 tracks (tags)"_s);
        QCOMPARE(GigRunFigures::deduplicated(3), u"Held 3 duplicate copies"_s);
    }

    void theSheetWritesALength_data()
    {
        QTest::addColumn<QStringList>("lengths");
        QTest::addColumn<QString>("expected");
        QTest::newRow("nothing") << QStringList{} << u"0m"_s;
        QTest::newRow("below a minute") << QStringList{u"0:59"_s} << u"0m"_s;
        QTest::newRow("59 minutes") << QStringList{u"30:00"_s, u"29:59"_s} << u"59m"_s;
        QTest::newRow("an hour") << QStringList{u"60:00"_s} << u"1h 0m"_s;
        QTest::newRow("3660 seconds") << QStringList{u"1:00:00"_s, u"1:00"_s} << u"1h 1m"_s;
        const QString longest = u"0:9223372036854775807"_s;
        QTest::newRow("a sum that wraps") << QStringList{longest, longest, u"1:02"_s} << u"1m"_s;
        QTest::newRow("no length") << QStringList{u"04:23.17"_s, u"5:00"_s} << u"5m"_s;
    }
    void theSheetWritesALength()
    {
        QFETCH(const QStringList, lengths);
        ScanResult result;
        for (const QString &length : lengths)
            result.tracks.push_back(timed(length));
        QTEST(GigRunFigures::setSheet(result, 0).length, "expected");
    }

    void theSheetWritesATempoPath_data()
    {
        QTest::addColumn<QStringList>("tempos");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << QStringList{u""_s, u"0"_s, u"-3"_s, u"nan"_s, u"inf"_s, u"x"_s}
                              << QString();
        QTest::newRow("one") << QStringList{u"128.9"_s} << u"128–128"_s;
        QTest::newRow("several") << QStringList{u"128"_s, u"89.99"_s, u"174.5"_s} << u"89–174"_s;
    }
    void theSheetWritesATempoPath()
    {
        QFETCH(const QStringList, tempos);
        ScanResult result;
        for (const QString &tempo : tempos)
            result.tracks.push_back(timed({}, tempo));
        QTEST(GigRunFigures::setSheet(result, 0).tempoPath, "expected");
    }

    void theSheetCountsWhatIsOnDisk()
    {
        ScanResult result;
        result.tracks = {timed(u"5:00"_s, u"120"_s, u"8A"_s), timed(u"5:00"_s, u"122"_s, u"8A"_s),
                         timed(u"5:00"_s, {}, u"8a"_s), timed(u"5:00"_s),
                         lost().bpm(u"200"_s).key(u"1A"_s)};
        const SetSheet expected{4, 7, u"20m"_s, u"120–122"_s, 2};
        QCOMPARE(GigRunFigures::setSheet(result, 7), expected);
    }

private:
    static QString described(const Outcome &outcome)
    {
        return (GigRunFigures::isDone(outcome) ? u"done "_s : u"skipped "_s) +
               GigRunFigures::statusOf(GigRunFigures::stateOf(outcome));
    }
};

QTEST_GUILESS_MAIN(GigRunFiguresTest)
#include "gig_run_figures_test.moc"
