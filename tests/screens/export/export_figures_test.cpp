#include "screens/export/export_figures.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class ExportFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellWhatATargetTakesAlong_data();
    void tellWhatATargetTakesAlong();
    void noteWhatATargetHasOfItsOwn_data();
    void noteWhatATargetHasOfItsOwn();
    void nameAFolderByItsLastPart_data();
    void nameAFolderByItsLastPart();
    void countTracksPlainly();
    void tellHowFarAnExportHasCome();
    void tellWhatAnExportHasWritten();
    void tellTheTwoSidesOfADrift();
    void aSideIsInLineWhenItHasNothingOfItsOwn_data();
    void aSideIsInLineWhenItHasNothingOfItsOwn();
};

void ExportFiguresTest::tellWhatATargetTakesAlong_data()
{
    QTest::addColumn<ExportTarget>("target");
    QTest::addColumn<QString>("stems");
    QTest::newRow("Engine") << ExportTarget::Engine << u"Stems Carries"_s;
    QTest::newRow("rekordbox") << ExportTarget::Rekordbox << u"Stems Dropped"_s;
    QTest::newRow("backup") << ExportTarget::SeratoBackup << u"Stems Carries"_s;
}

void ExportFiguresTest::tellWhatATargetTakesAlong()
{
    QFETCH(const ExportTarget, target);
    QFETCH(const QString, stems);
    QStringList rows;
    for (const auto &carry : ExportFigures::carriesOf(target)) {
        rows += carry.name + u' ' + carry.word();
        QCOMPARE(carry.carries, carry.word() == u"Carries"_s);
    }
    QCOMPARE(rows, QStringList({u"Hot cues Carries"_s, u"Loops Carries"_s, u"Beat grids Carries"_s,
                                stems}));
}

void ExportFiguresTest::noteWhatATargetHasOfItsOwn_data()
{
    QTest::addColumn<ExportTarget>("target");
    QTest::addColumn<QString>("stems");
    QTest::addColumn<QString>("hardware");
    QTest::newRow("Engine") << ExportTarget::Engine << QString()
                            << u"Engine's schema varies by version — confirm the library opens on "
                               "your hardware before a gig."_s;
    QTest::newRow("rekordbox") << ExportTarget::Rekordbox
                               << u"rekordbox has no stems format — everything else transfers."_s
                               << QString();
    QTest::newRow("backup") << ExportTarget::SeratoBackup << QString() << QString();
}

void ExportFiguresTest::noteWhatATargetHasOfItsOwn()
{
    QFETCH(const ExportTarget, target);
    QTEST(ExportFigures::stemsNote(target), "stems");
    QTEST(ExportFigures::hardwareNote(target), "hardware");
}

void ExportFiguresTest::nameAFolderByItsLastPart_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("title");
    QTest::newRow("none") << QString() << u"Choose destination…"_s;
    QTest::newRow("drive") << u"/media/kim/GIG USB"_s << u"GIG USB"_s;
    QTest::newRow("slash at the end") << u"/media/kim/GIG/"_s << u"GIG"_s;
    QTest::newRow("point") << u"/home/kim/set.2026"_s << u"set.2026"_s;
    QTest::newRow("root") << u"/"_s << u"/"_s;
}

void ExportFiguresTest::nameAFolderByItsLastPart()
{
    QFETCH(const QString, folder);
    QTEST(ExportFigures::folderTitle(folder), "title");
}

void ExportFiguresTest::countTracksPlainly()
{
    QCOMPARE(ExportFigures::exportTitle(0), u"Export 0 tracks"_s);
    QCOMPARE(ExportFigures::exportTitle(1), u"Export 1 tracks"_s);
    QCOMPARE(ExportFigures::exportTitle(123456), u"Export 123456 tracks"_s);
}

void ExportFiguresTest::tellHowFarAnExportHasCome()
{
    QCOMPARE(ExportFigures::progressLine({}), u"0 of 0"_s);
    QCOMPARE(ExportFigures::progressLine({u"Writing"_s, 1250, 100000}), u"1250 of 100000"_s);
}

void ExportFiguresTest::tellWhatAnExportHasWritten()
{
    QCOMPARE(ExportFigures::outcomeLine({.target = ExportTarget::Engine,
                                         .path = u"/media/GIG/Engine Library/Database2/m.db"_s,
                                         .trackCount = 12034,
                                         .crateCount = 1}),
             u"12034 tracks · 1 crates → m.db"_s);
    QCOMPARE(ExportFigures::outcomeLine({.target = ExportTarget::SeratoBackup,
                                         .path = u"/media/%1/_Serato_ backup"_s,
                                         .trackCount = 5,
                                         .crateCount = 0}),
             u"5 tracks · 0 crates → _Serato_ backup"_s);
}

void ExportFiguresTest::tellTheTwoSidesOfADrift()
{
    const auto figures = ExportFigures::figuresOf({.seratoOnly = 3, .deviceOnly = 14});
    QCOMPARE(figures[0].label, u"Serato only"_s);
    QCOMPARE(figures[0].count, 3);
    QCOMPARE(figures[1].label, u"Device only"_s);
    QCOMPARE(figures[1].count, 14);
    QCOMPARE(ExportFigures::nothingToCompare(),
             u"No previous export here yet — nothing to compare."_s);
}

void ExportFiguresTest::aSideIsInLineWhenItHasNothingOfItsOwn_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("inLine");
    QTest::newRow("0") << 0 << true;
    QTest::newRow("1") << 1 << false;
    QTest::newRow("2") << 2 << false;
}

void ExportFiguresTest::aSideIsInLineWhenItHasNothingOfItsOwn()
{
    QFETCH(const int, count);
    QFETCH(const bool, inLine);
    QCOMPARE(ExportFigures::figuresOf({.seratoOnly = count, .deviceOnly = 5})[0].isInLine(),
             inLine);
    QCOMPARE(ExportFigures::figuresOf({.seratoOnly = 5, .deviceOnly = count})[1].isInLine(),
             inLine);
}

QTEST_APPLESS_MAIN(ExportFiguresTest)
#include "export_figures_test.moc"
