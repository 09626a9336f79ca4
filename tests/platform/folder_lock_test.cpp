#include "platform/folder_lock.h"

#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <thread>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using Kind = FolderLock::Kind;

class FolderLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void letsOneAfterTheOtherIn();
    void letsReadersInTogether();
    void goesWithItsOwner();
    void tellsWhatAnotherHasFromWhatCannotBeLocked();
    void doesWithoutWhereThereIsNoFolder_data();
    void doesWithoutWhereThereIsNoFolder();
    void leavesNothingInTheFolder();

private:
    QTemporaryDir m_folder;
};

void FolderLockTest::letsOneAfterTheOtherIn()
{
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;
    const auto enter = [&] {
        for (int i = 0; i < 20; ++i) {
            const FolderLock lock(m_folder.path(), Kind::Exclusive);
            most = std::max(most.load(), ++inside);
            QTest::qSleep(1);
            --inside;
        }
    };
    std::thread other(enter);
    enter();
    other.join();
    QCOMPARE(most.load(), 1);
}

void FolderLockTest::letsReadersInTogether()
{
    const FolderLock one(m_folder.path(), Kind::Shared);
    const FolderLock other(m_folder.path(), Kind::Shared);
    QVERIFY(one.isHeld() && other.isHeld());
}

void FolderLockTest::goesWithItsOwner()
{
    QVERIFY(FolderLock(m_folder.path(), Kind::Exclusive).isHeld());
    QVERIFY(FolderLock(m_folder.path(), Kind::Exclusive).isHeld());
}

void FolderLockTest::tellsWhatAnotherHasFromWhatCannotBeLocked()
{
    const FolderLock lock(m_folder.path(), Kind::Exclusive);
    QVERIFY(!lock.isHeldByAnother());
    const FolderLock late(m_folder.path(), Kind::Exclusive, std::chrono::milliseconds(20));
    QVERIFY(!late.isHeld() && late.isHeldByAnother());
    const FolderLock none(m_folder.filePath(u"absent"_s), Kind::Exclusive, {});
    QVERIFY(!none.isHeld() && !none.isHeldByAnother());
}

void FolderLockTest::doesWithoutWhereThereIsNoFolder_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing there") << u"none"_s;
    QTest::newRow("a file") << u"file"_s;
    QTest::newRow("NUL in the name") << u"no"_s + QChar(0) + u"ne"_s;
}

void FolderLockTest::doesWithoutWhereThereIsNoFolder()
{
    QFETCH(QString, path);
    const QTemporaryDir folder;
    put(folder.filePath(u"file"_s), "x");
    QVERIFY(!FolderLock(folder.filePath(path), Kind::Exclusive).isHeld());
}

void FolderLockTest::leavesNothingInTheFolder()
{
    const FolderLock lock(m_folder.path(), Kind::Exclusive);
    QCOMPARE(namesIn(m_folder.path()), QStringList());
}

QTEST_GUILESS_MAIN(FolderLockTest)
#include "folder_lock_test.moc"
