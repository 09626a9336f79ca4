// The commands that file tracks into a crate, interrupted: whichever call of the system fails, and
// wherever the process is killed, the crate is the old one or the new one as a whole, and what is
// told of has been filed.

#include "support/command_faults.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QStringList names = {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s};
const QString archive = u"Archive.crate"_s;
const QString unsorted = u"Unsorted.crate"_s;

QByteArray database(const QString &folder)
{
    QByteArray bytes = databaseVersion();
    for (const QString &name : names)
        bytes += trackRecord({textRecord("pfil", musicPath(folder, name)), textRecord("tsng", name),
                              record("zzzz", "kept")});
    return bytes;
}

/// A crate of tracks that are elsewhere, then of such that are in the folder.
QByteArray crateOf(const QString &folder, const QStringList &elsewhere, const QStringList &present)
{
    QByteArray bytes = crateVersion();
    for (const QString &path : elsewhere)
        bytes += crateEntry(path);
    for (const QString &name : present)
        bytes += crateEntry(musicPath(folder, name));
    return bytes;
}

QString crateFile(const QString &folder, const QString &name)
{
    return libraryFile(folder, u"Subcrates/"_s + name);
}

/// No crate but the one that every run has.
void fillLibrary(const QString &folder)
{
    put(databaseFile(folder), database(folder));
    for (const QString &name : names)
        put(musicFile(folder, name), "music " + name.toUtf8());
}

Outcomes outcomesOf(const QString &folder, const QString &crate, const QByteArrayList &contents)
{
    Outcomes outcomes{.databases = {database(folder)}, .otherCrates = {{crate, contents}}};
    for (const QString &name : names)
        outcomes.audio[name] = {"music " + name.toUtf8()};
    return outcomes;
}

/// Whether the snapshot that an entry names has that crate as it was: an undo only marks the entry,
/// and a rollback is what takes it back.
bool isInSnapshot(const ChangeEntry &entry, const QString &crate, const QByteArray &before)
{
    const auto snapshot = snapshotOf(entry);
    return mayLackSnapshot(entry) ||
           (snapshot && contentOf(snapshot->folderPath() + u"/Subcrates/"_s + crate) == before);
}

/// One cut is in the archive already; of the two others, one is kept.
QByteArray archiveBefore(const QString &folder)
{
    return crateOf(folder, {u"elsewhere.mp3"_s}, {u"c.mp3"_s});
}

QByteArray archiveAfter(const QString &folder)
{
    return crateOf(folder, {u"elsewhere.mp3"_s}, {u"c.mp3"_s, u"b.mp3"_s});
}

/// What the rule for a crate that can't be read leads to.
QByteArray archiveUnread(const QString &folder)
{
    return crateOf(folder, {}, {u"b.mp3"_s, u"c.mp3"_s});
}

/// How many cuts have come into the archive, in words; empty if it is as it was.
QString cutsFiled(const QString &folder, const QString &noun)
{
    const QByteArray present = contentOf(crateFile(folder, archive));
    if (present == archiveAfter(folder))
        return u"1 "_s + noun;
    return present == archiveUnread(folder) ? u"2 %1s"_s.arg(noun) : QString();
}

bool isArchiveTold(const QString &folder, const ChangeEntry &entry)
{
    return !entry.reversed && entry.target == u"Ada — Song"_s &&
           entry.detail == u"Filed %1 into the Archive crate (kept in library)"_s.arg(
                               cutsFiled(folder, u"alternate cut"_s)) &&
           isInSnapshot(entry, archive, archiveBefore(folder));
}

void archiveCuts(UserProcess &user)
{
    VersionGroup group{.id = {}, .base = u"Ada — Song"_s, .members = {}};
    for (const QString &name : names)
        group.members.push_back({.track = *user.track(name), .cut = name});
    user.app().archiveVersions(group, group.members.front().id());
}

CommandCase archiving()
{
    return {
        .name = u"archive"_s,
        .fill =
            [](const QString &folder) {
                fillLibrary(folder);
                put(crateFile(folder, archive), archiveBefore(folder));
            },
        .command = archiveCuts,
        .outcomes =
            [](const QString &folder) {
                return outcomesOf(folder, archive, {archiveBefore(folder), archiveAfter(folder)});
            },
        .outcomesIfFailed =
            [](const QString &folder) {
                QByteArrayList contents = {archiveBefore(folder), archiveAfter(folder)};
                if (hasFailedAt(u'/' + archive))
                    contents << archiveUnread(folder);
                return outcomesOf(folder, archive, contents);
            },
        .isTrue = isArchiveTold,
        .isToastTrue =
            [](const QString &folder, const QString &toast) {
                return toast == u"Archived %1 of Ada — Song"_s.arg(cutsFiled(folder, u"cut"_s));
            },
        .isUndone = [](const QString &folder,
                       const ChangeEntry &) { return !cutsFiled(folder, u"cut"_s).isEmpty(); }};
}

/// Two tracks into a crate that is not there yet.
QByteArray filed(const QString &folder)
{
    return crateOf(folder, {}, {u"b.mp3"_s, u"a.mp3"_s});
}

bool isFiled(const QString &folder)
{
    return contentOf(crateFile(folder, unsorted)) == filed(folder);
}

CommandCase filing()
{
    return {.name = u"orphans"_s,
            .fill = fillLibrary,
            .command =
                [](UserProcess &user) {
                    user.app().fileOrphans({musicPath(user.folder(), u"b.mp3"_s),
                                            musicPath(user.folder(), u"a.mp3"_s)});
                },
            .outcomes =
                [](const QString &folder) {
                    return outcomesOf(folder, unsorted, {"(none)", filed(folder)});
                },
            .isTrue =
                [](const QString &folder, const ChangeEntry &entry) {
                    return !entry.reversed && entry.target == u"Unsorted"_s &&
                           entry.detail == u"Filed 2 orphan tracks into the Unsorted crate"_s &&
                           isFiled(folder) && isInSnapshot(entry, unsorted, "(none)");
                },
            .isToastTrue =
                [](const QString &folder, const QString &toast) {
                    return toast == u"Filed 2 orphans into Unsorted"_s && isFiled(folder);
                },
            .isUndone = [](const QString &folder, const ChangeEntry &) { return isFiled(folder); }};
}

QList<Interruption> cases()
{
    return interruptionsOf({archiving(), filing()});
}

} // namespace

class CrateCommandFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesWholeCratesWhateverCallFails_data() { addRows(cases()); }
    void leavesWholeCratesWhateverCallFails()
    {
        QFETCH(const int, index);
        checkAtEachCall(cases().at(index), 40);
    }
};

TARNWICK_FAULT_LOOP_MAIN(CrateCommandFaultsTest, cases)
#include "crate_command_faults_test.moc"
