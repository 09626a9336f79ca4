#include "serato/serato_library.h"

#include "platform/fault_gate.h"
#include "platform/mounts.h"
#include "platform/running_programs.h"
#include "platform/volumes.h"
#include "support/mount_list.h"
#include "support/test_folder.h"

#include <QProcess>
#include <QScopeGuard>
#include <QSemaphore>
#include <QSet>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

const QString systemDisk = platform::systemDiskName();

} // namespace

class SeratoLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void homeLibraryLiesInTheMusicFolder();
    void locationKnowsItsPaths();
    void locationsAreEqualByAllFields();
    void nothingIsFoundOnABareMachine();
    void volumesThatCannotBeListedLeaveTheHomeLibrary();
    void folderWithoutADatabaseIsListed();
    void whatIsNoLibraryIsLeftOut_data();
    void whatIsNoLibraryIsLeftOut();
    void folderNamedLikeTheDatabaseIsNone();
    void librariesAreOrderedByPath();
    void onePathIsListedOnceAndTheFirstWayWins();
    void linkedVolumesAreLibrariesOfTheirOwn();
    void librariesAcrossTheNetworkAreListedWhereTheyAnswer();
    void asksHomeAcrossTheNetworkInTheBackground();
    void doesNotWaitForADriveThatHasGoneAway();
    void onlySeratoItselfCountsAsRunning_data();
    void onlySeratoItselfCountsAsRunning();
    void seratoThatHasEndedIsNotRunning();

private:
    QStringList foundNames() const;

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<platform::ScopedVolumeFolders> m_volumes;
    platform::ScopedOwnPrograms m_programs;
};

void SeratoLibraryTest::init()
{
    m_volumes.reset();
    m_folder = std::make_unique<TestFolder>();
    qputenv("HOME", m_folder->makeFolder(u"home"_s).toUtf8());
    m_volumes = std::make_unique<platform::ScopedVolumeFolders>(
        QStringList{m_folder->makeFolder(u"volumes"_s), m_folder->path(u"mnt"_s)});
}

QStringList SeratoLibraryTest::foundNames() const
{
    QStringList names;
    for (const SeratoLibrary::Location &location : SeratoLibrary::discover())
        names << location.volumeName;
    return names;
}

void SeratoLibraryTest::homeLibraryLiesInTheMusicFolder()
{
    QCOMPARE(SeratoLibrary::homeLibrary(), m_folder->path(u"home/Music/_Serato_"_s));
}

void SeratoLibraryTest::locationKnowsItsPaths()
{
    const SeratoLibrary::Location location{u"USB"_s, QUrl::fromLocalFile(u"/v/50% #1?/_Serato_"_s)};
    QCOMPARE(location.id(), u"/v/50% #1?/_Serato_"_s);
    QCOMPARE(location.folderPath(), u"/v/50% #1?/_Serato_"_s);
    QCOMPARE(location.databasePath(), u"/v/50% #1?/_Serato_/database V2"_s);
    QCOMPARE(location.subcratesPath(), u"/v/50% #1?/_Serato_/Subcrates"_s);
}

void SeratoLibraryTest::locationsAreEqualByAllFields()
{
    const SeratoLibrary::Location base{u"USB"_s, QUrl::fromLocalFile(u"/v"_s), true, true};
    QList<SeratoLibrary::Location> others(4, base);
    others[0].volumeName = u"Other"_s;
    others[1].folderUrl = QUrl::fromLocalFile(u"/w"_s);
    others[2].isOnline = false;
    others[3].hasDatabase = false;
    for (const SeratoLibrary::Location &other : others)
        QVERIFY(other != base);
    QCOMPARE(QSet<SeratoLibrary::Location>({base, base, others[0], others[3]}).size(), 3);
}

void SeratoLibraryTest::nothingIsFoundOnABareMachine()
{
    QCOMPARE(SeratoLibrary::discover(), QList<SeratoLibrary::Location>());
}

void SeratoLibraryTest::volumesThatCannotBeListedLeaveTheHomeLibrary()
{
    m_folder->write(u"home/Music/_Serato_/database V2"_s);
    m_volumes.reset();
    const platform::ScopedVolumeFolders none({m_folder->path(u"not there"_s)});
    const QList<SeratoLibrary::Location> found = SeratoLibrary::discover();
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.front().volumeName, systemDisk);
    QCOMPARE(found.front().folderPath(), SeratoLibrary::homeLibrary());
    QVERIFY(found.front().isOnline);
    QVERIFY(found.front().hasDatabase);
}

void SeratoLibraryTest::folderWithoutADatabaseIsListed()
{
    m_folder->makeFolder(u"volumes/USB/_Serato_"_s);
    const QList<SeratoLibrary::Location> found = SeratoLibrary::discover();
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.front().volumeName, u"USB"_s);
    QVERIFY(found.front().isOnline);
    QVERIFY(!found.front().hasDatabase);
}

void SeratoLibraryTest::whatIsNoLibraryIsLeftOut_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("plain file of the name") << u"volumes/USB/_Serato_"_s;
    QTest::newRow("volume without the folder") << u"volumes/USB/Music/a.mp3"_s;
    QTest::newRow("other letter case") << u"volumes/USB/_serato_/database V2"_s;
    QTest::newRow("deeper in a volume") << u"volumes/USB/Music/_Serato_/database V2"_s;
    QTest::newRow("plain file among the volumes") << u"volumes/.DS_Store"_s;
}

void SeratoLibraryTest::whatIsNoLibraryIsLeftOut()
{
    QFETCH(const QString, file);
    m_folder->write(file);
    QCOMPARE(foundNames(), QStringList());
}

void SeratoLibraryTest::folderNamedLikeTheDatabaseIsNone()
{
    m_folder->makeFolder(u"volumes/USB/_Serato_/database V2"_s);
    QVERIFY(!SeratoLibrary::discover().front().hasDatabase);
}

void SeratoLibraryTest::librariesAreOrderedByPath()
{
    m_folder->makeFolder(u"volumes/b/_Serato_"_s);
    m_folder->makeFolder(u"volumes/a/_Serato_"_s);
    m_folder->makeFolder(u"volumes/B/_Serato_"_s);
    m_folder->makeFolder(u"volumes/.hidden/_Serato_"_s);
    m_folder->makeFolder(u"mnt/z/_Serato_"_s);
    m_folder->makeFolder(u"home/Music/_Serato_"_s);
    QCOMPARE(foundNames(), QStringList({systemDisk, u"z"_s, u".hidden"_s, u"B"_s, u"a"_s, u"b"_s}));
}

void SeratoLibraryTest::onePathIsListedOnceAndTheFirstWayWins()
{
    m_folder->makeFolder(u"home/Music/_Serato_"_s);
    m_volumes.reset();
    const platform::ScopedVolumeFolders twice(
        {m_folder->path(u"home"_s), m_folder->path(u"volumes/../home/."_s)});
    QCOMPARE(foundNames(), QStringList{systemDisk});
}

void SeratoLibraryTest::linkedVolumesAreLibrariesOfTheirOwn()
{
    m_folder->write(u"volumes/USB/_Serato_/database V2"_s);
    QVERIFY(QFile::link(m_folder->path(u"volumes/USB"_s), m_folder->path(u"volumes/link"_s)));
    QCOMPARE(foundNames(), QStringList({u"USB"_s, u"link"_s}));
}

void SeratoLibraryTest::librariesAcrossTheNetworkAreListedWhereTheyAnswer()
{
    m_folder->makeFolder(u"home/Music/_Serato_"_s);
    m_folder->makeFolder(u"volumes/USB/_Serato_"_s);
    m_folder->write(u"volumes/A share/_Serato_/database V2"_s);
    m_folder->makeFolder(u"volumes/B share"_s);
    const platform::ScopedMounts mounts(
        mountList({{m_folder->path(u"volumes/A share"_s), "nfs4"},
                   {m_folder->path(u"volumes/B share"_s), "fuse.sshfs"}}));
    QCOMPARE(foundNames(), QStringList({systemDisk, u"A share"_s, u"USB"_s}));
    QVERIFY(SeratoLibrary::discover().at(1).hasDatabase);
}

void SeratoLibraryTest::asksHomeAcrossTheNetworkInTheBackground()
{
    const QString share = m_folder->path(u"share"_s);
    m_folder->write(u"share/_Serato_/database V2"_s);
    QVERIFY(QFile::link(share, m_folder->path(u"home/Music"_s)));
    const platform::ScopedMounts mounts(mountList({{share, "cifs"}}));
    bool asked = false;
    bool askedOnThisThread = false;
    const platform::ScopedFaults watch([&](platform::FileOperation, const QString &path) {
        if (path.startsWith(SeratoLibrary::homeLibrary())) {
            asked = true;
            askedOnThisThread |= QThread::currentThread() == thread();
        }
        return 0;
    });
    QCOMPARE(foundNames(), QStringList{systemDisk});
    QVERIFY(asked);
    QVERIFY(!askedOnThisThread);
}

void SeratoLibraryTest::doesNotWaitForADriveThatHasGoneAway()
{
    const QString share = m_folder->path(u"volumes/Z share"_s);
    m_folder->write(u"volumes/Z share/_Serato_/database V2"_s);
    m_folder->makeFolder(u"volumes/USB/_Serato_"_s);
    const platform::ScopedMounts mounts(mountList({{share, "nfs4"}}));
    QSemaphore comesBack;
    const platform::ScopedFaults gone([&](platform::FileOperation, const QString &path) {
        if (path.startsWith(share))
            comesBack.acquire();
        return 0;
    });
    QCOMPARE(foundNames(), QStringList{u"USB"_s});
    comesBack.release(2);
}

void SeratoLibraryTest::onlySeratoItselfCountsAsRunning_data()
{
    QTest::addColumn<bool>("counts");
    QTest::newRow("Serato DJ Pro") << true;
    QTest::newRow("Serato DJ Lite") << true;
    QTest::newRow("Serato DJ") << true;
    QTest::newRow("Serato DJ Pro Helper") << false;
    QTest::newRow("Serato DJ P") << false;
    QTest::newRow("My Serato DJ") << false;
    QTest::newRow("serato dj pro") << false;
}

void SeratoLibraryTest::onlySeratoItselfCountsAsRunning()
{
    QFETCH(const bool, counts);
    QVERIFY(!SeratoLibrary::isSeratoRunning());
    const QString program = m_folder->path(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(QFile::copy(u"/bin/sleep"_s, program));
    QProcess process;
    const auto end = qScopeGuard([&] {
        process.kill();
        process.waitForFinished();
    });
    process.start(program, {u"60"_s});
    QVERIFY(process.waitForStarted());
    QCOMPARE(SeratoLibrary::isSeratoRunning(), counts);
}

void SeratoLibraryTest::seratoThatHasEndedIsNotRunning()
{
    const QString program = m_folder->path(u"Serato DJ"_s);
    QVERIFY(QFile::copy(u"/bin/sleep"_s, program));
    QCOMPARE(QProcess::execute(program, {u"0"_s}), 0);
    QVERIFY(!SeratoLibrary::isSeratoRunning());
}

QTEST_GUILESS_MAIN(SeratoLibraryTest)
#include "serato_library_test.moc"
