#include "safety/snapshot_store.h"

#include "platform/clock.h"
#include "platform/fault_gate.h"
#include "platform/running_programs.h"
#include "support/running_program.h"
#include "support/safety_records.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <thread>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);
constexpr int filesInLibrary = 6; // that a snapshot holds

} // namespace

class SnapshotStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void copiesTheItemsOfALibrary();
    void copiesADatabaseThatIsAlone();
    void countsFilesAndNoFolders();
    void takesNoSnapshotWithoutADatabase();
    void namesASnapshotAfterItsMoment();
    void waitsForAStampOfItsOwn();
    void takesSnapshotsOnSeveralThreadsAtOnce();
    void takesASnapshotWhileSeratoRuns();
    void keepsModesLinksAndEmptyFolders();
    void leavesNothingBehindAFailure();
    void touchesNoFolderThatWasThereBefore();
    void failsWhereItCannotTellWhatIsThere();
    void listsTheNewestFirst();
    void listsEqualDatesByTheirFolders();
    void leavesOutWhatItCannotRead_data();
    void leavesOutWhatItCannotRead();
    void listsNothingWhereNothingCanBeListed();
    void putsEveryItemBack();
    void leavesWhatTheSnapshotDoesNotHave();
    void restoresWhatTheLibraryHasLost();
    void restoresOverAnotherLibrary();
    void takesASafetySnapshotFirst();
    void refusesToRestoreWhileSeratoRuns();
    void restoresALibraryThatHasLostItsDatabase();
    void restoresWithoutAWayBackWhereNoneCanBeMade();
    void stopsAtTheFirstItemThatFails();
    void removesASnapshot();
    void removesNothingButSnapshots_data();
    void removesNothingButSnapshots();
    void sumsUpTheBytesOfTheRecords();

private:
    QString root() const { return m_folder->path(); }
    QString snapshots(const QString &name = {}) const
    {
        return dataIn(root(), u"Snapshots/"_s + name);
    }
    SeratoLibrary::Location library() const { return libraryIn(root()); }
    QString libraryPath(const QString &name) const { return library().folderPath() + u'/' + name; }

    std::unique_ptr<QTemporaryDir> m_folder;
    platform::ScopedOwnPrograms m_programs;
};

void SnapshotStoreTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    keepDataIn(root());
    qputenv("TZ", "UTC");
    ::tzset();
}

void SnapshotStoreTest::copiesTheItemsOfALibrary()
{
    const platform::ScopedClock clock(noon.addMSecs(7));
    fillLibrary(root(), "x");
    const auto snapshot = SnapshotStore::create(library(), u"Manual snapshot"_s);
    QVERIFY(snapshot.has_value());
    quint64 bytes = 0;
    for (const QByteArray &content : itemsOf(library()))
        bytes += content.size();
    const Snapshot wanted = {.id = u"snap-20261120-120000-007"_s,
                             .date = noon,
                             .reason = u"Manual snapshot"_s,
                             .sourcePath = library().folderPath(),
                             .fileCount = filesInLibrary,
                             .byteSize = bytes};
    QCOMPARE(*snapshot, wanted);
    QCOMPARE(itemsIn(snapshot->folderPath()), itemsOf(library()));
    QCOMPARE(namesIn(snapshot->folderPath()),
             (QStringList{u"SmartCrates"_s, u"Subcrates"_s, u"database V2"_s, u"meta.json"_s,
                          u"neworder.pref"_s, u"window.pref"_s}));
    QVERIFY(contentOf(snapshot->folderPath() + u"/meta.json"_s).endsWith("}\n"));
    QCOMPARE(SnapshotStore::list(), QList<Snapshot>{wanted});
}

void SnapshotStoreTest::copiesADatabaseThatIsAlone()
{
    put(library().databasePath(), "12345");
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    QVERIFY(snapshot.has_value());
    QCOMPARE(snapshot->fileCount, 1);
    QCOMPARE(snapshot->byteSize, quint64(5));
    QCOMPARE(namesIn(snapshot->folderPath()), (QStringList{u"database V2"_s, u"meta.json"_s}));
}

void SnapshotStoreTest::countsFilesAndNoFolders()
{
    put(library().databasePath(), "1");
    for (const char *name : {"a", "b/c", "b/d/.e"})
        put(libraryPath(u"Subcrates/"_s + QString::fromLatin1(name)), "22");
    QDir().mkpath(libraryPath(u"Subcrates/empty"_s));
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    QCOMPARE(snapshot->fileCount, 4);
    QCOMPARE(snapshot->byteSize, quint64(7));
}

void SnapshotStoreTest::takesNoSnapshotWithoutADatabase()
{
    put(libraryPath(u"Subcrates/a.crate"_s), "x");
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    QVERIFY(!snapshot.has_value());
    QCOMPARE(snapshot.error().message, u"No Serato database found at that location."_s);
    QVERIFY(!QFileInfo::exists(snapshots()));
}

void SnapshotStoreTest::namesASnapshotAfterItsMoment()
{
    qputenv("TZ", "America/New_York");
    ::tzset();
    const platform::ScopedClock clock(QDateTime({2026, 1, 2}, {3, 4, 5, 60}, Qt::UTC));
    fillLibrary(root(), "x");
    QCOMPARE(SnapshotStore::create(library(), u"r"_s)->id, u"snap-20260101-220405-060"_s);
}

void SnapshotStoreTest::waitsForAStampOfItsOwn()
{
    const platform::ScopedClock clock(noon);
    fillLibrary(root(), "x");
    QCOMPARE(SnapshotStore::create(library(), u"1"_s)->id, u"snap-20261120-120000-000"_s);
    QCOMPARE(SnapshotStore::create(library(), u"2"_s)->id, u"snap-20261120-120000-001"_s);
    QCOMPARE(SnapshotStore::create(library(), u"3"_s)->id, u"snap-20261120-120000-002"_s);
    QCOMPARE(SnapshotStore::list().size(), 3);
}

void SnapshotStoreTest::takesSnapshotsOnSeveralThreadsAtOnce()
{
    fillLibrary(root(), "x");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([this] { (void)SnapshotStore::create(library(), u"r"_s); });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(SnapshotStore::list().size(), 4);
    for (const Snapshot &snapshot : SnapshotStore::list())
        QCOMPARE(itemsIn(snapshot.folderPath()), itemsOf(library()));
}

void SnapshotStoreTest::takesASnapshotWhileSeratoRuns()
{
    const RunningProgram serato(u"Serato DJ Pro"_s);
    QVERIFY(SeratoLibrary::isSeratoRunning());
    fillLibrary(root(), "x");
    QVERIFY(SnapshotStore::create(library(), u"r"_s));
}

void SnapshotStoreTest::keepsModesLinksAndEmptyFolders()
{
    fillLibrary(root(), "x");
    QDir().mkpath(libraryPath(u"Subcrates/empty"_s));
    QFile::link(u"a.crate"_s, libraryPath(u"Subcrates/link"_s));
    ::chmod(QFile::encodeName(libraryPath(u"Subcrates/a.crate"_s)).constData(), 0604);
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    QCOMPARE(itemsIn(snapshot->folderPath()), itemsOf(library()));
    QCOMPARE(modeOf(snapshot->folderPath() + u"/Subcrates/a.crate"_s), 0604);
}

void SnapshotStoreTest::leavesNothingBehindAFailure()
{
    fillLibrary(root(), "x");
    for (const char *failing : {"/Subcrates/a.crate", "/meta.json"}) {
        const platform::ScopedFaults faults(
            [failing](platform::FileOperation operation, const QString &path) {
                const bool isHere =
                    path.contains(u"/Snapshots/"_s) && path.endsWith(QString::fromLatin1(failing));
                return isHere && operation == platform::FileOperation::Open ? ENOSPC : 0;
            });
        const auto snapshot = SnapshotStore::create(library(), u"r"_s);
        QVERIFY(!snapshot.has_value());
        const QString item = QString::fromLatin1(failing).section(u'/', 1, 1);
        QVERIFY(snapshot.error().message.startsWith(
            u"Snapshot failed: The file “%1” couldn't be "_s.arg(item)));
        QVERIFY(snapshot.error().message.endsWith(u": No space left on device."_s));
        QCOMPARE(namesIn(snapshots()), QStringList());
    }
}

void SnapshotStoreTest::touchesNoFolderThatWasThereBefore()
{
    const platform::ScopedClock clock(noon);
    fillLibrary(root(), "x");
    put(snapshots(u"snap-20261120-120000-000/kept"_s), "kept");
    {
        const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
            return operation == platform::FileOperation::Copy ? EIO : 0;
        });
        QVERIFY(!SnapshotStore::create(library(), u"r"_s).has_value());
    }
    QCOMPARE(namesIn(snapshots()), QStringList{u"snap-20261120-120000-000"_s});
    QCOMPARE(contentOf(snapshots(u"snap-20261120-120000-000/kept"_s)), QByteArray("kept"));
}

void SnapshotStoreTest::failsWhereItCannotTellWhatIsThere()
{
    fillLibrary(root(), "x");
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &path) {
        const bool isCrates = path.endsWith(u"_Serato_/Subcrates"_s);
        return isCrates && operation == platform::FileOperation::Stat ? EIO : 0;
    });
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    QVERIFY(!snapshot.has_value());
    QCOMPARE(snapshot.error().message,
             u"Snapshot failed: The file “Subcrates” couldn't be found: Input/output error."_s);
}

void SnapshotStoreTest::listsTheNewestFirst()
{
    platform::ScopedClock clock(noon);
    fillLibrary(root(), "x");
    for (const int day : {2, 0, 1}) {
        clock.set(noon.addDays(day));
        QVERIFY(SnapshotStore::create(library(), QString::number(day)));
    }
    QStringList reasons;
    for (const Snapshot &snapshot : SnapshotStore::list())
        reasons << snapshot.reason;
    QCOMPARE(reasons, (QStringList{u"2"_s, u"1"_s, u"0"_s}));
}

void SnapshotStoreTest::listsEqualDatesByTheirFolders()
{
    platform::ScopedClock clock(noon);
    fillLibrary(root(), "x");
    for (const int milliseconds : {500, 100, 300}) {
        clock.set(noon.addMSecs(milliseconds));
        QVERIFY(SnapshotStore::create(library(), QString::number(milliseconds)));
    }
    QStringList reasons;
    for (const Snapshot &snapshot : SnapshotStore::list())
        reasons << snapshot.reason;
    QCOMPARE(reasons, (QStringList{u"100"_s, u"300"_s, u"500"_s}));
}

void SnapshotStoreTest::leavesOutWhatItCannotRead_data()
{
    QTest::addColumn<QByteArray>("meta");
    const QByteArray good = R"({"byteSize":1,"date":"2026-11-20T12:00:00Z","fileCount":1,)"
                            R"("id":"snap-x","reason":"r","sourcePath":"/lib"})";
    QTest::newRow("good") << good;
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("cut") << good.chopped(1);
    QTest::newRow("something behind") << good + "x";
    QTest::newRow("a text for a number") << QByteArray(good).replace(":1,", ":\"1\",");
    QTest::newRow("a negative size")
        << QByteArray(good).replace("\"byteSize\":1", "\"byteSize\":-1");
    QTest::newRow("a date with an offset") << QByteArray(good).replace("00Z", "00+01:00");
    QTest::newRow("null") << QByteArray(good).replace("\"r\"", "null");
}

void SnapshotStoreTest::leavesOutWhatItCannotRead()
{
    QFETCH(QByteArray, meta);
    QDir().mkpath(snapshots(u"snap-x"_s));
    if (!meta.isNull())
        put(snapshots(u"snap-x/meta.json"_s), meta);
    put(snapshots(u"a file"_s), "x");
    const bool isGood = QByteArray(QTest::currentDataTag()) == "good";
    QCOMPARE(SnapshotStore::list().size(), isGood ? 1 : 0);
    QCOMPARE(namesIn(snapshots()), (QStringList{u"a file"_s, u"snap-x"_s}));
}

void SnapshotStoreTest::listsNothingWhereNothingCanBeListed()
{
    QCOMPARE(SnapshotStore::list(), QList<Snapshot>());
    fillLibrary(root(), "x");
    QVERIFY(SnapshotStore::create(library(), u"r"_s));
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
        return operation == platform::FileOperation::List ? EACCES : 0;
    });
    QCOMPARE(SnapshotStore::list(), QList<Snapshot>());
}

void SnapshotStoreTest::putsEveryItemBack()
{
    fillLibrary(root(), "old");
    const auto old = itemsOf(library());
    const auto snapshot = SnapshotStore::create(library(), u"old"_s);
    fillLibrary(root(), "new");
    put(libraryPath(u"Subcrates/added.crate"_s), "x");
    QVERIFY(SnapshotStore::restore(*snapshot, library()));
    QCOMPARE(itemsOf(library()), old);
    QCOMPARE(contentOf(libraryPath(u"History/Sessions/1.session"_s)), QByteArray("session new"));
    QCOMPARE(namesIn(library().folderPath()).size(), 6);
}

void SnapshotStoreTest::leavesWhatTheSnapshotDoesNotHave()
{
    put(library().databasePath(), "old");
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    fillLibrary(root(), "new");
    QVERIFY(SnapshotStore::restore(*snapshot, library()));
    QCOMPARE(contentOf(library().databasePath()), QByteArray("old"));
    QCOMPARE(contentOf(libraryPath(u"SmartCrates/s.scrate"_s)), QByteArray("smart new"));
}

void SnapshotStoreTest::restoresWhatTheLibraryHasLost()
{
    fillLibrary(root(), "old");
    const auto old = itemsOf(library());
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    QDir(libraryPath(u"Subcrates"_s)).removeRecursively();
    QFile::remove(libraryPath(u"window.pref"_s));
    QVERIFY(SnapshotStore::restore(*snapshot, library()));
    QCOMPARE(itemsOf(library()), old);
}

void SnapshotStoreTest::restoresOverAnotherLibrary()
{
    fillLibrary(root(), "old");
    const auto snapshot = SnapshotStore::create(library(), u"r"_s);
    const QString other = root() + u"/other"_s;
    fillLibrary(other, "other");
    QVERIFY(SnapshotStore::restore(*snapshot, libraryIn(other)));
    QCOMPARE(itemsOf(libraryIn(other)), itemsOf(library()));
}

void SnapshotStoreTest::takesASafetySnapshotFirst()
{
    platform::ScopedClock clock(noon);
    fillLibrary(root(), "old");
    const auto snapshot = SnapshotStore::create(library(), u"old"_s);
    fillLibrary(root(), "new");
    const auto young = itemsOf(library());
    clock.set(noon.addDays(3));
    QVERIFY(SnapshotStore::restore(*snapshot, library()));
    const QList<Snapshot> all = SnapshotStore::list();
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.first().reason, u"Before rollback to "_s + snapshot->shortDate());
    QCOMPARE(itemsIn(all.first().folderPath()), young);
}

void SnapshotStoreTest::refusesToRestoreWhileSeratoRuns()
{
    fillLibrary(root(), "old");
    const auto snapshot = SnapshotStore::create(library(), u"old"_s);
    fillLibrary(root(), "new");
    const auto young = itemsOf(library());
    const RunningProgram serato(u"Serato DJ Pro"_s);
    const Done done = SnapshotStore::restore(*snapshot, library());
    QVERIFY(!done);
    QCOMPARE(done.error().message, u"Serato is running — close it before taking a snapshot."_s);
    QCOMPARE(itemsOf(library()), young);
    QCOMPARE(SnapshotStore::list().size(), 1);
}

void SnapshotStoreTest::restoresALibraryThatHasLostItsDatabase()
{
    fillLibrary(root(), "old");
    const auto old = itemsOf(library());
    const auto snapshot = SnapshotStore::create(library(), u"old"_s);
    QFile::remove(library().databasePath());
    QVERIFY(SnapshotStore::restore(*snapshot, library()));
    QCOMPARE(itemsOf(library()), old);
    QCOMPARE(SnapshotStore::list().size(), 1);
}

void SnapshotStoreTest::restoresWithoutAWayBackWhereNoneCanBeMade()
{
    fillLibrary(root(), "old");
    const auto old = itemsOf(library());
    const auto snapshot = SnapshotStore::create(library(), u"old"_s);
    fillLibrary(root(), "new");
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &path) {
        const bool isNewFolder = path.contains(u"/Snapshots/snap-"_s) &&
                                 operation == platform::FileOperation::MakeFolder;
        return isNewFolder ? ENOSPC : 0;
    });
    QVERIFY(SnapshotStore::restore(*snapshot, library()));
    QCOMPARE(itemsOf(library()), old);
    QCOMPARE(SnapshotStore::list().size(), 1);
}

void SnapshotStoreTest::stopsAtTheFirstItemThatFails()
{
    prepareSnapshot(root());
    const Snapshot snapshot = SnapshotStore::list().first();
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &path) {
        const bool isSmart = path.contains(u"/library/_Serato_/.SmartCrates"_s);
        return isSmart && operation == platform::FileOperation::Rename ? EACCES : 0;
    });
    const Done done = SnapshotStore::restore(snapshot, library());
    QVERIFY(!done);
    QCOMPARE(done.error().message,
             u"The file “SmartCrates” couldn't be replaced: Permission denied."_s);
    QCOMPARE(contentOf(libraryPath(u"Subcrates/a.crate"_s)), QByteArray("crate a old"));
    QCOMPARE(contentOf(libraryPath(u"SmartCrates/s.scrate"_s)), QByteArray("smart new"));
    QCOMPARE(contentOf(libraryPath(u"window.pref"_s)), QByteArray("window new"));
    QCOMPARE(SnapshotStore::list().size(), 2);
}

void SnapshotStoreTest::removesASnapshot()
{
    fillLibrary(root(), "x");
    const auto one = SnapshotStore::create(library(), u"1"_s);
    const auto two = SnapshotStore::create(library(), u"2"_s);
    SnapshotStore::remove(*one);
    SnapshotStore::remove(*one);
    QCOMPARE(SnapshotStore::list(), QList<Snapshot>{*two});
    QCOMPARE(namesIn(snapshots()), QStringList{two->id});
}

void SnapshotStoreTest::removesNothingButSnapshots_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : {"", ".", "..", "../..", "../../../library"})
        QTest::addRow("'%s'", id) << QString::fromLatin1(id);
}

void SnapshotStoreTest::removesNothingButSnapshots()
{
    QFETCH(QString, id);
    fillLibrary(root(), "x");
    QVERIFY(SnapshotStore::create(library(), u"1"_s));
    const auto before = treeOf(root());
    Snapshot bad;
    bad.id = id;
    SnapshotStore::remove(bad);
    QCOMPARE(treeOf(root()), before);
}

void SnapshotStoreTest::sumsUpTheBytesOfTheRecords()
{
    QCOMPARE(SnapshotStore::totalBytes(), quint64(0));
    put(library().databasePath(), "12345");
    QVERIFY(SnapshotStore::create(library(), u"1"_s) && SnapshotStore::create(library(), u"2"_s));
    QCOMPARE(SnapshotStore::totalBytes(), quint64(10));
}

QTEST_GUILESS_MAIN(SnapshotStoreTest)
#include "snapshot_store_test.moc"
