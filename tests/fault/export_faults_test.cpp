// The exports, interrupted: whichever call of the system fails, and wherever the process is killed,
// the library is as it was byte for byte, nothing is said to be exported that isn't whole, and the
// next export to the same place gives the whole of it.
//
// What stands at the destination after an interruption differs:
//
// 1. "rekordbox.xml" is the earlier one or the new one, as a whole.
// 2. Of an Engine library the database is the earlier one, the new one, or has no rows, or isn't
//    there. SQLite brings back what was there ahead of a transaction that didn't end.
// 3. A backup promises least: the earlier one goes first, what was copied by then stays, and
//    nothing is flushed. Each of its files is the earlier one, or the new one from its first byte
//    on, and may be cut short. Nothing in the folder tells it from a whole one; the toast alone
//    does.

#include "export/engine_exporter.h"
#include "export/serato_backup.h"
#include "support/fault_loop.h"
#include "support/sqlite_behind_gate.h"
#include "support/sqlite_reader.h"
#include "support/user_process.h"

#include <QTest>

#include <algorithm>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QString stick(const QString &folder)
{
    return folder + u"/stick"_s;
}

QByteArray song(const QString &folder, const QString &name, QStringView title)
{
    return trackRecord({textRecord("pfil", musicPath(folder, name)), textRecord("tsng", title)});
}

void putCrate(const QString &folder, const QString &name, const QStringList &tracks)
{
    QByteArray bytes = crateVersion();
    for (const QString &track : tracks)
        bytes += crateEntry(musicPath(folder, track));
    put(libraryFile(folder, u"Subcrates/"_s + name), bytes);
}

/// With a file that the later library no longer has.
void fillEarlierLibrary(const QString &folder)
{
    put(musicFile(folder, u"a.mp3"_s), "music a");
    put(databaseFile(folder), databaseVersion() + song(folder, u"a.mp3"_s, u"Earlier"));
    putCrate(folder, u"Set.crate"_s, {u"a.mp3"_s});
    put(libraryFile(folder, u"neworder.pref"_s), "earlier order");
    put(libraryFile(folder, u"window.pref"_s), "window");
}

void fillLibrary(const QString &folder)
{
    put(musicFile(folder, u"a.mp3"_s), "music a");
    put(musicFile(folder, u"b.mp3"_s), "music b");
    put(databaseFile(folder), databaseVersion() + song(folder, u"a.mp3"_s, u"Song") +
                                  song(folder, u"b.mp3"_s, u"Other song"));
    putCrate(folder, u"Set.crate"_s, {u"b.mp3"_s, u"a.mp3"_s});
    putCrate(folder, u"Warm up.crate"_s, {u"b.mp3"_s});
    put(libraryFile(folder, u"SmartCrates/s.scrate"_s), "smart");
    put(libraryFile(folder, u"neworder.pref"_s), "order");
    QFile::remove(libraryFile(folder, u"window.pref"_s));
}

/// All rows of an Engine database by table, without what is new in each export; a table without
/// rows is left out, and so is one that isn't there.
Tree rowsOfEngine(const QString &database)
{
    if (!QFileInfo::exists(database))
        return {};
    const QList<std::pair<QString, const char *>> queries = {
        {u"Information"_s, "SELECT id, schemaVersionMajor, schemaVersionMinor FROM Information"},
        {u"Playlist"_s, "SELECT * FROM Playlist"},
        {u"PlaylistEntity"_s, "SELECT * FROM PlaylistEntity"},
        {u"Track"_s, "SELECT id, path, filename, title, artist, album, genre, length, bpm, "
                     "bitrate, fileType, isAvailable, isAnalyzed FROM Track"},
    };
    Tree rows;
    const QStringList tables = rowsOf(database, "SELECT name FROM sqlite_master");
    for (const auto &[table, query] : queries) {
        const QStringList found = tables.contains(table) ? rowsOf(database, query) : QStringList();
        if (!found.isEmpty())
            rows[table] = found.join(u'\n').toUtf8();
    }
    if (const QStringList state = rowsOf(database, "PRAGMA integrity_check");
        state != QStringList(u"ok"_s))
        rows[u"damage"_s] = state.join(u'\n').toUtf8();
    return rows;
}

/// What an export has put into a folder, for one to be compared with another; empty for none.
Tree exported(ExportTarget target, const QString &folder)
{
    switch (target) {
    case ExportTarget::Engine:
        return rowsOfEngine(EngineExporter::databaseIn(folder));
    case ExportTarget::Rekordbox: {
        const QString file = folder + u"/rekordbox.xml"_s;
        return QFileInfo::exists(file) ? Tree{{u"xml"_s, contentOf(file)}} : Tree();
    }
    case ExportTarget::SeratoBackup:
        break;
    }
    return treeOf(SeratoBackup::backupIn(folder));
}

/// What an export has put there must be, with nothing beside it.
QStringList namesOfWhole(ExportTarget target)
{
    return {infoOf(target).fileName};
}

/// What was told of an export when it ended.
struct Told
{
    std::optional<ExportOutcome> outcome = {};
    QString toast = {};
    bool isProblem = false;
};

/// What is known of a run from before the interruption.
struct Before
{
    Tree home;
    Tree earlier;                  ///< the earlier export
    std::optional<Told> told = {}; ///< nothing where the process was killed
};
Before before;

std::unique_ptr<UserProcess> user;

Told runExport(UserProcess &process, ExportTarget target, const QString &folder)
{
    process.app().runExport(target, folder);
    process.waitUntilIdle();
    const Toast toast = process.app().toast().value_or(Toast());
    return {process.app().lastExport(), toast.message, toast.isProblem};
}

/// An earlier export may stand at the destination.
void prepare(const QString &folder, ExportTarget target, bool hasEarlier)
{
    before = {};
    if (hasEarlier) {
        fillEarlierLibrary(folder);
        UserProcess process(folder);
        (void)runExport(process, target, stick(folder));
        before.earlier = exported(target, stick(folder));
    }
    fillLibrary(folder);
    before.home = treeOf(folder + u"/home"_s);
}

void arrive(const QString &folder)
{
    user.reset();
    user = std::make_unique<UserProcess>(folder);
}

void act(const QString &folder, ExportTarget target)
{
    const SqliteBehindGate gate;
    before.told = runExport(*user, target, stick(folder));
    user.reset();
}

bool isCutShortOrEarlier(const Tree &found, const Tree &whole)
{
    const auto pairs = found.asKeyValueRange();
    return std::all_of(pairs.begin(), pairs.end(), [&](const auto &entry) {
        const auto &[name, content] = entry;
        const bool isEarlier =
            before.earlier.contains(name) && before.earlier.value(name) == content;
        return isEarlier || (whole.contains(name) && whole.value(name).startsWith(content));
    });
}

bool mayStand(ExportTarget target, const Tree &found, const Tree &whole)
{
    if (found == before.earlier || found == whole)
        return true;
    switch (target) {
    case ExportTarget::Rekordbox:
        return false;
    case ExportTarget::Engine:
        return found.isEmpty();
    case ExportTarget::SeratoBackup:
        break;
    }
    return isCutShortOrEarlier(found, whole);
}

/// What was told holds: of a whole export its numbers, of any other that it failed.
QString troubleWithWords(const Told &told, const Tree &found, const Tree &whole,
                         ExportOutcome expected)
{
    if (!told.outcome)
        return told.isProblem ? QString() : u"an export failed without a word"_s;
    if (found != whole)
        return u"what is said to be exported isn't whole: "_s + told.toast;
    const bool areCratesUnread = told.outcome->target == ExportTarget::SeratoBackup &&
                                 hasFailedAt(u"/home/Music/_Serato_/Subcrates"_s);
    if (areCratesUnread)
        expected.crateCount = told.outcome->crateCount;
    expected.path = told.outcome->path;
    const bool isTrue =
        *told.outcome == expected && !told.isProblem &&
        told.toast == u"Exported %1 tracks to %2"_s.arg(QString::number(expected.trackCount),
                                                        infoOf(expected.target).rawValue);
    return isTrue ? QString() : u"the numbers of an export are wrong: "_s + told.toast;
}

QString troubleWith(const QString &folder, ExportTarget target)
{
    user.reset();
    if (treeOf(folder + u"/home"_s) != before.home)
        return u"the library has changed"_s;
    UserProcess next(folder);
    const QString other = folder + u"/other stick"_s;
    const Told reference = runExport(next, target, other);
    const Tree whole = exported(target, other);
    const Tree found = exported(target, stick(folder));
    if (!reference.outcome || whole.isEmpty())
        return u"nothing can be exported elsewhere"_s;
    if (before.told) {
        if (const QString trouble =
                troubleWithWords(*before.told, found, whole, *reference.outcome);
            !trouble.isEmpty())
            return trouble;
    }
    if (!mayStand(target, found, whole))
        return u"half an export: "_s + found.keys().join(u' ');
    if (!runExport(next, target, stick(folder)).outcome)
        return u"the next export fails"_s;
    if (exported(target, stick(folder)) != whole ||
        namesIn(stick(folder)) != namesOfWhole(target) ||
        treeOf(stick(folder)).keys() != treeOf(other).keys())
        return u"the next export isn't whole"_s;
    return {};
}

QList<Interruption> cases()
{
    QList<Interruption> all;
    for (const ExportTargetInfo &info : allExportTargets()) {
        const ExportTarget target = info.target;
        for (const bool hasEarlier : {true, false}) {
            all << Interruption{info.caseName + (hasEarlier ? u" over an earlier one"_s : u""_s),
                                [=](const QString &folder) { prepare(folder, target, hasEarlier); },
                                [=](const QString &folder) { act(folder, target); },
                                [=](const QString &folder) { return troubleWith(folder, target); },
                                arrive};
        }
    }
    return all;
}

} // namespace

class ExportFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { user.reset(); }

    void anUninterruptedExportIsWhole_data() { addRows(); }
    void anUninterruptedExportIsWhole()
    {
        QFETCH(const int, index);
        const Interruption what = cases().at(index);
        const QTemporaryDir folder(placeForRuns());
        what.prepare(folder.path());
        what.arrive(folder.path());
        what.act(folder.path());
        QVERIFY(before.told && before.told->outcome);
        const ExportTarget target = before.told->outcome->target;
        const Tree found = exported(target, stick(folder.path()));
        const QByteArray text = QByteArrayList(found.values()).join();
        for (const QByteArray word : {"Song", "Other song"}) // in UTF-8, or as Serato has it
            QVERIFY(text.contains(word) || text.contains(utf16(QString::fromUtf8(word))));
        QVERIFY(text.contains("Warm up") || found.contains(u"Subcrates/Warm up.crate"_s));
        QVERIFY(found != before.earlier);
        QCOMPARE(what.trouble(folder.path()), QString());
    }

    void losesNothingWhateverCallFails_data() { addRows(); }
    void losesNothingWhateverCallFails()
    {
        QFETCH(const int, index);
        for (const FaultReport &report : interruptInEveryWay(cases().at(index))) {
            QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
            QVERIFY2(report.calls >= 6, qPrintable(QString::number(report.calls)));
        }
    }

private:
    static void addRows()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < cases().size(); ++i)
            QTest::addRow("%s", qPrintable(cases().at(i).name)) << i;
    }
};

TARNWICK_FAULT_LOOP_MAIN(ExportFaultsTest, cases)
#include "export_faults_test.moc"
