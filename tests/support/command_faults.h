#pragma once

#include "safety/snapshot_store.h"
#include "support/fault_loop.h"
#include "support/test_files.h"
#include "support/user_process.h"

#include <cerrno>
#include <memory>

/// Write commands that are interrupted at each of their system calls.
///
/// 1. The user of a run lives in the run's folder, with a library of one crate.
/// 2. The launch and the scan ahead of the command are not interrupted; the command is, from its
///    snapshot to its last look at the stores.
/// 3. After it: the database holds one of the bytes that it may hold, every audio file is whole in
///    its place or in holding, the log claims nothing that isn't so, and the next launch reads all
///    of it. A command that only failed has kept its scan result in step with the disk.
/// 4. What the log then has as reversible is undone by that next launch.
namespace tarnwick::testing {

/// What a folder may hold once a command has been interrupted.
struct Outcomes
{
    QByteArrayList databases = {};
    QMap<QString, QByteArrayList> audio = {}; ///< what each audio file may hold, by name
    QByteArrayList crates = {"crate"};        ///< what the one crate may hold
    /// What crates beside it may hold, by file name; "(none)" where one may be missing.
    QMap<QString, QByteArrayList> otherCrates = {};
    QByteArray earlierDatabase = {}; ///< that a snapshot of the earlier session may hold
};

/// A command that is interrupted.
struct CommandCase
{
    QString name;
    std::function<void(const QString &folder)> fill; ///< writes database and audio files
    std::function<void(UserProcess &)> earlier = {}; ///< a session ahead of it; may be empty
    std::function<void(UserProcess &)> command;
    std::function<Outcomes(const QString &folder)> outcomes;
    /// The same where one call failed and all others went well; where empty, no more than else.
    std::function<Outcomes(const QString &folder)> outcomesIfFailed = {};
    /// Whether what an entry of the log says is so.
    std::function<bool(const QString &folder, const ChangeEntry &)> isTrue;
    /// Whether what a toast says is so; problems are not asked for. May be empty.
    std::function<bool(const QString &folder, const QString &toast)> isToastTrue = {};
    /// Whether a scan result that is not in step is accepted; where empty, none is.
    std::function<bool()> mayDiffer = {};
    /// Whether what an entry tells of has been taken back; where this is given, all that the log
    /// has as reversible is undone by the next process.
    std::function<bool(const QString &folder, const ChangeEntry &)> isUndone = {};
};

/// Whether a call failed that the database itself or its copy in a snapshot is read or written by.
/// An undo of a drop or a duplicate then gives the record up, and marks its entry all the same.
inline bool hasFailedAtDatabase()
{
    return hasFailedAt(QStringLiteral("database V2"));
}

/// The snapshot that an entry names; nothing where it names none, or one that isn't there.
inline std::optional<Snapshot> snapshotOf(const ChangeEntry &entry)
{
    for (const Snapshot &snapshot : SnapshotStore::list()) {
        if (entry.snapshotId == snapshot.id)
            return snapshot;
    }
    return std::nullopt;
}

/// Whether the snapshot ahead of an entry's change may be of no use: it couldn't be taken, or the
/// power went while only younger files had reached the disk.
inline bool mayLackSnapshot(const ChangeEntry &entry)
{
    if (entry.snapshotId)
        return mayPlainFilesLackBytes();
    return hasFailedAt(QStringLiteral("/Snapshots")) || hasFailedAt(QStringLiteral("/_Serato_"));
}

/// Whether an undo in peace may leave the record of an entry's track out: no snapshot holds it.
inline bool mayRecordStayAway(const ChangeEntry &entry, const QString &fileName)
{
    const auto snapshot = snapshotOf(entry);
    const bool hasRecord =
        snapshot && contentOf(snapshot->folderPath() + QStringLiteral("/database V2"))
                        .contains(utf16(fileName));
    return !hasRecord && mayLackSnapshot(entry);
}

namespace detail {

/// The process under way, and what it knew of its tracks at the end.
inline std::unique_ptr<UserProcess> userProcess;
inline QStringList knownTracks;
/// What the process told of as done.
inline QStringList toasts;

/// Where the file's bytes are, among what it may hold.
inline QString troubleOfAudio(const QString &folder, const QString &name,
                              const QByteArrayList &allowed)
{
    QByteArrayList found;
    if (QFileInfo::exists(musicFile(folder, name)))
        found << contentOf(musicFile(folder, name));
    const auto held = treeOf(folder + QStringLiteral("/data/Tarnwick/Holding"));
    for (const auto &[path, content] : held.toStdMap()) {
        if (path.endsWith(u'/' + name))
            found << content;
    }
    if (found.isEmpty())
        return name + QStringLiteral(" is nowhere");
    for (const QByteArray &content : found) {
        if (!allowed.contains(content))
            return name + QStringLiteral(" is damaged");
    }
    return {};
}

inline QString strangerIn(const QString &folder, const QStringList &known)
{
    for (const QString &name : namesIn(folder)) {
        const bool isTemporary = name.startsWith(u'.') && name.contains(QStringLiteral(".twtmp"));
        if (!known.contains(name) && !isTemporary)
            return name + QStringLiteral(" is no file of the user's");
    }
    return {};
}

inline QString troubleOnDisk(const QString &folder, const Outcomes &outcomes)
{
    if (!outcomes.databases.contains(contentOf(databaseFile(folder))))
        return QStringLiteral("the database is neither old nor new");
    if (!outcomes.crates.contains(
            contentOf(libraryFile(folder, QStringLiteral("Subcrates/Set.crate")))))
        return QStringLiteral("the crate is neither old nor new");
    for (const auto &[name, allowed] : outcomes.otherCrates.toStdMap()) {
        if (!allowed.contains(contentOf(libraryFile(folder, QStringLiteral("Subcrates/") + name))))
            return name + QStringLiteral(" is neither old nor new");
    }
    for (const auto &[name, allowed] : outcomes.audio.toStdMap()) {
        if (const QString trouble = troubleOfAudio(folder, name, allowed); !trouble.isEmpty())
            return trouble;
    }
    const QString stranger =
        strangerIn(folder + QStringLiteral("/home/music"), outcomes.audio.keys()) +
        strangerIn(libraryFile(folder, QStringLiteral("Subcrates")),
                   QStringList(QStringLiteral("Set.crate")) + outcomes.otherCrates.keys()) +
        strangerIn(libraryFile(folder, {}),
                   {QStringLiteral("Subcrates"), QStringLiteral("database V2")});
    return stranger;
}

inline QString troubleOfStores(const QString &folder, const CommandCase &what, AppState &app)
{
    const Outcomes outcomes = what.outcomes(folder);
    for (const Snapshot &snapshot : app.snapshots()) {
        const QByteArray database =
            contentOf(snapshot.folderPath() + QStringLiteral("/database V2"));
        const bool isWhole =
            outcomes.databases.contains(database) || database == outcomes.earlierDatabase;
        if (!isWhole && !mayPlainFilesLackBytes())
            return QStringLiteral("a snapshot holds half a database");
    }
    for (const HeldItem &item : app.holding().activeItems()) {
        if (!QFileInfo::exists(item.heldPath) && !QFileInfo::exists(item.originalPath))
            return QStringLiteral("a held file is nowhere");
    }
    for (const ChangeEntry &entry : app.changeLog().entries()) {
        if (!what.isTrue(folder, entry))
            return QStringLiteral("the log claims what isn't so: ") + entry.detail;
    }
    return {};
}

inline QString troubleOfUndo(const QString &folder, const CommandCase &what, UserProcess &next)
{
    const QList<ChangeEntry> entries = next.app().changeLog().entries();
    QList<ChangeEntry> undone;
    for (const ChangeEntry &entry : entries) {
        if (!entry.isReversible())
            continue;
        next.app().undo(entry);
        next.waitUntilIdle();
        undone << entry;
    }
    for (const ChangeEntry &entry : undone) {
        if (!what.isUndone(folder, entry))
            return QStringLiteral("the log has as reversible what isn't: ") + entry.detail;
    }
    return {};
}

inline QString troubleAfter(const QString &folder, const CommandCase &what)
{
    if (const QString trouble = troubleOnDisk(folder, what.outcomes(folder)); !trouble.isEmpty())
        return trouble;
    UserProcess next(folder);
    if (!std::holds_alternative<Ready>(next.app().phase()))
        return QStringLiteral("the next launch finds no library");
    for (const QString &toast : std::as_const(toasts)) {
        if (what.isToastTrue && !what.isToastTrue(folder, toast))
            return QStringLiteral("a toast claims what isn't so: ") + toast;
    }
    const bool mayDiffer = what.mayDiffer && what.mayDiffer();
    if (!knownTracks.isEmpty() && !mayDiffer && knownTracks != next.tracks())
        return QStringLiteral("the result was out of step: %1 where the disk has %2")
            .arg(knownTracks.join(u' '), next.tracks().join(u' '));
    const QString trouble = troubleOfStores(folder, what, next.app());
    return trouble.isEmpty() && what.isUndone ? troubleOfUndo(folder, what, next) : trouble;
}

} // namespace detail

/// The command as the loops take it.
inline Interruption interruptionOf(const CommandCase &what)
{
    const auto prepare = [what](const QString &folder) {
        detail::knownTracks.clear();
        detail::toasts.clear();
        put(libraryFile(folder, QStringLiteral("Subcrates/Set.crate")), "crate");
        what.fill(folder);
        if (what.earlier) {
            UserProcess process(folder);
            what.earlier(process);
        }
    };
    const auto begin = [](const QString &folder) {
        detail::userProcess = std::make_unique<UserProcess>(folder);
    };
    const auto act = [what](const QString &) {
        AppState &app = detail::userProcess->app();
        QObject::connect(&app, &AppState::toastRaised, &app, [](const Toast &toast) {
            if (!toast.isProblem)
                detail::toasts << toast.message;
        });
        what.command(*detail::userProcess);
        detail::knownTracks = detail::userProcess->tracks();
        detail::userProcess.reset();
    };
    const auto trouble = [what](const QString &folder) {
        return detail::troubleAfter(folder, what);
    };
    Interruption interruption{what.name, prepare, act, trouble, begin};
    if (what.outcomesIfFailed) {
        CommandCase failed = what;
        failed.outcomes = what.outcomesIfFailed;
        interruption.troubleIfFailed = [failed](const QString &folder) {
            return detail::troubleAfter(folder, failed);
        };
    }
    return interruption;
}

inline QList<Interruption> interruptionsOf(const QList<CommandCase> &commands)
{
    QList<Interruption> all;
    for (const CommandCase &what : commands)
        all << interruptionOf(what);
    return all;
}

/// A data row for each, with its index.
inline void addRows(const QList<Interruption> &cases)
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < cases.size(); ++i)
        QTest::addRow("%s", qPrintable(cases.at(i).name)) << i;
}

/// Interrupts it in every way. It must have made at least so many calls.
inline void checkAtEachCall(const Interruption &what, int leastCalls)
{
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY2(report.calls >= leastCalls, qPrintable(QString::number(report.calls)));
    }
}

} // namespace tarnwick::testing
