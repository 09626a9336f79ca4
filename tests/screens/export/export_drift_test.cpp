#include "screens/components/tint.h"
#include "screens/export/export_presenter.h"
#include "screens/export/export_presenter_user.h"
#include "support/held_file.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QStringList driftOf(ExportPresenter &presenter)
{
    return rowsOf(*presenter.drift(),
                  {DriftModel::LabelRole, DriftModel::ValueRole, DriftModel::TintRole});
}

QString figure(const QString &label, int value, Tint::Value tint)
{
    return u"%1 %2 %3"_s.arg(label).arg(value).arg(int(tint));
}

} // namespace

/// How the export screen's presenter compares the library with an earlier export.
class ExportDriftTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<ExportPresenterUser>(); }
    void cleanup() { m_user.reset(); }
    void tellsNoDriftWithoutAFolder();
    void comparesWithAnEarlierExport();
    void hasNothingToCompareABackupWith();
    void comparesAfreshWithEachChange();
    void comparesAfreshWhenAnExportHasFailed();
    void comparesOnceForAnExportOfManyReports();
    void showsNoAnswerToAnEarlierQuestion();
    void goesWhileAnExportAndAComparisonRun();

private:
    std::unique_ptr<ExportPresenterUser> m_user;
};

void ExportDriftTest::tellsNoDriftWithoutAFolder()
{
    m_user->addTracks(1);
    AppState &app = m_user->start();
    QVERIFY(m_user->exportTo(m_user->folder(), engineRow));
    ExportPresenter presenter(app);
    QTest::qWait(50);
    QVERIFY(!presenter.knowsDrift());
    QCOMPARE(presenter.nothingToCompare(), QString());
    QCOMPARE(driftOf(presenter), QStringList());
}

void ExportDriftTest::comparesWithAnEarlierExport()
{
    m_user->addTracks(3);
    AppState &app = m_user->start();
    QVERIFY(m_user->exportTo(m_user->folder(), rekordboxRow));
    ExportPresenter presenter(app);
    const QAbstractItemModelTester tester(presenter.drift());
    m_user->chooseFolder(presenter, m_user->folder());
    QVERIFY(!presenter.knowsDrift());
    QTRY_VERIFY(presenter.knowsDrift());
    QCOMPARE(presenter.nothingToCompare(), u"No previous export here yet — nothing to compare."_s);
    QCOMPARE(driftOf(presenter), QStringList());
    presenter.chooseTarget(rekordboxRow);
    QVERIFY(!presenter.knowsDrift());
    QCOMPARE(presenter.nothingToCompare(), QString());
    QTRY_VERIFY(presenter.knowsDrift());
    QCOMPARE(presenter.nothingToCompare(), QString());
    QCOMPARE(driftOf(presenter), QStringList({figure(u"Serato only"_s, 0, Tint::Good),
                                              figure(u"Device only"_s, 0, Tint::Good)}));
}

void ExportDriftTest::hasNothingToCompareABackupWith()
{
    m_user->addTracks(1);
    AppState &app = m_user->start();
    ExportPresenter presenter(app);
    presenter.chooseTarget(backupRow);
    m_user->chooseFolder(presenter, m_user->folder());
    presenter.runExport();
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(app.lastExport());
    QTRY_VERIFY(presenter.knowsDrift());
    QCOMPARE(presenter.nothingToCompare(), u"No previous export here yet — nothing to compare."_s);
}

void ExportDriftTest::comparesAfreshWithEachChange()
{
    m_user->addTracks(3);
    AppState &app = m_user->start();
    QVERIFY(m_user->exportTo(m_user->folder(), engineRow));
    ExportPresenter presenter(app);
    m_user->chooseFolder(presenter, m_user->folder());
    QTRY_COMPARE(driftOf(presenter).size(), 2);

    app.dropFromLibrary(ScannedTrack(m_user->track(0)));
    QVERIFY(!presenter.knowsDrift());
    QCOMPARE(presenter.exportTitle(), u"Export 2 tracks"_s);
    QTRY_COMPARE(driftOf(presenter), QStringList({figure(u"Serato only"_s, 0, Tint::Good),
                                                  figure(u"Device only"_s, 1, Tint::Warn)}));
    presenter.runExport();
    QCOMPARE(driftOf(presenter).size(), 2);
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(!presenter.knowsDrift());
    QTRY_COMPARE(driftOf(presenter), QStringList({figure(u"Serato only"_s, 0, Tint::Good),
                                                  figure(u"Device only"_s, 0, Tint::Good)}));
    m_user->chooseFolder(presenter, m_user->folder(u"other"_s));
    QVERIFY(!presenter.knowsDrift());
    QTRY_VERIFY(!presenter.nothingToCompare().isEmpty());
    QCOMPARE(driftOf(presenter), QStringList());
}

void ExportDriftTest::comparesAfreshWhenAnExportHasFailed()
{
    m_user->addTracks(1);
    AppState &app = m_user->start();
    QVERIFY(m_user->exportTo(m_user->folder(), rekordboxRow));
    ExportPresenter presenter(app);
    presenter.chooseTarget(rekordboxRow);
    m_user->chooseFolder(presenter, m_user->folder());
    QTRY_COMPARE(driftOf(presenter).size(), 2);
    QVERIFY(QFile::remove(m_user->folder() + u"/rekordbox.xml"_s));
    m_user->root().makeFolder(u"GIG USB/rekordbox.xml"_s);
    presenter.runExport();
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(!app.lastExport());
    QVERIFY(presenter.canExport());
    QCOMPARE(presenter.outcome(), QString());
    QTRY_VERIFY(!presenter.nothingToCompare().isEmpty());
}

void ExportDriftTest::comparesOnceForAnExportOfManyReports()
{
    m_user->addTracks(300);
    ExportPresenter presenter(m_user->start());
    m_user->chooseFolder(presenter, m_user->folder());
    QTRY_VERIFY(presenter.knowsDrift());
    QSignalSpy progress(&presenter, &ExportPresenter::progressChanged);
    QSignalSpy drift(&presenter, &ExportPresenter::driftChanged);
    presenter.runExport();
    QVERIFY(m_user->waitUntilIdle());
    QTRY_VERIFY(presenter.knowsDrift());
    QVERIFY(progress.size() > 7);
    // Dropped, then known again.
    QCOMPARE(drift.size(), 2);
}

void ExportDriftTest::showsNoAnswerToAnEarlierQuestion()
{
    m_user->addTracks(2);
    AppState &app = m_user->start();
    QVERIFY(m_user->exportTo(m_user->folder(), rekordboxRow));
    ExportPresenter presenter(app);
    presenter.chooseTarget(rekordboxRow);
    QStringList shown;
    connect(&presenter, &ExportPresenter::driftChanged, this, [&] {
        if (presenter.knowsDrift())
            shown += presenter.nothingToCompare() + driftOf(presenter).join(u", "_s);
    });
    HeldFile held(u"rekordbox.xml"_s);
    m_user->chooseFolder(presenter, m_user->folder());
    QVERIFY(held.waitUntilReached());
    QVERIFY(!presenter.knowsDrift());
    presenter.chooseTarget(backupRow);
    QTRY_VERIFY(presenter.knowsDrift());
    held.release();
    QTest::qWait(100);
    QCOMPARE(shown, QStringList(u"No previous export here yet — nothing to compare."_s));
}

void ExportDriftTest::goesWhileAnExportAndAComparisonRun()
{
    m_user->addTracks(60);
    AppState &app = m_user->start();
    QVERIFY(m_user->exportTo(m_user->folder(), rekordboxRow));
    auto presenter = std::make_unique<ExportPresenter>(app);
    presenter->chooseTarget(rekordboxRow);
    HeldFile held(u"rekordbox.xml"_s);
    m_user->chooseFolder(*presenter, m_user->folder());
    QVERIFY(held.waitUntilReached());
    presenter->runExport();
    presenter.reset();
    held.release();
    QVERIFY(m_user->waitUntilIdle());
    QTest::qWait(50);
    QCOMPARE(app.lastExport()->trackCount, 60);
    QCOMPARE(m_user->toasts().last(), u"Exported 60 tracks to rekordbox USB"_s);
}

QTEST_GUILESS_MAIN(ExportDriftTest)
#include "export_drift_test.moc"
