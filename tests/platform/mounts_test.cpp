#include "platform/mounts.h"

#include "platform/fault_gate.h"
#include "support/mount_list.h"
#include "support/test_folder.h"

#include <QTest>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class MountsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsDisksFromTheRest_data();
    void tellsDisksFromTheRest();
    void readsEscapedMountPoints();
    void takesTheLaterOfTwoOnOneMountPoint();
    void passesOverLinesOfAnotherForm();
    void knowsTheFileSystemsOfThisSystem();
    void doubtsWhatLiesBelowSuchAMount_data();
    void doubtsWhatLiesBelowSuchAMount();
    void followsLinksWithoutTouchingTheMount();
    void endsOnLinksInACircle();

private:
    static bool doubts(const QString &path) { return Mounts::now().mayNeverAnswer(path); }
};

void MountsTest::tellsDisksFromTheRest_data()
{
    QTest::addColumn<bool>("isDisk");
    for (const char *disk : {"ext4", "btrfs", "xfs", "vfat", "exfat", "ntfs3", "fuseblk", "tmpfs"})
        QTest::newRow(disk) << true;
    for (const char *other : {"nfs", "nfs4", "cifs", "smb3", "9p", "autofs", "ceph", "proc",
                              "sysfs", "fuse.sshfs", "fuse.gvfsd-fuse", "fuse.rclone"})
        QTest::newRow(other) << false;
}

void MountsTest::tellsDisksFromTheRest()
{
    QFETCH(bool, isDisk);
    const ScopedMounts mounts(
        mountList({{u"/"_s, "ext4"}, {u"/mnt/x"_s, QTest::currentDataTag()}}));
    QCOMPARE(Mounts::now().thatAreNoDisks().contains("/mnt/x"), !isDisk);
    QVERIFY(!Mounts::now().thatAreNoDisks().contains("/"));
}

void MountsTest::readsEscapedMountPoints()
{
    const QString name = u"/mnt/My \\ Päth"_s;
    const ScopedMounts mounts(mountList({{name, "nfs"}}));
    QCOMPARE(Mounts::now().thatAreNoDisks(), QSet<QByteArray>{name.toUtf8()});
}

void MountsTest::takesTheLaterOfTwoOnOneMountPoint()
{
    const ScopedMounts mounts(mountList({{u"/mnt/disk"_s, "autofs"},
                                         {u"/mnt/disk"_s, "ext4"},
                                         {u"/mnt/share"_s, "ext4"},
                                         {u"/mnt/share"_s, "nfs4"}}));
    QCOMPARE(Mounts::now().thatAreNoDisks(), QSet<QByteArray>{"/mnt/share"});
}

void MountsTest::passesOverLinesOfAnotherForm()
{
    const ScopedMounts mounts("\n- nfs\n1 2 3 4 - nfs\n36 35 98:0 / /mnt/x rw -\n" +
                              mountList({{u"/mnt/y"_s, "nfs"}}));
    QCOMPARE(Mounts::now().thatAreNoDisks(), QSet<QByteArray>{"/mnt/y"});
}

void MountsTest::knowsTheFileSystemsOfThisSystem()
{
#ifdef Q_OS_LINUX
    QVERIFY(Mounts::now().thatAreNoDisks().contains("/proc"));
    QVERIFY(doubts(u"/proc/self"_s));
#endif
    QVERIFY(!Mounts::now().thatAreNoDisks().contains("/"));
    QVERIFY(!doubts(TestFolder().path()));
}

void MountsTest::doubtsWhatLiesBelowSuchAMount_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("doubted");
    QTest::newRow("the mount point") << u"/mnt/share"_s << true;
    QTest::newRow("below it") << u"/mnt/share/Music/_Serato_"_s << true;
    QTest::newRow("slashes and points") << u"/mnt//./share/../share/x"_s << true;
    QTest::newRow("through it and out again") << u"/mnt/share/../disk"_s << true;
    QTest::newRow("above it") << u"/mnt"_s << false;
    QTest::newRow("a name that begins alike") << u"/mnt/share 2/x"_s << false;
    QTest::newRow("beside it") << u"/mnt/disk/x"_s << false;
    QTest::newRow("out of the root") << u"/../mnt/disk"_s << false;
    QTest::newRow("the root") << u"/"_s << false;
}

void MountsTest::doubtsWhatLiesBelowSuchAMount()
{
    QFETCH(QString, path);
    const ScopedMounts mounts(mountList({{u"/"_s, "ext4"}, {u"/mnt/share"_s, "nfs4"}}));
    QTEST(doubts(path), "doubted");
}

void MountsTest::followsLinksWithoutTouchingTheMount()
{
    const TestFolder folder;
    const QString share = folder.makeFolder(u"net/share"_s);
    QFile::link(share, folder.path(u"whole"_s));
    QFile::link(u"net"_s, folder.path(u"relative"_s));
    QFile::link(folder.makeFolder(u"disk"_s), folder.path(u"elsewhere"_s));
    const ScopedMounts mounts(mountList({{share, "nfs"}}));
    bool touched = false;
    const ScopedFaults watch([&](FileOperation, const QString &path) {
        touched = touched || path.startsWith(share);
        return 0;
    });
    QVERIFY(doubts(folder.path(u"whole/Music"_s)));
    QVERIFY(doubts(folder.path(u"relative/share/Music"_s)));
    QVERIFY(doubts(folder.path(u"elsewhere/../whole"_s)));
    QVERIFY(!doubts(folder.path(u"relative/other"_s)));
    QVERIFY(!doubts(folder.path(u"elsewhere/Music"_s)));
    QVERIFY(!touched);
}

void MountsTest::endsOnLinksInACircle()
{
    const TestFolder folder;
    QFile::link(u"b"_s, folder.path(u"a"_s));
    QFile::link(u"a"_s, folder.path(u"b"_s));
    QVERIFY(!doubts(folder.path(u"a/Music"_s)));
}

QTEST_APPLESS_MAIN(MountsTest)
#include "mounts_test.moc"
