// The commands that edit the database alone, interrupted: whichever call of the system fails, and
// wherever the process is killed, the database is the old one or the new one as a whole.

#include "support/command_faults.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// A track with a field that nobody here knows.
QByteArray song(const QString &folder, const QString &name, QStringView genre,
                bool isMissing = true)
{
    return trackRecord({record("zzzz", "kept"), textRecord("pfil", musicPath(folder, name)),
                        textRecord("tgen", genre), flagRecord("bmis", isMissing)});
}

/// Two tracks, "gone.mp3" and "b.mp3", among records that nobody here knows.
QByteArray database(const QByteArray &gone, const QByteArray &other)
{
    return databaseVersion() + gone + record("oxyz", "between") + other + record("oxyz", "last");
}

/// The file of the one is nowhere; that of the other is there, and so is "a.mp3".
void fillLibrary(const QString &folder)
{
    put(databaseFile(folder),
        database(song(folder, u"gone.mp3"_s, u"Pop"), song(folder, u"b.mp3"_s, u"Pop")));
    put(musicFile(folder, u"a.mp3"_s), "music a");
    put(musicFile(folder, u"b.mp3"_s), "music b");
}

Outcomes outcomesOf(const QByteArrayList &databases)
{
    return {databases, {{u"a.mp3"_s, {"music a"}}, {u"b.mp3"_s, {"music b"}}}};
}

/// Whether the database holds what an entry says it does, and nothing is marked as undone.
bool stands(const QString &folder, const ChangeEntry &entry, const QByteArray &wanted)
{
    return !entry.reversed && contentOf(databaseFile(folder)).contains(wanted);
}

bool isPopAgain(const QString &folder, const ChangeEntry &entry)
{
    return contentOf(databaseFile(folder)).contains(song(folder, entry.target, u"Pop"));
}

bool isGoneAgain(const QString &folder, const ChangeEntry &)
{
    return contentOf(databaseFile(folder)).contains(song(folder, u"gone.mp3"_s, u"Pop"));
}

bool isThereAgain(const QString &folder, const ChangeEntry &entry)
{
    return isGoneAgain(folder, entry) || mayRecordStayAway(entry, u"gone.mp3"_s);
}

CommandCase relinking()
{
    return {.name = u"relink"_s,
            .fill = fillLibrary,
            .command =
                [](UserProcess &user) {
                    user.app().relink(*user.track(u"gone.mp3"_s),
                                      QUrl::fromLocalFile(musicFile(user.folder(), u"a.mp3"_s)));
                },
            .outcomes =
                [](const QString &folder) {
                    const QByteArray other = song(folder, u"b.mp3"_s, u"Pop");
                    return outcomesOf({database(song(folder, u"gone.mp3"_s, u"Pop"), other),
                                       database(song(folder, u"a.mp3"_s, u"Pop", false), other)});
                },
            .isTrue =
                [](const QString &folder, const ChangeEntry &entry) {
                    return stands(folder, entry, song(folder, u"a.mp3"_s, u"Pop", false));
                },
            .isUndone = isGoneAgain};
}

CommandCase dropping()
{
    return {.name = u"drop"_s,
            .fill = fillLibrary,
            .command =
                [](UserProcess &user) { user.app().dropFromLibrary(*user.track(u"gone.mp3"_s)); },
            .outcomes =
                [](const QString &folder) {
                    const QByteArray other = song(folder, u"b.mp3"_s, u"Pop");
                    return outcomesOf({database(song(folder, u"gone.mp3"_s, u"Pop"), other),
                                       database({}, other)});
                },
            .isTrue =
                [](const QString &folder, const ChangeEntry &) {
                    return !contentOf(databaseFile(folder)).contains(utf16(u"gone.mp3"));
                },
            .isUndone = isThereAgain};
}

bool isGenreSet(const QString &folder, const ChangeEntry &entry)
{
    return stands(folder, entry, song(folder, entry.target, u"House"));
}

/// The toast in its form, with the count of the tracks that the database has as House.
auto tellsHouseTracks(const QString &form)
{
    return [form](const QString &folder, const QString &toast) {
        const auto count = contentOf(databaseFile(folder)).count(utf16(u"House"));
        return toast == form.arg(QString::number(count), count == 1 ? u"track"_s : u"tracks"_s);
    };
}

CommandCase tagging()
{
    return {.name = u"genre"_s,
            .fill = fillLibrary,
            .command =
                [](UserProcess &user) {
                    user.app().setGenre(*user.track(u"gone.mp3"_s), u"House"_s, u"Before: all"_s);
                },
            .outcomes =
                [](const QString &folder) {
                    const QByteArray other = song(folder, u"b.mp3"_s, u"Pop");
                    return outcomesOf({database(song(folder, u"gone.mp3"_s, u"Pop"), other),
                                       database(song(folder, u"gone.mp3"_s, u"House"), other)});
                },
            .isTrue = isGenreSet,
            .isUndone = isPopAgain};
}

CommandCase taggingAll()
{
    return {.name = u"genres"_s,
            .fill = fillLibrary,
            .command =
                [](UserProcess &user) {
                    user.app().setGenreBatch(user.app().result()->tracks, u"House"_s);
                },
            .outcomes =
                [](const QString &folder) {
                    QByteArrayList all;
                    for (const QString &one : {u"Pop"_s, u"House"_s}) {
                        for (const QString &other : {u"Pop"_s, u"House"_s})
                            all << database(song(folder, u"gone.mp3"_s, one),
                                            song(folder, u"b.mp3"_s, other));
                    }
                    return outcomesOf(all);
                },
            .isTrue = isGenreSet,
            .isToastTrue = tellsHouseTracks(u"Tagged %1 %2 as House"_s),
            .isUndone = isPopAgain};
}

/// Two other spellings of "House".
QByteArray spelled(const QString &folder, const QString &name)
{
    return song(folder, name, name == u"b.mp3"_s ? u"HOUSE" : u"house");
}

CommandCase unifying()
{
    return {.name = u"unify"_s,
            .fill =
                [](const QString &folder) {
                    fillLibrary(folder);
                    put(databaseFile(folder),
                        database(spelled(folder, u"gone.mp3"_s), spelled(folder, u"b.mp3"_s)));
                },
            .command =
                [](UserProcess &user) {
                    user.app().unifyGenre({.id = {},
                                           .canon = u"House"_s,
                                           .variants = {u"HOUSE"_s, u"House"_s, u"house"_s},
                                           .trackCount = 2});
                },
            .outcomes =
                [](const QString &folder) {
                    const QByteArray one = song(folder, u"gone.mp3"_s, u"House");
                    const QByteArray other = song(folder, u"b.mp3"_s, u"House");
                    const QByteArray oldOne = spelled(folder, u"gone.mp3"_s);
                    const QByteArray oldOther = spelled(folder, u"b.mp3"_s);
                    return outcomesOf({database(oldOne, oldOther), database(one, oldOther),
                                       database(oldOne, other), database(one, other)});
                },
            .isTrue = isGenreSet,
            .isToastTrue = tellsHouseTracks(u"Unified %1 %2 to House"_s),
            .isUndone =
                [](const QString &folder, const ChangeEntry &entry) {
                    return contentOf(databaseFile(folder)).contains(spelled(folder, entry.target));
                }};
}

QList<Interruption> cases()
{
    return interruptionsOf({relinking(), dropping(), tagging(), taggingAll(), unifying()});
}

} // namespace

class LibraryCommandFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesAWholeDatabaseWhateverCallFails_data() { addRows(cases()); }
    void leavesAWholeDatabaseWhateverCallFails()
    {
        QFETCH(const int, index);
        checkAtEachCall(cases().at(index), 40);
    }
};

TARNWICK_FAULT_LOOP_MAIN(LibraryCommandFaultsTest, cases)
#include "library_command_faults_test.moc"
