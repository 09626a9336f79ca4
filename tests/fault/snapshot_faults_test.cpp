// Snapshots under faults: whichever call of the system fails, and wherever the process is killed,
// no half of a snapshot is listed and no item of a library is half restored.

#include "support/fault_loop.h"
#include "support/safety_records.h"

#include <QTest>

#include <algorithm>
#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr int filesInLibrary = 6; // that a snapshot holds

QMap<QString, QByteArray> itemNamed(const QMap<QString, QByteArray> &items, const QString &name)
{
    QMap<QString, QByteArray> found;
    for (const auto &[key, content] : items.toStdMap()) {
        if (key == name || key.startsWith(name + u'/'))
            found[key] = content;
    }
    return found;
}

/// Every snapshot that is listed is whole, and the library as it was.
QString troubleAfterCreate(const QString &folder)
{
    keepDataIn(folder);
    const auto twin = itemsOf(libraryIn(folder + u"/twin"_s));
    if (itemsOf(libraryIn(folder)) != twin)
        return u"the library has changed"_s;
    for (const Snapshot &snapshot : SnapshotStore::list()) {
        const bool isWhole =
            itemsIn(snapshot.folderPath()) == twin && snapshot.fileCount == filesInLibrary;
        if (!isWhole && !mayPlainFilesLackBytes())
            return u"half a snapshot is listed"_s;
    }
    return {};
}

/// As above, and nothing invisible is left either.
QString troubleAfterFailedCreate(const QString &folder)
{
    if (const QString trouble = troubleAfterCreate(folder); !trouble.isEmpty())
        return trouble;
    const qsizetype folders = namesIn(dataIn(folder, u"Snapshots"_s)).size();
    return folders == SnapshotStore::list().size() ? QString() : u"a failed snapshot was left"_s;
}

/// Each item of the library is the old one or the new one as a whole, and so is every snapshot.
QString troubleAfterRestore(const QString &folder)
{
    keepDataIn(folder);
    const auto old = itemsOf(libraryIn(folder + u"/twin"_s));
    const auto young = itemsOf(libraryIn(folder + u"/new twin"_s));
    const auto present = itemsOf(libraryIn(folder));
    for (const QString &name : SnapshotSet::entries()) {
        const auto item = itemNamed(present, name);
        if (item != itemNamed(old, name) && item != itemNamed(young, name))
            return u"half an item: "_s + name;
    }
    bool isOldThere = false;
    for (const Snapshot &snapshot : SnapshotStore::list()) {
        const auto &wanted = snapshot.reason == u"old"_s ? old : young;
        isOldThere = isOldThere || snapshot.reason == u"old"_s;
        if (itemsIn(snapshot.folderPath()) != wanted && !mayPlainFilesLackBytes())
            return u"a snapshot has changed"_s;
    }
    return isOldThere ? QString() : u"the snapshot has gone"_s;
}

void create(const QString &folder)
{
    keepDataIn(folder);
    (void)SnapshotStore::create(libraryIn(folder), u"new"_s);
}

void restore(const QString &folder)
{
    keepDataIn(folder);
    for (const Snapshot &snapshot : SnapshotStore::list()) {
        if (snapshot.reason == u"old"_s)
            (void)SnapshotStore::restore(snapshot, libraryIn(folder));
    }
}

/// Two snapshots of the same library.
void prepareTwoSnapshots(const QString &folder)
{
    prepareLibrary(folder);
    for (const QString &reason : {u"kept"_s, u"old"_s}) {
        if (!SnapshotStore::create(libraryIn(folder), reason))
            qFatal("can't take a snapshot");
    }
}

void remove(const QString &folder)
{
    keepDataIn(folder);
    for (const Snapshot &snapshot : SnapshotStore::list()) {
        if (snapshot.reason == u"old"_s)
            SnapshotStore::remove(snapshot);
    }
}

/// The other snapshot is still there, and the one that was to go isn't listed as a half.
QString troubleAfterRemove(const QString &folder)
{
    if (const QString trouble = troubleAfterCreate(folder); !trouble.isEmpty())
        return trouble;
    const QList<Snapshot> left = SnapshotStore::list();
    const bool isKept = std::any_of(left.begin(), left.end(), [](const Snapshot &snapshot) {
        return snapshot.reason == u"kept"_s;
    });
    return isKept ? QString() : u"another snapshot has gone"_s;
}

QList<Interruption> cases()
{
    return {{u"create"_s, prepareLibrary, create, troubleAfterCreate},
            {u"restore"_s, prepareSnapshot, restore, troubleAfterRestore},
            {u"remove"_s, prepareTwoSnapshots, remove, troubleAfterRemove}};
}

} // namespace

class SnapshotFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesNothingHalfDoneWhateverCallFails();
    void leavesNoItemHalfRestoredWhateverCallFails();
    void listsNoSnapshotThatIsHalfRemoved();
};

void SnapshotFaultsTest::leavesNothingHalfDoneWhateverCallFails()
{
    Interruption what = cases().at(0);
    // Where the disk is gone, the removal fails too and leaves what it could not remove.
    what.troubleIfFailed = troubleAfterFailedCreate;
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY(report.calls > 60);
    }
}

void SnapshotFaultsTest::leavesNoItemHalfRestoredWhateverCallFails()
{
    const Interruption what = cases().at(1);
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY2(report.calls > 150, qPrintable(QString::number(report.calls)));
    }
}

void SnapshotFaultsTest::listsNoSnapshotThatIsHalfRemoved()
{
    const Interruption what = cases().at(2);
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY2(report.calls > 30, qPrintable(QString::number(report.calls)));
    }
}

TARNWICK_FAULT_LOOP_MAIN(SnapshotFaultsTest, cases)
#include "snapshot_faults_test.moc"
