// Exports through AppState, of real libraries on disk.

#include "app/app_state.h"
#include "platform/fault_gate.h"
#include "support/app_fixture.h"
#include "support/memory_folder.h"
#include "support/running_program.h"
#include "support/test_files.h"

#include <QThread>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr int trackCount = 120;

QString nameOf(int number)
{
    return u"Music/%1.mp3"_s.arg(number);
}

QString shown(const std::optional<ExportProgress> &progress)
{
    return progress ? u"%1 %2/%3"_s.arg(progress->phase).arg(progress->written).arg(progress->total)
                    : u"none"_s;
}

std::optional<ExportDrift> drift(int seratoOnly, int deviceOnly)
{
    return ExportDrift{.seratoOnly = seratoOnly, .deviceOnly = deviceOnly};
}

} // namespace

class ExportCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { keepTemporaryFoldersInMemory(); }
    void init();
    void cleanup() { m_fixture.reset(); }
    void doesNothingBeforeAScan();
    void runsAnExport_data();
    void runsAnExport();
    void reportsItsProgressOnTheMainThread_data();
    void reportsItsProgressOnTheMainThread();
    void beginsWithoutAnEarlierOutcome();
    void tellsWhyAnExportFailed_data();
    void tellsWhyAnExportFailed();
    void leavesWhatAFailedExportHasWritten();
    void exportsTheLibraryAsItWasAtTheStart();
    void isNotDisturbedByACommand();
    void exportsTheCratesOfTheScan();
    void runsTwoExportsAtOnce();
    void outlivesItsAppState();
    void needsNeitherAClosedSeratoNorASnapshot();
    void leavesTheLibraryAsItIs();
    void tellsTheDriftOfEachTarget();
    void exportsToAFolderOfAnyName_data();
    void exportsToAFolderOfAnyName();

private:
    QByteArrayList tracksOnDisk(int count) const;
    QString destination() const { return m_fixture->root().path(u"USB"_s); }
    QString written(const QString &name) const { return destination() + u'/' + name; }
    AppState &launchAndScan() { return m_fixture->launchAndScan(); }
    bool exportAndWait(ExportTarget target)
    {
        m_fixture->app().runExport(target, destination());
        return m_fixture->waitUntilIdle();
    }

    std::unique_ptr<AppFixture> m_fixture;
};

QByteArrayList ExportCommandsTest::tracksOnDisk(int count) const
{
    QByteArrayList records;
    for (int number = 1; number <= count; ++number)
        records.append(
            trackRecord({textRecord("pfil", m_fixture->writeAudio(nameOf(number), "audio"))}));
    return records;
}

void ExportCommandsTest::init()
{
    m_fixture = std::make_unique<AppFixture>();
    QByteArrayList records = tracksOnDisk(trackCount);
    records.append(trackRecord({textRecord("pfil", u"nowhere/gone.mp3"_s)}));
    m_fixture->writeHomeDatabase(records);
    const QByteArray entry = trackRecord({textRecord("ptrk", m_fixture->home(nameOf(7)))});
    put(m_fixture->home(u"Music/_Serato_/Subcrates/Warm up.crate"_s), entry);
    put(m_fixture->home(u"Music/_Serato_/Subcrates/Empty.crate"_s), {});
}

void ExportCommandsTest::doesNothingBeforeAScan()
{
    AppState &app = m_fixture->launch(AppState::Environment::Ignored);
    QVERIFY(m_fixture->waitUntilIdle());
    QSignalSpy exporting(&app, &AppState::exportingChanged);
    for (const ExportTargetInfo &target : allExportTargets()) {
        app.runExport(target.target, destination());
        QCOMPARE(app.pendingTasks(), 0);
        QVERIFY(!app.drift(target.target, destination()));
    }
    QCOMPARE(exporting.size(), 0);
    QVERIFY(!app.exporting() && !app.lastExport() && !app.toast());
    QVERIFY(!QFileInfo::exists(destination()));
}

void ExportCommandsTest::runsAnExport_data()
{
    QTest::addColumn<ExportTarget>("target");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("tracks");
    QTest::addColumn<int>("crates");
    QTest::addColumn<QString>("toast");
    QTest::newRow("Engine") << ExportTarget::Engine << u"Engine Library/Database2/m.db"_s
                            << trackCount << 1 << u"Exported 120 tracks to Engine DJ SD"_s;
    QTest::newRow("rekordbox") << ExportTarget::Rekordbox << u"rekordbox.xml"_s << trackCount << 1
                               << u"Exported 120 tracks to rekordbox USB"_s;
    QTest::newRow("backup") << ExportTarget::SeratoBackup << u"_Serato_ backup"_s << 2 << 2
                            << u"Exported 2 tracks to Serato backup"_s;
}

void ExportCommandsTest::runsAnExport()
{
    QFETCH(ExportTarget, target);
    QFETCH(QString, file);
    QFETCH(int, tracks);
    QFETCH(int, crates);
    AppState &app = launchAndScan();
    app.runExport(target, destination());
    QCOMPARE(shown(app.exporting()), u"Starting… 0/0"_s);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.exporting());
    const ExportOutcome expected{target, written(file), tracks, crates};
    QCOMPARE(app.lastExport(), expected);
    QVERIFY(QFileInfo::exists(written(file)));
    QTEST(app.toast()->message, "toast");
    QVERIFY(!app.toast()->reversible && !app.toast()->isProblem);
}

void ExportCommandsTest::reportsItsProgressOnTheMainThread_data()
{
    QTest::addColumn<ExportTarget>("target");
    QTest::addColumn<QStringList>("reports");
    QTest::newRow("Engine") << ExportTarget::Engine
                            << QStringList{u"Creating Engine library… 0/120"_s,
                                           u"Creating Engine library… 50/120"_s,
                                           u"Creating Engine library… 100/120"_s,
                                           u"Writing crates… 120/120"_s};
    QTest::newRow("rekordbox") << ExportTarget::Rekordbox
                               << QStringList{u"Writing collection… 0/120"_s,
                                              u"Writing collection… 50/120"_s,
                                              u"Writing collection… 100/120"_s,
                                              u"Writing playlists… 120/120"_s};
    QTest::newRow("backup") << ExportTarget::SeratoBackup
                            << QStringList{u"Copying library files… 0/5"_s,
                                           u"Copying library files… 1/5"_s,
                                           u"Copying library files… 2/5"_s};
}

void ExportCommandsTest::reportsItsProgressOnTheMainThread()
{
    QFETCH(ExportTarget, target);
    QFETCH(QStringList, reports);
    AppState &app = launchAndScan();
    QStringList seen;
    bool onMainThread = true;
    connect(
        &app, &AppState::exportingChanged, &app,
        [&] {
            seen.append(shown(app.exporting()));
            onMainThread = onMainThread && QThread::currentThread() == app.thread();
        },
        Qt::DirectConnection);
    QVERIFY(exportAndWait(target));
    QCOMPARE(seen, QStringList{u"Starting… 0/0"_s} + reports + QStringList{u"none"_s});
    QVERIFY(onMainThread);
}

void ExportCommandsTest::beginsWithoutAnEarlierOutcome()
{
    AppState &app = launchAndScan();
    QVERIFY(exportAndWait(ExportTarget::Rekordbox));
    QVERIFY(app.lastExport());
    QSignalSpy changes(&app, &AppState::lastExportChanged);
    app.runExport(ExportTarget::SeratoBackup, destination());
    QVERIFY(!app.lastExport());
    QCOMPARE(changes.size(), 1);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.lastExport()->target, ExportTarget::SeratoBackup);
    QCOMPARE(changes.size(), 2);
}

void ExportCommandsTest::tellsWhyAnExportFailed_data()
{
    QTest::addColumn<ExportTarget>("target");
    QTest::addColumn<QString>("inTheWay");
    QTest::addColumn<QString>("message");
    const QString notAFolder = u"The file “%1” couldn't be created: Not a directory."_s;
    QTest::newRow("Engine, the folder is a file")
        << ExportTarget::Engine << u"USB"_s << notAFolder.arg(u"Database2"_s);
    QTest::newRow("Engine, the database is a folder")
        << ExportTarget::Engine << u"USB/Engine Library/Database2/m.db/file"_s
        << u"Couldn't create Engine database: unable to open database file"_s;
    QTest::newRow("rekordbox, the folder is a file")
        << ExportTarget::Rekordbox << u"USB"_s
        << u"The file “USB” couldn't be created: File exists."_s;
    QTest::newRow("rekordbox, the file is a folder")
        << ExportTarget::Rekordbox << u"USB/rekordbox.xml/file"_s
        << u"The file “rekordbox.xml” couldn't be written: Is a directory."_s;
    QTest::newRow("backup, the folder is a file")
        << ExportTarget::SeratoBackup << u"USB"_s << notAFolder.arg(u"_Serato_ backup"_s);
}

void ExportCommandsTest::tellsWhyAnExportFailed()
{
    QFETCH(ExportTarget, target);
    QFETCH(QString, inTheWay);
    AppState &app = launchAndScan();
    m_fixture->root().write(u"another folder/file"_s);
    app.runExport(ExportTarget::SeratoBackup, m_fixture->root().path(u"another folder"_s));
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->root().write(inTheWay, "in the way");
    QVERIFY(exportAndWait(target));
    QVERIFY(!app.exporting());
    QVERIFY(!app.lastExport());
    QTEST(app.toast()->message, "message");
    QVERIFY(app.toast()->isProblem);
    QVERIFY(!app.toast()->reversible);
    QCOMPARE(m_fixture->root().read(inTheWay), QByteArray("in the way"));
}

void ExportCommandsTest::leavesWhatAFailedExportHasWritten()
{
    AppState &app = launchAndScan();
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &path) {
        const bool fails =
            operation == platform::FileOperation::Open && path.endsWith(u"Warm up.crate"_s);
        return fails ? EIO : 0;
    });
    QVERIFY(exportAndWait(ExportTarget::SeratoBackup));
    QVERIFY(!app.lastExport());
    QCOMPARE(app.toast()->message,
             u"The file “Subcrates” couldn't be copied: Input/output error."_s);
    QVERIFY(QFileInfo::exists(written(u"_Serato_ backup/database V2"_s)));
}

void ExportCommandsTest::exportsTheLibraryAsItWasAtTheStart()
{
    AppState &app = launchAndScan();
    m_fixture->writeHomeDatabase({});
    app.rescan();
    QVERIFY(exportAndWait(ExportTarget::Engine));
    QCOMPARE(app.result()->total(), 0);
    QCOMPARE(app.lastExport()->trackCount, trackCount);
    QCOMPARE(app.drift(ExportTarget::Engine, destination()), drift(0, trackCount));
}

void ExportCommandsTest::isNotDisturbedByACommand()
{
    AppState &app = launchAndScan();
    const ScannedTrack first = app.result()->tracks.front();
    app.runExport(ExportTarget::Engine, destination());
    app.dropFromLibrary(first);
    QCOMPARE(app.result()->total(), trackCount); // of one more, one of them missing
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.lastExport()->trackCount, trackCount);
    QCOMPARE(app.drift(ExportTarget::Engine, destination()), drift(0, 1));
}

void ExportCommandsTest::exportsTheCratesOfTheScan()
{
    launchAndScan();
    QDir(m_fixture->home(u"Music/_Serato_/Subcrates"_s)).removeRecursively();
    QVERIFY(exportAndWait(ExportTarget::Rekordbox));
    QVERIFY(m_fixture->root()
                .read(u"USB/rekordbox.xml"_s)
                .contains("      <NODE Name=\"Warm up\" Type=\"1\" KeyType=\"0\" Entries=\"1\">\n"
                          "        <TRACK Key=\"7\"/>\n      </NODE>\n"));
}

void ExportCommandsTest::runsTwoExportsAtOnce()
{
    AppState &app = launchAndScan();
    QStringList toasts;
    connect(&app, &AppState::toastRaised, &app,
            [&](const Toast &toast) { toasts.append(toast.message); });
    app.runExport(ExportTarget::Engine, destination());
    app.runExport(ExportTarget::Rekordbox, destination());
    QVERIFY(m_fixture->waitUntilIdle());
    toasts.sort();
    QCOMPARE(toasts, (QStringList{u"Exported 120 tracks to Engine DJ SD"_s,
                                  u"Exported 120 tracks to rekordbox USB"_s}));
    QVERIFY(!app.exporting());
    QVERIFY(app.lastExport());
}

void ExportCommandsTest::outlivesItsAppState()
{
    launchAndScan().runExport(ExportTarget::Rekordbox, destination());
    m_fixture->launch(AppState::Environment::Ignored); // ends the first
    QTRY_VERIFY(QFileInfo::exists(written(u"rekordbox.xml"_s)));
    QVERIFY(!m_fixture->app().exporting());
}

void ExportCommandsTest::needsNeitherAClosedSeratoNorASnapshot()
{
    const RunningProgram serato(u"Serato DJ Pro"_s);
    AppState &app = launchAndScan();
    QVERIFY(!app.canWrite());
    for (const ExportTargetInfo &target : allExportTargets()) {
        QVERIFY(exportAndWait(target.target));
        QCOMPARE(app.lastExport()->target, target.target);
    }
    QCOMPARE(app.snapshots().size(), 0);
    QCOMPARE(app.changeEntries().size(), 0);
}

void ExportCommandsTest::leavesTheLibraryAsItIs()
{
    launchAndScan();
    const QMap<QString, QByteArray> before = treeOf(m_fixture->home(u"Music"_s));
    for (const ExportTargetInfo &target : allExportTargets())
        QVERIFY(exportAndWait(target.target));
    QCOMPARE(treeOf(m_fixture->home(u"Music"_s)), before);
}

void ExportCommandsTest::tellsTheDriftOfEachTarget()
{
    AppState &app = launchAndScan();
    for (const ExportTargetInfo &target : allExportTargets()) {
        QCOMPARE(app.drift(target.target, destination()), std::nullopt);
        QVERIFY(exportAndWait(target.target));
    }
    QCOMPARE(app.drift(ExportTarget::Engine, destination()), drift(0, 0));
    QCOMPARE(app.drift(ExportTarget::Rekordbox, destination()), drift(0, 0));

    QByteArrayList records = tracksOnDisk(trackCount + 2).sliced(1);
    m_fixture->writeHomeDatabase(records); // one removed, two added
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.drift(ExportTarget::Engine, destination()), drift(2, 1));
    QCOMPARE(app.drift(ExportTarget::Rekordbox, destination()), drift(2, 1));
    QCOMPARE(app.drift(ExportTarget::SeratoBackup, destination()), std::nullopt);
}

void ExportCommandsTest::exportsToAFolderOfAnyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes, ampersand, angles") << u"Don't \"stop\" & <go>"_s;
    QTest::newRow("what URLs keep for themselves") << u"100% #1?a=b&%41"_s;
    QTest::newRow("line break and tab") << u"line\nbreak\ttab"_s;
    QTest::newRow("beyond ASCII") << u"漢字 🎧 e\u0301"_s;
    QTest::newRow("255 bytes") << u"é"_s.repeated(127) + u'x';
    QTest::newRow("a slash behind") << u"USB stick/"_s;
    QTest::newRow("several levels") << u"a/b/c"_s;
}

void ExportCommandsTest::exportsToAFolderOfAnyName()
{
    QFETCH(QString, name);
    AppState &app = launchAndScan();
    const QString folder = m_fixture->root().path(name);
    for (const ExportTargetInfo &target : allExportTargets()) {
        app.runExport(target.target, folder);
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY2(app.lastExport(), qUtf8Printable(app.toast()->message));
        QVERIFY(QFileInfo::exists(app.lastExport()->path));
        QCOMPARE(app.drift(target.target, folder),
                 target.target == ExportTarget::SeratoBackup ? std::nullopt : drift(0, 0));
    }
    QCOMPARE(m_fixture->root().names(name),
             (QStringList{u"Engine Library"_s, u"_Serato_ backup"_s, u"rekordbox.xml"_s}));
}

QTEST_GUILESS_MAIN(ExportCommandsTest)
#include "export_commands_test.moc"
