#include "platform/files_write.h"
#include "support/fault_loop.h"
#include "support/test_files.h"

#include <atomic>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

namespace {

const QByteArray oldBytes(100'000, 'o');
const QByteArray newBytes(150'000, 'n');

QString targetIn(const QString &folder)
{
    return folder + u"/database V2"_s;
}

QString temporaryIn(const QString &folder)
{
    return folder + u"/.database V2.twtmp"_s;
}

/// Old or new as a whole, and nothing beside it but a temporary.
QString troubleWith(const QString &folder)
{
    const QByteArray content = contentOf(targetIn(folder));
    if (content != oldBytes && content != newBytes)
        return u"the target holds %1 bytes"_s.arg(content.size());
    QStringList names = namesIn(folder);
    names.removeAll(u".database V2.twtmp"_s);
    return names == QStringList{u"database V2"_s} ? QString() : names.join(u'|');
}

QList<Interruption> cases()
{
    return {{u"replace"_s, [](const QString &folder) { put(targetIn(folder), oldBytes); },
             [](const QString &folder) { (void)replaceFile(targetIn(folder), newBytes); },
             troubleWith},
            {u"replace over a stale temporary"_s,
             [](const QString &folder) {
                 put(targetIn(folder), oldBytes);
                 put(temporaryIn(folder), "stale");
             },
             [](const QString &folder) { (void)replaceFile(targetIn(folder), newBytes); },
             troubleWith}};
}

} // namespace

class AtomicReplaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void replacesAFileAndLeavesNothingBeside();
    void makesAFileThatIsNotThereYet();
    void joinsItsParts_data();
    void joinsItsParts();
    void takesOverModeOwnerAndExtendedAttributes();
    void showsTheNewBytesToNobodyElse();
    void leavesALinkALink_data();
    void leavesALinkALink();
    void makesWhatADanglingLinkPointsTo();
    void givesUpOnLinksThatLeadInACircle();
    void overwritesAStaleTemporary_data();
    void overwritesAStaleTemporary();
    void leavesAFolderOfTheTemporarysNameAlone();
    void failsWhereTheTemporarysNameGrowsTooLong();
    void neverOpensWhatIsNoRegularFile_data();
    void neverOpensWhatIsNoRegularFile();
    void failsWithoutAFolder_data();
    void failsWithoutAFolder();
    void takesAPartialTemporaryAway();
    void leavesACompleteTemporaryWhereTheRenameFails();
    void standsBySuccessWhereTheFolderCannotBeFlushed();
    void leavesTheTemporaryOfAnotherWriterAlone();
    void keepsOneOfTwoThatWriteAtOnce();
    void keepsOldOrNewWhateverCallFails_data();
    void keepsOldOrNewWhateverCallFails();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void AtomicReplaceTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    ::umask(022);
}

void AtomicReplaceTest::replacesAFileAndLeavesNothingBeside()
{
    put(path(u"a.mp3"_s), oldBytes);
    QVERIFY(replaceFile(path(u"a.mp3"_s), newBytes));
    QCOMPARE(contentOf(path(u"a.mp3"_s)), newBytes);
    QCOMPARE(namesIn(m_folder->path()), QStringList{u"a.mp3"_s});
}

void AtomicReplaceTest::makesAFileThatIsNotThereYet()
{
    QVERIFY(replaceFile(path(u"new.crate"_s), QByteArrayView("crate")));
    QCOMPARE(contentOf(path(u"new.crate"_s)), QByteArray("crate"));
    QCOMPARE(modeOf(path(u"new.crate"_s)), 0644);
}

void AtomicReplaceTest::joinsItsParts_data()
{
    QTest::addColumn<QByteArrayList>("parts");
    QByteArrayList many;
    for (int i = 0; i < 5000; ++i)
        many << QByteArray::number(i) << QByteArray();
    QTest::newRow("none") << QByteArrayList();
    QTest::newRow("one that is empty") << QByteArrayList{""};
    QTest::newRow("two") << QByteArrayList{"tag", "audio"};
    QTest::newRow("empty ones at every place") << QByteArrayList{"", "a", "", "", "b", ""};
    QTest::newRow("more than one call can take") << many;
}

void AtomicReplaceTest::joinsItsParts()
{
    QFETCH(QByteArrayList, parts);
    const std::vector<QByteArrayView> views(parts.begin(), parts.end());
    QVERIFY(replaceFile(path(u"a"_s), views));
    QCOMPARE(contentOf(path(u"a"_s)), parts.join());
}

void AtomicReplaceTest::takesOverModeOwnerAndExtendedAttributes()
{
    const QString target = path(u"a.mp3"_s);
    put(target, oldBytes);
    const QByteArray name = QFile::encodeName(target);
    QCOMPARE(::setxattr(name.constData(), "user.tags", "red", 3, 0), 0);
    const bool maySetOwner = ::chown(name.constData(), 1234, 4321) == 0;
    ::chmod(name.constData(), 0640);

    QVERIFY(replaceFile(target, newBytes));
    struct stat status;
    QCOMPARE(::stat(name.constData(), &status), 0);
    QCOMPARE(int(status.st_mode & 07777), 0640);
    if (maySetOwner) {
        QCOMPARE(int(status.st_uid), 1234);
        QCOMPARE(int(status.st_gid), 4321);
    }
    char value[16];
    QCOMPARE(::getxattr(name.constData(), "user.tags", value, sizeof value), 3);
    QCOMPARE(QByteArray(value, 3), QByteArray("red"));
}

/// Until the target's own mode is set, also where that is less strict.
void AtomicReplaceTest::showsTheNewBytesToNobodyElse()
{
    put(targetIn(m_folder->path()), oldBytes);
    int mode = 0;
    const ScopedFaults faults([&](FileOperation operation, const QString &asked) {
        if (operation == FileOperation::Write)
            mode = modeOf(asked);
        return 0;
    });
    QVERIFY(replaceFile(targetIn(m_folder->path()), newBytes));
    QCOMPARE(mode, 0600);
    QCOMPARE(modeOf(targetIn(m_folder->path())), 0644);
}

void AtomicReplaceTest::leavesALinkALink_data()
{
    QTest::addColumn<QString>("link");
    QTest::newRow("absolute") << QString();
    QTest::newRow("relative") << u"real/a.mp3"_s;
    QTest::newRow("of a link") << u"link to real/../real/a.mp3"_s;
}

void AtomicReplaceTest::leavesALinkALink()
{
    QFETCH(QString, link);
    put(path(u"real/a.mp3"_s), oldBytes);
    QFile::link(u"real"_s, path(u"link to real"_s));
    QFile::link(link.isEmpty() ? path(u"real/a.mp3"_s) : link, path(u"a.mp3"_s));
    QVERIFY(replaceFile(path(u"a.mp3"_s), newBytes));
    QVERIFY(QFileInfo(path(u"a.mp3"_s)).isSymLink());
    QCOMPARE(contentOf(path(u"real/a.mp3"_s)), newBytes);
    QCOMPARE(namesIn(path(u"real"_s)), QStringList{u"a.mp3"_s});
}

void AtomicReplaceTest::makesWhatADanglingLinkPointsTo()
{
    QDir(m_folder->path()).mkdir(u"real"_s);
    QFile::link(u"real/a.mp3"_s, path(u"a.mp3"_s));
    QVERIFY(replaceFile(path(u"a.mp3"_s), newBytes));
    QVERIFY(QFileInfo(path(u"a.mp3"_s)).isSymLink());
    QCOMPARE(contentOf(path(u"real/a.mp3"_s)), newBytes);
}

void AtomicReplaceTest::givesUpOnLinksThatLeadInACircle()
{
    QFile::link(u"b"_s, path(u"a"_s));
    QFile::link(u"a"_s, path(u"b"_s));
    const Done done = replaceFile(path(u"a"_s), newBytes);
    QVERIFY(!done);
    QVERIFY(done.error().message.startsWith(u"The file “a” couldn't be written: "_s));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{u"a"_s, u"b"_s}));
}

void AtomicReplaceTest::overwritesAStaleTemporary_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"file", "read-only file", "dangling link", "pipe"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void AtomicReplaceTest::overwritesAStaleTemporary()
{
    QFETCH(QString, kind);
    const QString stale = temporaryIn(m_folder->path());
    put(targetIn(m_folder->path()), oldBytes);
    if (kind == u"pipe"_s)
        ::mkfifo(QFile::encodeName(stale).constData(), 0600);
    else if (kind == u"dangling link"_s)
        QFile::link(u"nowhere"_s, stale);
    else
        put(stale, QByteArray(500'000, 's'));
    if (kind == u"read-only file"_s)
        ::chmod(QFile::encodeName(stale).constData(), 0400);
    QVERIFY(replaceFile(targetIn(m_folder->path()), newBytes));
    QCOMPARE(troubleWith(m_folder->path()), QString());
    QCOMPARE(contentOf(targetIn(m_folder->path())), newBytes);
    QCOMPARE(namesIn(m_folder->path()), QStringList{u"database V2"_s});
}

void AtomicReplaceTest::leavesAFolderOfTheTemporarysNameAlone()
{
    put(path(u"a.mp3"_s), oldBytes);
    put(path(u".a.mp3.twtmp/inside"_s), "kept");
    QVERIFY(!replaceFile(path(u"a.mp3"_s), newBytes));
    QCOMPARE(contentOf(path(u"a.mp3"_s)), oldBytes);
    QCOMPARE(contentOf(path(u".a.mp3.twtmp/inside"_s)), QByteArray("kept"));
}

void AtomicReplaceTest::failsWhereTheTemporarysNameGrowsTooLong()
{
    const QString longest(248, u'a'); // 255 bytes with the point and the suffix
    put(path(longest), oldBytes);
    QVERIFY(replaceFile(path(longest), newBytes));
    put(path(longest + u'a'), oldBytes);
    const Done done = replaceFile(path(longest + u'a'), newBytes);
    QVERIFY(!done);
    QVERIFY(done.error().message.endsWith(u"couldn't be written: File name too long."_s));
    QCOMPARE(contentOf(path(longest + u'a')), oldBytes);
}

void AtomicReplaceTest::neverOpensWhatIsNoRegularFile_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"folder", "pipe", "link to a pipe"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void AtomicReplaceTest::neverOpensWhatIsNoRegularFile()
{
    QFETCH(QString, kind);
    const QString target = path(u"a"_s);
    if (kind == u"folder"_s)
        QDir().mkpath(target);
    else
        ::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600);
    if (kind == u"pipe"_s)
        QFile::rename(path(u"pipe"_s), target);
    else if (kind == u"link to a pipe"_s)
        QFile::link(u"pipe"_s, target);
    const QStringList before = namesIn(m_folder->path());
    QVERIFY(!replaceFile(target, newBytes));
    QCOMPARE(namesIn(m_folder->path()), before);
}

void AtomicReplaceTest::failsWithoutAFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << u"none/a.mp3"_s;
    QTest::newRow("a file for a folder") << u"file/a.mp3"_s;
    QTest::newRow("NUL in the name") << u"a"_s + QChar(0) + u".mp3"_s;
}

void AtomicReplaceTest::failsWithoutAFolder()
{
    QFETCH(QString, name);
    put(path(u"file"_s), "kept");
    QVERIFY(!replaceFile(path(name), newBytes));
    QCOMPARE(namesIn(m_folder->path()), QStringList{u"file"_s});
    QVERIFY(!replaceFile(QString(), newBytes));
}

void AtomicReplaceTest::takesAPartialTemporaryAway()
{
    put(targetIn(m_folder->path()), oldBytes);
    for (const FileOperation failing :
         {FileOperation::Write, FileOperation::Flush, FileOperation::SetAttributes}) {
        const ScopedFaults faults([failing](FileOperation operation, const QString &) {
            return operation == failing ? ENOSPC : 0;
        });
        const Done done = replaceFile(targetIn(m_folder->path()), newBytes);
        QVERIFY(!done);
        QCOMPARE(done.error().message,
                 u"The file “database V2” couldn't be written: No space left on device."_s);
        QCOMPARE(namesIn(m_folder->path()), QStringList{u"database V2"_s});
        QCOMPARE(contentOf(targetIn(m_folder->path())), oldBytes);
    }
}

void AtomicReplaceTest::leavesACompleteTemporaryWhereTheRenameFails()
{
    put(targetIn(m_folder->path()), oldBytes);
    const ScopedFaults faults([](FileOperation operation, const QString &) {
        return operation == FileOperation::Rename ? EACCES : 0;
    });
    QVERIFY(!replaceFile(targetIn(m_folder->path()), newBytes));
    QCOMPARE(contentOf(targetIn(m_folder->path())), oldBytes);
    QCOMPARE(contentOf(temporaryIn(m_folder->path())), newBytes);
}

void AtomicReplaceTest::standsBySuccessWhereTheFolderCannotBeFlushed()
{
    put(targetIn(m_folder->path()), oldBytes);
    const ScopedFaults faults([](FileOperation operation, const QString &asked) {
        return operation == FileOperation::Flush && asked.endsWith(u"/."_s) ? EIO : 0;
    });
    QVERIFY(replaceFile(targetIn(m_folder->path()), newBytes));
    QCOMPARE(contentOf(targetIn(m_folder->path())), newBytes);
}

/// Which another process is still filling.
void AtomicReplaceTest::leavesTheTemporaryOfAnotherWriterAlone()
{
    put(path(u"a"_s), oldBytes);
    put(path(u".a.twtmp"_s), "half");
    const int held = ::open(QFile::encodeName(path(u".a.twtmp"_s)).constData(), O_RDONLY);
    QVERIFY(held >= 0 && ::flock(held, LOCK_EX) == 0);
    std::thread other([held] {
        QTest::qSleep(200);
        ::close(held);
    });
    const bool isWritten = bool(replaceFile(path(u"a"_s), newBytes));
    other.join();
    QVERIFY(isWritten);
    QCOMPARE(contentOf(path(u"a"_s)), newBytes);
    QCOMPARE(namesIn(m_folder->path()), QStringList{u"a"_s});
}

void AtomicReplaceTest::keepsOneOfTwoThatWriteAtOnce()
{
    std::atomic<int> failures = 0;
    std::atomic<int> halves = 0;
    const auto write = [&](char letter) {
        for (int i = 0; i < 30; ++i) {
            failures += replaceFile(path(u"a"_s), QByteArray(50'000, letter)) ? 0 : 1;
            const QByteArray seen = contentOf(path(u"a"_s));
            halves += seen.size() != 50'000 || seen.count(seen.at(0)) != seen.size();
        }
    };
    std::thread one(write, 'o');
    std::thread two(write, 't');
    write('m');
    one.join();
    two.join();
    QCOMPARE(failures.load(), 0);
    QCOMPARE(halves.load(), 0);
    QCOMPARE(namesIn(m_folder->path()), QStringList{u"a"_s});
}

void AtomicReplaceTest::keepsOldOrNewWhateverCallFails_data()
{
    QTest::addColumn<int>("index");
    const QList<Interruption> all = cases();
    for (int i = 0; i < all.size(); ++i)
        QTest::newRow(qPrintable(all.at(i).name)) << i;
}

void AtomicReplaceTest::keepsOldOrNewWhateverCallFails()
{
    QFETCH(int, index);
    const Interruption what = cases().at(index);
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY2(report.calls >= 8, qPrintable(QString::number(report.calls)));
    }
}

TARNWICK_FAULT_LOOP_MAIN(AtomicReplaceTest, cases)
#include "atomic_replace_test.moc"
