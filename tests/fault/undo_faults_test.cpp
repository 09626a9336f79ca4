// Taking changes back, interrupted: whichever call of the system fails, and wherever the process is
// killed, the database is the one before or the one behind the undo, and nothing is marked as
// undone that isn't.

#include "support/command_faults.h"
#include "support/tag_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QByteArray plainFile = TagBuilder().frame("TIT2", zeros(1) + "Song").audio("music").file();
const QByteArray gainedFile = TagBuilder()
                                  .frame("TIT2", zeros(1) + "Song")
                                  .userText("REPLAYGAIN_TRACK_GAIN", "-2.50 dB")
                                  .audio("music")
                                  .file();

QByteArray song(const QString &folder, const QString &name, QStringView genre, bool isMissing)
{
    return trackRecord({record("zzzz", "kept"), textRecord("pfil", musicPath(folder, name)),
                        textRecord("tgen", genre), flagRecord("bmis", isMissing)});
}

/// Two tracks in front of a record that nobody here knows.
QByteArray database(const QByteArray &one, const QByteArray &other, const QByteArray &behind = {})
{
    return databaseVersion() + one + other + record("oxyz", "last") + behind;
}

QByteArray gone(const QString &folder)
{
    return song(folder, u"gone.mp3"_s, u"Pop", true);
}

QByteArray relinked(const QString &folder)
{
    return song(folder, u"found.mp3"_s, u"Pop", false);
}

QByteArray tagged(const QString &folder, QStringView genre)
{
    return song(folder, u"b.mp3"_s, genre, false);
}

void fillLibrary(const QString &folder)
{
    put(databaseFile(folder), database(gone(folder), tagged(folder, u"Pop")));
    put(musicFile(folder, u"found.mp3"_s), plainFile);
    put(musicFile(folder, u"b.mp3"_s), plainFile);
}

Outcomes outcomesOf(const QByteArrayList &databases, const QByteArray &earlierDatabase = {})
{
    return {.databases = databases,
            .audio = {{u"found.mp3"_s, {plainFile}}, {u"b.mp3"_s, {plainFile}}},
            .earlierDatabase = earlierDatabase};
}

void relink(UserProcess &user)
{
    user.app().relink(*user.track(u"gone.mp3"_s),
                      QUrl::fromLocalFile(musicFile(user.folder(), u"found.mp3"_s)));
}

void tag(UserProcess &user)
{
    user.app().setGenre(*user.track(u"b.mp3"_s), u"House"_s);
}

void undoNewest(UserProcess &user)
{
    user.app().undo(user.app().changeLog().entries().value(0));
}

/// What is marked as undone is; what isn't may still have been, where the mark got lost.
bool isUndone(const QString &folder, const ChangeEntry &entry)
{
    const QByteArray &wanted =
        entry.kind == ChangeEntry::Kind::Relink ? gone(folder) : tagged(folder, u"Pop");
    return !entry.reversed || contentOf(databaseFile(folder)).contains(wanted);
}

bool isTakenBack(const QString &folder, const ChangeEntry &entry)
{
    return contentOf(databaseFile(folder))
        .contains(entry.kind == ChangeEntry::Kind::Relink ? gone(folder) : tagged(folder, u"Pop"));
}

bool isGoneThere(const QString &folder, const ChangeEntry &)
{
    return contentOf(databaseFile(folder)).count(gone(folder)) == 1;
}

QList<CommandCase> commands()
{
    return {
        {.name = u"relink"_s,
         .fill = fillLibrary,
         .earlier = relink,
         .command = undoNewest,
         .outcomes =
             [](const QString &folder) {
                 return outcomesOf({database(relinked(folder), tagged(folder, u"Pop")),
                                    database(gone(folder), tagged(folder, u"Pop"))});
             },
         .isTrue = isUndone,
         .isUndone = isTakenBack},
        {.name = u"genre"_s,
         .fill = fillLibrary,
         .earlier = tag,
         .command = undoNewest,
         .outcomes =
             [](const QString &folder) {
                 return outcomesOf({database(gone(folder), tagged(folder, u"House")),
                                    database(gone(folder), tagged(folder, u"Pop"))});
             },
         .isTrue = isUndone,
         .isUndone = isTakenBack},
        // A record that can't come back is passed over, and the entry marked.
        {.name = u"drop"_s,
         .fill = fillLibrary,
         .earlier =
             [](UserProcess &user) { user.app().dropFromLibrary(*user.track(u"gone.mp3"_s)); },
         .command = undoNewest,
         .outcomes =
             [](const QString &folder) {
                 return outcomesOf({database({}, tagged(folder, u"Pop")),
                                    database({}, tagged(folder, u"Pop"), gone(folder))},
                                   database(gone(folder), tagged(folder, u"Pop")));
             },
         .isTrue =
             [](const QString &folder, const ChangeEntry &entry) {
                 return !entry.reversed || isGoneThere(folder, entry) || hasFailedAtDatabase();
             },
         .mayDiffer = hasFailedAtDatabase,
         .isUndone = isGoneThere},
        {.name = u"gain"_s,
         .fill = fillLibrary,
         .earlier =
             [](UserProcess &user) { user.app().normalizeLoudness(*user.track(u"b.mp3"_s), -2.5); },
         .command = undoNewest,
         .outcomes =
             [](const QString &folder) {
                 Outcomes outcomes = outcomesOf({database(gone(folder), tagged(folder, u"Pop"))});
                 outcomes.audio[u"b.mp3"_s] = {gainedFile};
                 return outcomes;
             },
         // The gain stays, and the entry is marked.
         .isTrue =
             [](const QString &folder, const ChangeEntry &) {
                 return contentOf(musicFile(folder, u"b.mp3"_s)) == gainedFile;
             }},
        {.name = u"everything"_s,
         .fill = fillLibrary,
         .earlier =
             [](UserProcess &user) {
                 relink(user);
                 tag(user);
             },
         .command = [](UserProcess &user) { user.app().undoEverything(); },
         .outcomes =
             [](const QString &folder) {
                 return outcomesOf({database(relinked(folder), tagged(folder, u"House")),
                                    database(relinked(folder), tagged(folder, u"Pop")),
                                    database(gone(folder), tagged(folder, u"House")),
                                    database(gone(folder), tagged(folder, u"Pop"))});
             },
         .isTrue = isUndone,
         .isUndone = isTakenBack},
    };
}

QList<Interruption> cases()
{
    return interruptionsOf(commands());
}

} // namespace

class UndoFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesAWholeDatabaseWhateverCallFails_data() { addRows(cases()); }
    void leavesAWholeDatabaseWhateverCallFails()
    {
        QFETCH(const int, index);
        checkAtEachCall(cases().at(index), 5);
    }
};

TARNWICK_FAULT_LOOP_MAIN(UndoFaultsTest, cases)
#include "undo_faults_test.moc"
