// Resolving duplicates and taking it back, interrupted: whichever call of the system fails, and
// wherever the process is killed, no copy's file is lost. What may remain is a held file whose
// record is still there, or of which no entry tells.

#include "support/command_faults.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QMap<QString, QByteArrayList> audio = {{u"a.mp3"_s, {"a copy"}},
                                             {u"b.mp3"_s, {"another copy"}},
                                             {u"best.mp3"_s, {"the longest copy"}}};

/// Copies of one song, in the order of the names.
QByteArray database(const QString &folder, const QStringList &names)
{
    QByteArray bytes = databaseVersion();
    for (const QString &name : names)
        bytes += trackRecord({textRecord("pfil", musicPath(folder, name)),
                              textRecord("tsng", u"Song"), record("zzzz", "kept")});
    return bytes;
}

void fillLibrary(const QString &folder)
{
    put(databaseFile(folder), database(folder, {u"a.mp3"_s, u"b.mp3"_s, u"best.mp3"_s}));
    for (const auto &[name, contents] : audio.toStdMap())
        put(musicFile(folder, name), contents.first());
}

void keepTheBest(UserProcess &user)
{
    const DuplicateGroup group = user.app().derived()->duplicateGroups.front();
    user.app().resolveDuplicates(group, user.track(u"best.mp3"_s)->id());
}

/// The file has left its place, and so has the record.
bool isHeld(const QString &folder, const ChangeEntry &entry)
{
    return entry.holdingId && !QFileInfo::exists(musicFile(folder, entry.target)) &&
           !contentOf(databaseFile(folder)).contains(utf16(entry.target));
}

bool isInPlace(const QString &folder, const ChangeEntry &entry)
{
    return contentOf(musicFile(folder, entry.target)) == audio.value(entry.target).value(0);
}

bool hasRecord(const QString &folder, const ChangeEntry &entry)
{
    return contentOf(databaseFile(folder)).count(utf16(entry.target)) == 1;
}

/// A manifest that couldn't be written doesn't know the file, which then stays held. Where the
/// process ended while it was being written, it knows of none.
bool mayStayHeld(const QString &folder, const ChangeEntry &entry)
{
    const QByteArray manifest = contentOf(folder + u"/data/Tarnwick/Holding/manifest.json"_s);
    if (manifest.contains(entry.holdingId.value_or(u"-"_s).toUtf8()))
        return false;
    const bool isEmptied = failedPaths.isEmpty() && !manifest.contains("held-");
    return isEmptied || hasFailedAt(u"/manifest.json"_s) || mayPlainFilesLackBytes();
}

bool isBack(const QString &folder, const ChangeEntry &entry)
{
    return (isInPlace(folder, entry) || mayStayHeld(folder, entry)) &&
           (hasRecord(folder, entry) || mayRecordStayAway(entry, entry.target));
}

/// The file is in its place and the record in the database, but for what could not be put back.
bool isBackAsFarAsItGoes(const QString &folder, const ChangeEntry &entry)
{
    const bool mayFileStay = hasFailedAt(u"/Holding"_s) || hasFailedAt(u'/' + entry.target) ||
                             hasFailedAt(u"/home/music"_s);
    return (isInPlace(folder, entry) || mayFileStay) &&
           (hasRecord(folder, entry) || hasFailedAtDatabase());
}

QList<CommandCase> commands()
{
    return {
        {.name = u"resolve"_s,
         .fill = fillLibrary,
         .command = keepTheBest,
         .outcomes =
             [](const QString &folder) {
                 return Outcomes{
                     .databases = {database(folder, {u"a.mp3"_s, u"b.mp3"_s, u"best.mp3"_s}),
                                   database(folder, {u"a.mp3"_s, u"best.mp3"_s}),
                                   database(folder, {u"b.mp3"_s, u"best.mp3"_s}),
                                   database(folder, {u"best.mp3"_s})},
                     .audio = audio};
             },
         .isTrue = isHeld,
         .isUndone = isBack},
        // Of the smallest copy, which went last. A file or a record that can't come back is passed
        // over, and the entry marked.
        {.name = u"undo"_s,
         .fill = fillLibrary,
         .earlier = keepTheBest,
         .command =
             [](UserProcess &user) { user.app().undo(user.app().changeLog().entries().value(0)); },
         .outcomes =
             [](const QString &folder) {
                 return Outcomes{.databases = {database(folder, {u"best.mp3"_s}),
                                               database(folder, {u"best.mp3"_s, u"a.mp3"_s})},
                                 .audio = audio,
                                 .earlierDatabase =
                                     database(folder, {u"a.mp3"_s, u"b.mp3"_s, u"best.mp3"_s})};
             },
         .isTrue =
             [](const QString &folder, const ChangeEntry &entry) {
                 if (!entry.reversed)
                     return entry.target == u"a.mp3"_s || isHeld(folder, entry);
                 return entry.target == u"a.mp3"_s && isBackAsFarAsItGoes(folder, entry);
             },
         .mayDiffer = hasFailedAtDatabase,
         .isUndone = isBack},
    };
}

QList<Interruption> cases()
{
    return interruptionsOf(commands());
}

} // namespace

class DuplicateFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void losesNoFileWhateverCallFails_data() { addRows(cases()); }
    void losesNoFileWhateverCallFails()
    {
        QFETCH(const int, index);
        checkAtEachCall(cases().at(index), 20);
    }
};

TARNWICK_FAULT_LOOP_MAIN(DuplicateFaultsTest, cases)
#include "duplicate_faults_test.moc"
