#include "platform/reveal.h"
#include "screens/export/export_presenter.h"
#include "screens/export/export_presenter_user.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class ExportPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<ExportPresenterUser>(); }
    void cleanup() { m_user.reset(); }
    void hasNothingToShowBeforeAScan();
    void startsOnEngineWithoutAFolder();
    void choosesATarget();
    void asksForAFolderThatExists();
    void keepsTheFolderWhereNoneIsChosen();
    void takesNoAnswerOnceItHasGone();
    void exportsOnlyToAFolder();
    void tellsHowFarAnExportHasCome();
    void revealsWhatWasWritten();
    void showsTheExportOfAnotherVisit();

private:
    std::unique_ptr<ExportPresenterUser> m_user;
};

void ExportPresenterTest::hasNothingToShowBeforeAScan()
{
    AppState &app = m_user->launch(AppState::Environment::Ignored);
    ExportPresenter presenter(app);
    QVERIFY(!presenter.hasFigures());
    m_user->chooseFolder(presenter, m_user->folder());
    presenter.runExport();
    QVERIFY(!presenter.isExporting());
    QVERIFY(!presenter.knowsDrift());
}

void ExportPresenterTest::startsOnEngineWithoutAFolder()
{
    m_user->addTracks(3);
    m_user->addMissingTrack(u"Music/gone.mp3"_s);
    ExportPresenter presenter(m_user->start());
    const QAbstractItemModelTester targets(presenter.targets());
    const QAbstractItemModelTester carries(presenter.carries());
    const QAbstractItemModelTester drift(presenter.drift());
    QVERIFY(presenter.hasFigures());
    QCOMPARE(rowsOf(*presenter.targets(),
                    {TargetModel::SymbolRole, TargetModel::NameRole, TargetModel::ChosenRole}),
             QStringList({u"sdcard Engine DJ SD true"_s, u"externaldrive rekordbox USB false"_s,
                          u"archivebox Serato backup false"_s}));
    QCOMPARE(rowsOf(*presenter.targets(), {TargetModel::BlurbRole}),
             QStringList({u"An Engine Library (m.db) for Denon / Engine DJ hardware."_s,
                          u"A rekordbox collection XML for Pioneer / AlphaTheta gear."_s,
                          u"A copy of your Serato library files, for safekeeping."_s}));
    QCOMPARE(presenter.folder(), QString());
    QCOMPARE(presenter.folderTitle(), u"Choose destination…"_s);
    QCOMPARE(presenter.exportTitle(), u"Export 3 tracks"_s);
    QVERIFY(!presenter.canExport());
    QVERIFY(!presenter.isExporting());
    QCOMPARE(presenter.outcome(), QString());
}

void ExportPresenterTest::choosesATarget()
{
    ExportPresenter presenter(m_user->start());
    const QAbstractItemModelTester targets(presenter.targets());
    const QAbstractItemModelTester carries(presenter.carries());
    QSignalSpy changed(&presenter, &ExportPresenter::targetChanged);
    const auto carried = [&] {
        return rowsOf(*presenter.carries(),
                      {CarryModel::NameRole, CarryModel::WordRole, CarryModel::CarriesRole});
    };
    const QStringList common = {u"Hot cues Carries true"_s, u"Loops Carries true"_s,
                                u"Beat grids Carries true"_s};
    QCOMPARE(carried(), common + QStringList(u"Stems Carries true"_s));
    presenter.chooseTarget(rekordboxRow);
    QCOMPARE(rowsOf(*presenter.targets(), {TargetModel::ChosenRole}),
             QStringList({u"false"_s, u"true"_s, u"false"_s}));
    QCOMPARE(carried(), common + QStringList(u"Stems Dropped false"_s));
    QVERIFY(!presenter.stemsNote().isEmpty() && presenter.hardwareNote().isEmpty());
    presenter.chooseTarget(engineRow);
    QCOMPARE(carried(), common + QStringList(u"Stems Carries true"_s));
    QVERIFY(presenter.stemsNote().isEmpty() && !presenter.hardwareNote().isEmpty());
    presenter.chooseTarget(engineRow);
    presenter.chooseTarget(-1);
    presenter.chooseTarget(3);
    QCOMPARE(changed.size(), 2);
    QCOMPARE(presenter.targets()->chosen(), ExportTarget::Engine);
}

void ExportPresenterTest::asksForAFolderThatExists()
{
    ExportPresenter presenter(m_user->start());
    QList<platform::FileQuestion> asked;
    const platform::ScopedFileDialog dialog(
        [&](const platform::FileQuestion &question, const platform::FileChosen &chosen) {
            asked += question;
            chosen(u"/media/kim/GIG USB"_s);
        });
    presenter.pickDestination();
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first().kind, platform::FileQuestion::Kind::Folder);
    QCOMPARE(asked.first().message, u"Pick a drive or folder to export to"_s);
    QCOMPARE(asked.first().acceptLabel, u"Choose"_s);
    QCOMPARE(presenter.folder(), u"/media/kim/GIG USB"_s);
    QCOMPARE(presenter.folderTitle(), u"GIG USB"_s);
    QVERIFY(presenter.canExport());
}

void ExportPresenterTest::keepsTheFolderWhereNoneIsChosen()
{
    ExportPresenter presenter(m_user->start());
    const platform::ScopedFileDialog dialog(
        [](const platform::FileQuestion &, const platform::FileChosen &) {});
    presenter.pickDestination();
    QCOMPARE(presenter.folder(), QString());
    QVERIFY(!presenter.canExport());
    m_user->chooseFolder(presenter, m_user->folder());
    presenter.pickDestination();
    QCOMPARE(presenter.folder(), m_user->folder());
}

void ExportPresenterTest::takesNoAnswerOnceItHasGone()
{
    auto presenter = std::make_unique<ExportPresenter>(m_user->start());
    platform::FileChosen answer;
    const platform::ScopedFileDialog dialog(
        [&](const platform::FileQuestion &, const platform::FileChosen &chosen) {
            answer = chosen;
        });
    presenter->pickDestination();
    presenter.reset();
    answer(m_user->folder());
    QVERIFY(m_user->waitUntilIdle());
}

void ExportPresenterTest::exportsOnlyToAFolder()
{
    m_user->addTracks(2);
    ExportPresenter presenter(m_user->start());
    QSignalSpy canExport(&presenter, &ExportPresenter::canExportChanged);
    presenter.runExport();
    QVERIFY(!m_user->app().exporting());
    m_user->chooseFolder(presenter, m_user->folder());
    QCOMPARE(canExport.size(), 1);
    presenter.chooseTarget(rekordboxRow);
    presenter.runExport();
    QVERIFY(presenter.isExporting());
    QVERIFY(!presenter.canExport());
    QCOMPARE(canExport.size(), 2);
    const int tasks = m_user->app().pendingTasks();
    presenter.runExport();
    QCOMPARE(m_user->app().pendingTasks(), tasks);
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(presenter.canExport());
    QCOMPARE(canExport.size(), 3);
    QCOMPARE(m_user->root().names(u"GIG USB"_s), QStringList(u"rekordbox.xml"_s));
}

void ExportPresenterTest::tellsHowFarAnExportHasCome()
{
    m_user->addTracks(120);
    ExportPresenter presenter(m_user->start());
    m_user->chooseFolder(presenter, m_user->folder());
    QStringList told;
    connect(&presenter, &ExportPresenter::progressChanged, this, [&] {
        told += u"%1|%2|%3"_s.arg(presenter.phase(), presenter.progress())
                    .arg(presenter.fraction(), 0, 'f', 3);
    });
    presenter.runExport();
    QVERIFY(m_user->waitUntilIdle());
    QCOMPARE(told,
             QStringList({u"Starting…|0 of 0|0.000"_s, u"Creating Engine library…|0 of 120|0.000"_s,
                          u"Creating Engine library…|50 of 120|0.417"_s,
                          u"Creating Engine library…|100 of 120|0.833"_s,
                          u"Writing crates…|120 of 120|1.000"_s, u"||0.000"_s}));
}

void ExportPresenterTest::revealsWhatWasWritten()
{
    m_user->addTracks(2);
    ExportPresenter presenter(m_user->start());
    QStringList shown;
    const platform::ScopedFileManager manager([&](const QString &path) { shown += path; });
    presenter.reveal();
    QCOMPARE(shown, QStringList());
    m_user->chooseFolder(presenter, m_user->folder());
    presenter.runExport();
    QVERIFY(m_user->waitUntilIdle());
    QCOMPARE(presenter.outcome(), u"2 tracks · 0 crates → m.db"_s);
    presenter.reveal();
    QCOMPARE(shown, QStringList(m_user->folder() + u"/Engine Library/Database2/m.db"_s));
}

void ExportPresenterTest::showsTheExportOfAnotherVisit()
{
    m_user->addTracks(2);
    AppState &app = m_user->start();
    QVERIFY(m_user->exportTo(m_user->folder(), rekordboxRow));
    app.runExport(ExportTarget::Engine, m_user->folder());
    ExportPresenter presenter(app);
    QVERIFY(presenter.isExporting());
    QCOMPARE(presenter.outcome(), QString());
    QCOMPARE(presenter.folder(), QString());
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(!presenter.isExporting());
    QCOMPARE(presenter.outcome(), u"2 tracks · 0 crates → m.db"_s);
}

QTEST_GUILESS_MAIN(ExportPresenterTest)
#include "export_presenter_test.moc"
