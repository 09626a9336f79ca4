#include "export/export_records.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class ExportTargetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatIsFixedAboutATarget_data();
    void tellsWhatIsFixedAboutATarget();
    void listsTheTargetsInTheOrderOfTheEnumeration();
    void losesStemsOnRekordboxAlone();
    void findsATargetByItsExactCaseName();
    void givesTheFractionOfAProgress_data();
    void givesTheFractionOfAProgress();
};

void ExportTargetTest::tellsWhatIsFixedAboutATarget_data()
{
    QTest::addColumn<ExportTarget>("target");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("Engine") << ExportTarget::Engine
                            << QStringList{u"Engine DJ SD"_s, u"sdcard"_s, u"Engine Library"_s,
                                           u"An Engine Library (m.db) for Denon / Engine DJ "
                                           "hardware."_s};
    QTest::newRow("rekordbox") << ExportTarget::Rekordbox
                               << QStringList{u"rekordbox USB"_s, u"externaldrive"_s,
                                              u"rekordbox.xml"_s,
                                              u"A rekordbox collection XML for Pioneer / "
                                              "AlphaTheta gear."_s};
    QTest::newRow("backup") << ExportTarget::SeratoBackup
                            << QStringList{u"Serato backup"_s, u"archivebox"_s,
                                           u"_Serato_ backup"_s,
                                           u"A copy of your Serato library files, for "
                                           "safekeeping."_s};
}

void ExportTargetTest::tellsWhatIsFixedAboutATarget()
{
    QFETCH(ExportTarget, target);
    const ExportTargetInfo &info = infoOf(target);
    QCOMPARE(info.target, target);
    QTEST((QStringList{info.rawValue, info.symbol, info.fileName, info.blurb}), "texts");
    QCOMPARE(info.id(), info.rawValue);
}

void ExportTargetTest::listsTheTargetsInTheOrderOfTheEnumeration()
{
    QList<ExportTarget> targets;
    for (const ExportTargetInfo &info : allExportTargets())
        targets.append(info.target);
    const QList<ExportTarget> expected = {ExportTarget::Engine, ExportTarget::Rekordbox,
                                          ExportTarget::SeratoBackup};
    QCOMPARE(targets, expected);
}

void ExportTargetTest::losesStemsOnRekordboxAlone()
{
    const CarryOver all{.cues = true, .loops = true, .grids = true, .stems = true};
    const CarryOver withoutStems{.cues = true, .loops = true, .grids = true, .stems = false};
    QVERIFY(infoOf(ExportTarget::Engine).carryOver == all);
    QVERIFY(infoOf(ExportTarget::Rekordbox).carryOver == withoutStems);
    QVERIFY(infoOf(ExportTarget::SeratoBackup).carryOver == all);
}

void ExportTargetTest::findsATargetByItsExactCaseName()
{
    QCOMPARE(exportTargetFromCaseName(u"engine"), ExportTarget::Engine);
    QCOMPARE(exportTargetFromCaseName(u"rekordbox"), ExportTarget::Rekordbox);
    QCOMPARE(exportTargetFromCaseName(u"seratoBackup"), ExportTarget::SeratoBackup);
    for (const QString &name : {u"Engine"_s, u"serato"_s, u"seratobackup"_s, u""_s})
        QVERIFY2(!exportTargetFromCaseName(name), qUtf8Printable(name));
}

void ExportTargetTest::givesTheFractionOfAProgress_data()
{
    QTest::addColumn<int>("written");
    QTest::addColumn<int>("total");
    QTest::addColumn<double>("fraction");
    QTest::newRow("nothing to do") << 0 << 0 << 0.0;
    QTest::newRow("written without a total") << 7 << 0 << 0.0;
    QTest::newRow("not begun") << 0 << 8 << 0.0;
    QTest::newRow("in between") << 2 << 8 << 0.25;
    QTest::newRow("done") << 8 << 8 << 1.0;
}

void ExportTargetTest::givesTheFractionOfAProgress()
{
    QFETCH(int, written);
    QFETCH(int, total);
    QTEST((ExportProgress{u"Writing"_s, written, total}.fraction()), "fraction");
}

QTEST_APPLESS_MAIN(ExportTargetTest)
#include "export_target_test.moc"
