#include "platform/shared_file.h"

#include "platform/fault_gate.h"
#include "support/test_files.h"
#include "support/tiny_disk.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <thread>

using namespace tarnwick;
using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class SharedFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void readsWhatWasWritten();
    void givesANewFileItsPermissionBits();
    void tellsWhatAnotherHasWritten();
    void tellsNothingOfItsOwnWrite();
    void takesAnEmptyFileForNone();
    void showsNobodyHalfAWrite();
    void losesNoneOfTwoThatCountOn();
    void refusesWhatIsNoRegularFile_data();
    void refusesWhatIsNoRegularFile();
    void leavesTheFileWhereTheDiskHasNoRoom();
    void tellsWhatKeepsItFromWriting();
    void takesInWhatCouldNotBeReadAtFirst();

private:
    QString file() const { return m_folder->filePath(u"store.json"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void SharedFileTest::readsWhatWasWritten()
{
    FileState written;
    QVERIFY(SharedFileWrite(file()).write(QByteArray(100'000, 'a'), written));
    QVERIFY(SharedFileWrite(file()).write("short", written));
    FileState state;
    QCOMPARE(readSharedFile(file(), state).value_or("none"), QByteArray("short"));
    QVERIFY(state == written);
    QVERIFY(!(state == FileState()));
    QVERIFY(!readSharedFile(m_folder->filePath(u"none"_s), state));
}

void SharedFileTest::givesANewFileItsPermissionBits()
{
    FileState state;
    QVERIFY(SharedFileWrite(file(), 0600).write("x", state));
    QCOMPARE(modeOf(file()), 0600);
    QVERIFY(SharedFileWrite(file()).write("y", state));
    QCOMPARE(modeOf(file()), 0600);
    QVERIFY(SharedFileWrite(file(), 0640).write("z", state));
    QCOMPARE(modeOf(file()), 0640);
}

void SharedFileTest::tellsWhatAnotherHasWritten()
{
    FileState known;
    QVERIFY(SharedFileWrite(file()).write("mine", known));
    FileState others;
    QVERIFY(SharedFileWrite(file()).write("theirs", others));
    SharedFileWrite write(file());
    QCOMPARE(write.contentUnlike(known), std::optional(QByteArray("theirs")));
    QVERIFY(write.write("both", known));
    QCOMPARE(contentOf(file()), QByteArray("both"));
}

void SharedFileTest::tellsNothingOfItsOwnWrite()
{
    FileState known;
    QVERIFY(SharedFileWrite(file()).write("mine", known));
    QVERIFY(!SharedFileWrite(file()).contentUnlike(known));
    QVERIFY(readSharedFile(file(), known));
    QVERIFY(!SharedFileWrite(file()).contentUnlike(known));
}

void SharedFileTest::takesAnEmptyFileForNone()
{
    QVERIFY(!SharedFileWrite(file()).contentUnlike({}));
    QCOMPARE(contentOf(file()), QByteArray());
    QVERIFY(!SharedFileWrite(file()).contentUnlike({}));
}

void SharedFileTest::showsNobodyHalfAWrite()
{
    FileState state;
    QVERIFY(SharedFileWrite(file()).write(QByteArray(300'000, 'a'), state));
    std::thread writer([this] {
        FileState own;
        for (int i = 0; i < 200; ++i)
            (void)SharedFileWrite(file()).write(QByteArray(300'000, char('a' + i % 26)), own);
    });
    int halves = 0;
    for (int i = 0; i < 200; ++i) {
        const QByteArray seen = readSharedFile(file(), state).value_or(QByteArray());
        halves += seen.size() != 300'000 || seen.count(seen.at(0)) != seen.size();
    }
    writer.join();
    QCOMPARE(halves, 0);
}

void SharedFileTest::losesNoneOfTwoThatCountOn()
{
    const auto countOn = [this] {
        FileState known;
        for (int i = 0; i < 100; ++i) {
            SharedFileWrite write(file());
            const int number = write.contentUnlike({}).value_or("0").toInt();
            (void)write.write(QByteArray::number(number + 1), known);
        }
    };
    std::thread other(countOn);
    countOn();
    other.join();
    QCOMPARE(contentOf(file()), QByteArray("200"));
}

void SharedFileTest::refusesWhatIsNoRegularFile_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"folder", "pipe"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void SharedFileTest::refusesWhatIsNoRegularFile()
{
    QFETCH(QString, kind);
    if (kind == u"folder"_s)
        QDir().mkpath(file());
    else
        ::mkfifo(QFile::encodeName(file()).constData(), 0600);
    FileState state;
    QVERIFY(!readSharedFile(file(), state));
    QVERIFY(!SharedFileWrite(file()).contentUnlike({}));
    QVERIFY(!SharedFileWrite(file()).write("x", state));
    QVERIFY(state == FileState());
}

void SharedFileTest::leavesTheFileWhereTheDiskHasNoRoom()
{
    const TinyDisk disk(m_folder->path());
    if (!disk.isMounted())
        QSKIP("may not mount a file system here");
    const QByteArray kept(20'000, 'k');
    FileState state;
    QVERIFY(SharedFileWrite(file()).write(kept, state));
    put(m_folder->filePath(u"filler"_s), QByteArray(40'000, 'f'));
    const FileState before = state;
    const Done done = SharedFileWrite(file()).write(QByteArray(60'000, 'n'), state);
    QVERIFY(!done);
    QCOMPARE(done.error().message,
             u"The file “store.json” couldn't be written: No space left on device."_s);
    QCOMPARE(contentOf(file()), kept);
    QVERIFY(state == before);
    // What is there already makes room for what comes.
    QVERIFY(SharedFileWrite(file()).write(QByteArray(20'000, 'n'), state));
}

void SharedFileTest::tellsWhatKeepsItFromWriting()
{
    put(file(), "kept");
    FileState state;
    const ScopedFaults faults([](FileOperation operation, const QString &) {
        return operation == FileOperation::Open ? EACCES : 0;
    });
    const Done done = SharedFileWrite(file()).write("x", state);
    QVERIFY(!done);
    QCOMPARE(done.error().message,
             u"The file “store.json” couldn't be written: Permission denied."_s);
    QCOMPARE(contentOf(file()), QByteArray("kept"));
}

void SharedFileTest::takesInWhatCouldNotBeReadAtFirst()
{
    put(file(), "others");
    for (int failing = 0;; ++failing) {
        int calls = 0;
        FileState state;
        bool isRead = false;
        {
            const ScopedFaults faults(
                [&](FileOperation, const QString &) { return calls++ == failing ? EIO : 0; });
            isRead = readSharedFile(file(), state).has_value();
        }
        QCOMPARE(isRead, calls <= failing);
        QCOMPARE(SharedFileWrite(file()).contentUnlike(state).value_or("known"),
                 isRead ? QByteArray("known") : QByteArray("others"));
        if (!isRead)
            continue;
        QVERIFY(failing >= 5);
        return;
    }
}

QTEST_GUILESS_MAIN(SharedFileTest)
#include "shared_file_test.moc"
