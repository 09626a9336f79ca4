#include "export/serato_backup.h"

#include "export/export_library.h"
#include "support/memory_folder.h"
#include "support/test_files.h"
#include "support/test_folder.h"
#include "support/tiny_disk.h"

#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString backupName = u"USB/_Serato_ backup"_s;
const QString libraryName = u"Music/_Serato_"_s;
const QStringList itemNames = {u"database V2"_s, u"Subcrates"_s, u"SmartCrates"_s,
                               u"neworder.pref"_s, u"window.pref"_s};

} // namespace

class SeratoBackupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { keepTemporaryFoldersInMemory(); }
    void init();
    void copiesTheItemsOfTheLibraryAndNothingElse();
    void tellsWhatItHasWritten();
    void reportsEachItemThatItCopies();
    void passesOverWhatTheLibraryDoesNotHave_data();
    void passesOverWhatTheLibraryDoesNotHave();
    void keepsLinksHiddenEntriesAndModes();
    void replacesAnEarlierBackup_data();
    void replacesAnEarlierBackup();
    void makesTheFolder();
    void countsTheCrateFilesOfTheTopLevel();
    void countsNoCratesWhereTheFolderCannotBeListed();
    void failsWhereTheFolderCannotBeMade();
    void failsWhereTheEarlierBackupCannotBeRemoved();
    void leavesNoItemOfAnEarlierBackup_data();
    void leavesNoItemOfAnEarlierBackup();
    void stopsAtTheFirstItemThatCannotBeCopied();
    void neverClaimsMoreThanItHasCopied();
    void failsOnAFullDevice();
    void neverRemovesTheLibraryItself_data();
    void neverRemovesTheLibraryItself();
    void doesNotCopyAFolderIntoItself();

private:
    SeratoLibrary::Location location() const
    {
        return {.volumeName = u"Test"_s,
                .folderUrl = QUrl::fromLocalFile(m_folder->path(libraryName)),
                .isOnline = true,
                .hasDatabase = true};
    }
    Result<ExportOutcome> backUp(const ExportProgressFunction &progress = ignoreProgress) const
    {
        return SeratoBackup::exportTo(location(), m_folder->path(u"USB"_s), progress);
    }
    QString writeItem(const QString &name, const QByteArray &content) const
    {
        return m_folder->write(libraryName + u'/' + name, content);
    }
    /// All that lies below a folder, without what belongs to no backup.
    QMap<QString, QByteArray> tree(const QString &folder) const
    {
        QMap<QString, QByteArray> all = treeOf(m_folder->path(folder));
        all.removeIf([](const std::pair<const QString &, QByteArray &> &entry) {
            return !itemNames.contains(entry.first.section(u'/', 0, 0));
        });
        return all;
    }

    std::unique_ptr<TestFolder> m_folder;
};

void SeratoBackupTest::init()
{
    m_folder = std::make_unique<TestFolder>();
    writeItem(u"database V2"_s, "the database");
    writeItem(u"Subcrates/Warm up.crate"_s, "warm up");
    writeItem(u"Subcrates/Peak.crate"_s, "peak");
    writeItem(u"SmartCrates/New.scrate"_s, "new");
    writeItem(u"neworder.pref"_s, "order");
    writeItem(u"window.pref"_s, "window");
    writeItem(u"History/Sessions/1.session"_s, "played");
    m_folder->write(u"Music/a.mp3"_s, "music");
    m_folder->makeFolder(u"USB"_s);
}

void SeratoBackupTest::copiesTheItemsOfTheLibraryAndNothingElse()
{
    const QMap<QString, QByteArray> before = treeOf(m_folder->path(libraryName));
    QVERIFY(backUp());
    QCOMPARE(m_folder->names(u"USB"_s), QStringList{u"_Serato_ backup"_s});
    QCOMPARE(m_folder->names(backupName),
             (QStringList{u"SmartCrates"_s, u"Subcrates"_s, u"database V2"_s, u"neworder.pref"_s,
                          u"window.pref"_s}));
    QCOMPARE(tree(backupName), tree(libraryName));
    QCOMPARE(m_folder->read(backupName + u"/Subcrates/Peak.crate"_s), QByteArray("peak"));
    QCOMPARE(treeOf(m_folder->path(libraryName)), before);
}

void SeratoBackupTest::tellsWhatItHasWritten()
{
    const Result<ExportOutcome> outcome = backUp();
    QVERIFY(outcome);
    QCOMPARE(outcome->target, ExportTarget::SeratoBackup);
    QCOMPARE(outcome->path, m_folder->path(backupName));
    QCOMPARE(outcome->trackCount, 5);
    QCOMPARE(outcome->crateCount, 2);
}

void SeratoBackupTest::reportsEachItemThatItCopies()
{
    ProgressLog log;
    QStringList present; // at the time of each report
    const ExportProgressFunction report = log.function();
    QVERIFY(backUp([&](const ExportProgress &progress) {
        report(progress);
        present.append(QString::number(m_folder->names(backupName).size()));
    }));
    const QString phase = u"Copying library files… "_s;
    QCOMPARE(log.reports, (QStringList{phase + u"0/5"_s, phase + u"1/5"_s, phase + u"2/5"_s,
                                       phase + u"3/5"_s, phase + u"4/5"_s, phase + u"5/5"_s}));
    QCOMPARE(present, (QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s}));
}

void SeratoBackupTest::passesOverWhatTheLibraryDoesNotHave_data()
{
    QTest::addColumn<QStringList>("gone");
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("no smart crates")
        << QStringList{u"SmartCrates"_s}
        << QStringList{u"0/5"_s, u"1/5"_s, u"2/5"_s, u"4/5"_s, u"5/5"_s};
    QTest::newRow("neither the first nor the last")
        << QStringList{u"database V2"_s, u"window.pref"_s}
        << QStringList{u"0/5"_s, u"2/5"_s, u"3/5"_s, u"4/5"_s};
    QTest::newRow("nothing at all") << itemNames << QStringList{u"0/5"_s};
}

void SeratoBackupTest::passesOverWhatTheLibraryDoesNotHave()
{
    QFETCH(QStringList, gone);
    QFETCH(QStringList, steps);
    for (const QString &name : gone) {
        const QString path = m_folder->path(libraryName + u'/' + name);
        QVERIFY(QFile::remove(path) || QDir(path).removeRecursively());
    }
    ProgressLog log;
    const Result<ExportOutcome> outcome = backUp(log.function());
    QVERIFY(outcome);
    QCOMPARE(outcome->trackCount, 5 - int(gone.size()));
    QCOMPARE(outcome->crateCount, gone.contains(u"Subcrates"_s) ? 0 : 2);
    QCOMPARE(m_folder->names(backupName).size(), 5 - gone.size());
    QCOMPARE(log.reports,
             steps.replaceInStrings(QRegularExpression(u"^"_s), u"Copying library files… "_s));
}

void SeratoBackupTest::keepsLinksHiddenEntriesAndModes()
{
    writeItem(u"Subcrates/.hidden"_s, "hidden");
    m_folder->makeFolder(libraryName + u"/Subcrates/empty"_s);
    QFile::setPermissions(writeItem(u"neworder.pref"_s, "order"), QFile::ReadOwner);
    QFile::link(u"Peak.crate"_s, m_folder->path(libraryName + u"/Subcrates/Link.crate"_s));
    QFile::remove(m_folder->path(libraryName + u"/window.pref"_s));
    QFile::link(u"/nowhere"_s, m_folder->path(libraryName + u"/window.pref"_s));
    const Result<ExportOutcome> outcome = backUp();
    QVERIFY(outcome);
    QCOMPARE(outcome->trackCount, 5);
    QCOMPARE(tree(backupName), tree(libraryName));
    QCOMPARE(linkAt(m_folder->path(backupName + u"/window.pref"_s)), QByteArray("/nowhere"));
    QCOMPARE(linkAt(m_folder->path(backupName + u"/Subcrates/Link.crate"_s)),
             QByteArray("Peak.crate"));
    QVERIFY(!(QFile::permissions(m_folder->path(backupName + u"/neworder.pref"_s)) &
              QFile::WriteOwner));
}

void SeratoBackupTest::replacesAnEarlierBackup_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a backup") << backupName + u"/Subcrates/Gone since.crate"_s;
    QTest::newRow("one with another library's items") << backupName + u"/other/file"_s;
    QTest::newRow("a file") << backupName;
}

void SeratoBackupTest::replacesAnEarlierBackup()
{
    QFETCH(QString, name);
    m_folder->write(name, "earlier");
    m_folder->write(u"USB/neighbour"_s, "kept");
    QVERIFY(backUp());
    QVERIFY(backUp());
    QCOMPARE(treeOf(m_folder->path(backupName)), tree(libraryName));
    QCOMPARE(m_folder->names(u"USB"_s), (QStringList{u"_Serato_ backup"_s, u"neighbour"_s}));
}

void SeratoBackupTest::makesTheFolder()
{
    QVERIFY(SeratoBackup::exportTo(location(), m_folder->path(u"to be/made"_s), ignoreProgress));
    QCOMPARE(tree(u"to be/made/_Serato_ backup"_s), tree(libraryName));
}

void SeratoBackupTest::countsTheCrateFilesOfTheTopLevel()
{
    QDir(m_folder->path(libraryName + u"/Subcrates"_s)).removeRecursively();
    for (const QString &name : {u"one.crate"_s, u"two.CRATE"_s, u"three.txt"_s, u".crate"_s,
                                u"crate"_s, u"four.crate.bak"_s, u"below/five.crate"_s})
        writeItem(u"Subcrates/"_s + name, "crate");
    m_folder->makeFolder(libraryName + u"/Subcrates/six.crate"_s);
    const Result<ExportOutcome> outcome = backUp();
    QVERIFY(outcome);
    QCOMPARE(outcome->crateCount, 1);
}

void SeratoBackupTest::countsNoCratesWhereTheFolderCannotBeListed()
{
    QDir(m_folder->path(libraryName + u"/Subcrates"_s)).removeRecursively();
    writeItem(u"Subcrates"_s, "a file");
    const Result<ExportOutcome> outcome = backUp();
    QVERIFY(outcome);
    QCOMPARE(outcome->trackCount, 5);
    QCOMPARE(outcome->crateCount, 0);
}

void SeratoBackupTest::failsWhereTheFolderCannotBeMade()
{
    m_folder->write(u"in the way"_s, "a file");
    ProgressLog log;
    const auto outcome =
        SeratoBackup::exportTo(location(), m_folder->path(u"in the way"_s), log.function());
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The file “_Serato_ backup” couldn't be created: Not a directory."_s);
    QCOMPARE(log.reports, QStringList{});
    QCOMPARE(m_folder->read(u"in the way"_s), QByteArray("a file"));
}

void SeratoBackupTest::failsWhereTheEarlierBackupCannotBeRemoved()
{
    m_folder->write(backupName + u"/database V2"_s, "earlier");
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
        return operation == platform::FileOperation::Remove ? EACCES : 0;
    });
    const auto outcome = backUp();
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message, u"The file “database V2” couldn't be copied: File exists."_s);
    QCOMPARE(m_folder->read(backupName + u"/database V2"_s), QByteArray("earlier"));
}

void SeratoBackupTest::leavesNoItemOfAnEarlierBackup_data()
{
    QTest::addColumn<int>("failures");
    QTest::addColumn<QString>("message");
    QTest::newRow("removed in the end") << 1 << QString();
    QTest::newRow("never removed")
        << 2 << u"The file “window.pref” couldn't be removed: Permission denied."_s;
}

/// The library has lost an item since, and the earlier backup's could not be removed at first.
void SeratoBackupTest::leavesNoItemOfAnEarlierBackup()
{
    QFETCH(const int, failures);
    QFETCH(const QString, message);
    QVERIFY(backUp());
    QVERIFY(m_folder->read(backupName + u"/window.pref"_s) != "");
    QVERIFY(QFile::remove(m_folder->path(libraryName + u"/window.pref"_s)));
    int left = failures;
    const platform::ScopedFaults faults([&](platform::FileOperation operation,
                                            const QString &path) {
        const bool isItem = path.endsWith(u"/window.pref"_s);
        return isItem && operation == platform::FileOperation::Remove && left-- > 0 ? EACCES : 0;
    });
    const auto outcome = backUp();
    QCOMPARE(outcome ? QString() : outcome.error().message, message);
    QCOMPARE(QFileInfo::exists(m_folder->path(backupName + u"/window.pref"_s)), !outcome);
    if (outcome)
        QCOMPARE(tree(backupName), tree(libraryName));
}

void SeratoBackupTest::stopsAtTheFirstItemThatCannotBeCopied()
{
    ProgressLog log;
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &path) {
        const bool fails =
            operation == platform::FileOperation::Open && path.endsWith(u"New.scrate"_s);
        return fails ? EIO : 0;
    });
    const auto outcome = backUp(log.function());
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The file “SmartCrates” couldn't be copied: Input/output error."_s);
    QCOMPARE(log.reports.last(), u"Copying library files… 2/5"_s);
    QCOMPARE(m_folder->read(backupName + u"/Subcrates/Peak.crate"_s), QByteArray("peak"));
    QVERIFY(!m_folder->names(backupName).contains(u"neworder.pref"_s));
}

void SeratoBackupTest::neverClaimsMoreThanItHasCopied()
{
    const QMap<QString, QByteArray> library = treeOf(m_folder->path(libraryName));
    int failures = 0;
    for (int failingCall = 1;; ++failingCall) {
        FailingDisk disk(failingCall, EIO);
        const auto outcome = backUp();
        if (disk.calls() < failingCall)
            break;
        failures += outcome ? 0 : 1;
        if (outcome) {
            QCOMPARE(treeOf(m_folder->path(backupName)), tree(libraryName));
            QCOMPARE(outcome->trackCount, 5);
        }
        QCOMPARE(treeOf(m_folder->path(libraryName)), library);
    }
    QVERIFY2(failures >= 30, "each item is looked at, opened, written and closed");
}

void SeratoBackupTest::failsOnAFullDevice()
{
    const TinyDisk disk(m_folder->path(u"USB"_s));
    if (!disk.isMounted())
        QSKIP("this user can't mount a file system");
    writeItem(u"database V2"_s, QByteArray(20'000, 'd'));
    writeItem(u"SmartCrates/Large.scrate"_s, QByteArray(100'000, 's'));
    const auto outcome = backUp();
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The file “SmartCrates” couldn't be copied: No space left on device."_s);
    QCOMPARE(m_folder->read(backupName + u"/database V2"_s), QByteArray(20'000, 'd'));
}

void SeratoBackupTest::neverRemovesTheLibraryItself_data()
{
    QTest::addColumn<QString>("library");
    QTest::newRow("the backup is the library") << u"Safe/_Serato_ backup"_s;
    QTest::newRow("the library lies in the backup") << u"Safe/_Serato_ backup/Music/_Serato_"_s;
}

void SeratoBackupTest::neverRemovesTheLibraryItself()
{
    QFETCH(QString, library);
    m_folder->write(library + u"/database V2"_s, "the database");
    SeratoLibrary::Location inside = location();
    inside.folderUrl = QUrl::fromLocalFile(m_folder->path(library));
    ProgressLog log;
    const auto outcome = SeratoBackup::exportTo(inside, m_folder->path(u"Safe"_s), log.function());
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The library itself lies in “_Serato_ backup” — choose another folder."_s);
    QCOMPARE(log.reports, QStringList{});
    QCOMPARE(m_folder->read(library + u"/database V2"_s), QByteArray("the database"));
}

void SeratoBackupTest::doesNotCopyAFolderIntoItself()
{
    const auto outcome = SeratoBackup::exportTo(
        location(), m_folder->path(libraryName + u"/Subcrates"_s), ignoreProgress);
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The file “Subcrates” couldn't be copied: Invalid argument."_s);
    QCOMPARE(m_folder->names(libraryName + u"/Subcrates/_Serato_ backup"_s),
             QStringList{u"database V2"_s});
}

QTEST_GUILESS_MAIN(SeratoBackupTest)
#include "serato_backup_test.moc"
