// A rollback, interrupted: whichever call of the system fails, and wherever the process is killed,
// each item of the library is the present one or the snapshot's, and a mix of both is not logged as
// a rollback.

#include "support/command_faults.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray database(const QString &folder, QStringView genre)
{
    return databaseVersion() + trackRecord({textRecord("pfil", musicPath(folder, u"a.mp3"_s)),
                                            textRecord("tgen", genre), record("zzzz", "kept")});
}

void fillLibrary(const QString &folder)
{
    put(databaseFile(folder), database(folder, u"Pop"));
    put(musicFile(folder, u"a.mp3"_s), "music");
}

/// The database and the crate are others than when the snapshot was taken.
void changeBoth(UserProcess &user)
{
    user.app().setGenre(*user.track(u"a.mp3"_s), u"House"_s);
    put(libraryFile(user.folder(), u"Subcrates/Set.crate"_s), "changed crate");
}

void rollBack(UserProcess &user)
{
    user.app().restoreSnapshot(user.app().snapshots().last());
    user.waitUntilIdle();
}

bool isSo(const QString &folder, const ChangeEntry &entry)
{
    return entry.kind != ChangeEntry::Kind::Rollback ||
           (contentOf(databaseFile(folder)) == database(folder, u"Pop") &&
            contentOf(libraryFile(folder, u"Subcrates/Set.crate"_s)) == "crate");
}

QList<Interruption> cases()
{
    return interruptionsOf({{.name = u"rollback"_s,
                             .fill = fillLibrary,
                             .earlier = changeBoth,
                             .command = rollBack,
                             .outcomes =
                                 [](const QString &folder) {
                                     return Outcomes{.databases = {database(folder, u"House"),
                                                                   database(folder, u"Pop")},
                                                     .audio = {{u"a.mp3"_s, {"music"}}},
                                                     .crates = {"crate", "changed crate"}};
                                 },
                             .isTrue = isSo,
                             // The scan behind it may be what failed.
                             .mayDiffer = [] { return true; },
                             .isUndone =
                                 [](const QString &folder, const ChangeEntry &) {
                                     return contentOf(databaseFile(folder)) ==
                                            database(folder, u"Pop");
                                 }}});
}

} // namespace

class RollbackFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesWholeItemsWhateverCallFails_data() { addRows(cases()); }
    void leavesWholeItemsWhateverCallFails()
    {
        QFETCH(const int, index);
        checkAtEachCall(cases().at(index), 80);
    }
};

TARNWICK_FAULT_LOOP_MAIN(RollbackFaultsTest, cases)
#include "rollback_faults_test.moc"
