#include "platform/volumes.h"

#include "platform/fault_gate.h"
#include "platform/mounts.h"
#include "support/mount_list.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class VolumesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void listsTheEntriesOfEachFolderInNameOrder();
    void skipsAFolderThatCannotBeListed();
    void listsAFolderAcrossTheNetworkInTheBackground();
    void looksWhereTheSystemMounts();
    void namesTheVolumeOfAPath_data();
    void namesTheVolumeOfAPath();
    void callsTheSystemDiskByItsName();

private:
    QTemporaryDir m_folder;
};

void VolumesTest::init()
{
    for (const char *name : {"Volumes/b", "Volumes/A USB", "Volumes/.hidden", "mnt/stick"})
        QDir().mkpath(m_folder.filePath(QString::fromLatin1(name)));
    put(m_folder.filePath(u"mnt/file"_s), "");
}

void VolumesTest::listsTheEntriesOfEachFolderInNameOrder()
{
    const QString first = m_folder.filePath(u"Volumes"_s);
    const QString second = m_folder.filePath(u"mnt"_s);
    const ScopedVolumeFolders folders({first, second});
    QCOMPARE(volumes(), (QList<Volume>{{u".hidden"_s, first + u"/.hidden"_s},
                                       {u"A USB"_s, first + u"/A USB"_s},
                                       {u"b"_s, first + u"/b"_s},
                                       {u"file"_s, second + u"/file"_s},
                                       {u"stick"_s, second + u"/stick"_s}}));
}

void VolumesTest::skipsAFolderThatCannotBeListed()
{
    const QString there = m_folder.filePath(u"mnt"_s);
    const ScopedVolumeFolders folders({m_folder.filePath(u"none"_s), there});
    QCOMPARE(volumes().size(), 2);
}

void VolumesTest::listsAFolderAcrossTheNetworkInTheBackground()
{
    const QString local = m_folder.filePath(u"Volumes"_s);
    const QString share = m_folder.filePath(u"mnt"_s);
    const ScopedVolumeFolders folders({local, share});
    const ScopedMounts mounts(mountList({{share, "nfs4"}}));
    QHash<QString, QThread *> listedOn;
    const ScopedFaults watch([&](FileOperation operation, const QString &path) {
        if (operation == FileOperation::List)
            listedOn[path] = QThread::currentThread();
        return 0;
    });
    QCOMPARE(volumes().size(), 5);
    QCOMPARE(listedOn.value(local), thread());
    QVERIFY(listedOn.value(share) && listedOn.value(share) != thread());
}

void VolumesTest::looksWhereTheSystemMounts()
{
    qputenv("USER", "dj");
    const QStringList folders = {u"/Volumes/x"_s, u"/media/dj/x"_s, u"/run/media/dj/x"_s,
                                 u"/mnt/x"_s};
    for (const QString &path : folders)
        QCOMPARE(volumeNameOf(path + u"/a.mp3"_s), u"x"_s);
    QCOMPARE(volumeNameOf(u"/media/somebody else/x"_s), QString());
    qunsetenv("USER");
    QCOMPARE(volumeNameOf(u"/media/dj/x"_s), QString());
    QCOMPARE(volumeNameOf(u"/mnt/x"_s), u"x"_s);
}

void VolumesTest::namesTheVolumeOfAPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::newRow("below") << u"/vol/A USB/Music/a.mp3"_s << u"A USB"_s;
    QTest::newRow("the volume itself") << u"/vol/A USB"_s << u"A USB"_s;
    QTest::newRow("the folder of volumes") << u"/vol"_s << QString();
    QTest::newRow("a folder that begins alike") << u"/volume/x"_s << QString();
    QTest::newRow("elsewhere") << u"/home/dj/a.mp3"_s << QString();
}

void VolumesTest::namesTheVolumeOfAPath()
{
    QFETCH(QString, path);
    const ScopedVolumeFolders folders({u"/vol"_s});
    QTEST(volumeNameOf(path), "name");
}

void VolumesTest::callsTheSystemDiskByItsName()
{
    QCOMPARE(systemDiskName(), u"System disk"_s);
}

QTEST_GUILESS_MAIN(VolumesTest)
#include "volumes_test.moc"
