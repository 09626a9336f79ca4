#include "screens/score/score_figures.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class ScoreFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aScoreStandsInABand_data();
    void aScoreStandsInABand();
    void aDimensionIsImprovedOnItsScreen_data();
    void aDimensionIsImprovedOnItsScreen();
    void theSourceIsAlwaysScannedJustNow();
};

void ScoreFiguresTest::aScoreStandsInABand_data()
{
    QTest::addColumn<int>("score");
    QTest::addColumn<int>("band");
    const auto row = [](int score, ScoreFigures::Band band) {
        QTest::addRow("%d", score) << score << int(band);
    };
    row(100, ScoreFigures::Band::Good);
    row(80, ScoreFigures::Band::Good);
    row(79, ScoreFigures::Band::Warn);
    row(55, ScoreFigures::Band::Warn);
    row(54, ScoreFigures::Band::Poor);
    row(0, ScoreFigures::Band::Poor);
}

void ScoreFiguresTest::aScoreStandsInABand()
{
    QFETCH(int, score);
    QTEST(int(ScoreFigures::bandOf(score)), "band");
}

void ScoreFiguresTest::aDimensionIsImprovedOnItsScreen_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("screen");
    const auto row = [](Dimension::Kind kind, const char *screen) {
        QTest::addRow("%s", qPrintable(Dimension::rawValue(kind)))
            << int(kind) << QString::fromLatin1(screen);
    };
    row(Dimension::Kind::FilesLinks, "missing");
    row(Dimension::Kind::CuesGrids, "cues");
    row(Dimension::Kind::Duplicates, "duplicates");
    row(Dimension::Kind::TagsGenres, "trackID");
    row(Dimension::Kind::Levels, "loudness");
    row(Dimension::Kind::ExportParity, "export");
}

void ScoreFiguresTest::aDimensionIsImprovedOnItsScreen()
{
    QFETCH(int, kind);
    QTEST(infoOf(ScoreFigures::screenFor(Dimension::Kind(kind))).rawValue, "screen");
}

void ScoreFiguresTest::theSourceIsAlwaysScannedJustNow()
{
    QCOMPARE(ScoreFigures::sourceLine(u"Stick %2"_s, 1234),
             u"Stick %2 · 1234 tracks · scanned just now"_s);
    QCOMPARE(ScoreFigures::sourceLine(u"Stick"_s, 1), u"Stick · 1 tracks · scanned just now"_s);
}

QTEST_APPLESS_MAIN(ScoreFiguresTest)
#include "score_figures_test.moc"
