#include "platform/copy_item.h"

#include "platform/files_write.h"
#include "support/fault_loop.h"
#include "support/test_files.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

namespace {

void makeTree(const QString &root)
{
    put(root + u"/Subcrates/a.crate"_s, "a");
    put(root + u"/Subcrates/.hidden"_s, "h");
    put(root + u"/Subcrates/deep/er/b.crate"_s, QByteArray(300'000, 'b'));
    put(root + u"/Subcrates/none.crate"_s, "");
    QDir().mkpath(root + u"/Subcrates/empty"_s);
    QFile::link(u"a.crate"_s, root + u"/Subcrates/link"_s);
    QFile::link(u"nowhere"_s, root + u"/Subcrates/dangling"_s);
}

} // namespace

class CopyItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void copiesATreeWhole();
    void countsWhatItCopied();
    void copiesTheLinkAndNotItsTarget();
    void keepsModesTimesAndExtendedAttributes();
    void keepsTheModeOfAFolderThatForbidsWriting();
    void keepsNamesThatAreNoText();
    void makesAPipeAnew();
    void takesOverWhenTheKernelCannotCopy_data();
    void takesOverWhenTheKernelCannotCopy();
    void overwritesNothing_data();
    void overwritesNothing();
    void failsWithoutASource();
    void tellsOfEveryFailure();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void CopyItemTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void CopyItemTest::copiesATreeWhole()
{
    makeTree(path(u"from"_s));
    QVERIFY(copyItem(path(u"from"_s), path(u"to"_s)));
    QCOMPARE(treeOf(path(u"to"_s)), treeOf(path(u"from"_s)));
    QCOMPARE(treeOf(path(u"to"_s)).size(), 10);
}

void CopyItemTest::countsWhatItCopied()
{
    put(path(u"from/a"_s), "12345");
    put(path(u"from/deep/er/b"_s), "123");
    put(path(u"from/empty file"_s), "");
    QDir().mkpath(path(u"from/empty folder"_s));
    CopyTally tally;
    QVERIFY(copyItem(path(u"from"_s), path(u"to"_s), &tally));
    QCOMPARE(tally.files, 3);
    QCOMPARE(tally.bytes, quint64(8));
    QVERIFY(copyItem(path(u"from/a"_s), path(u"to/c"_s), &tally));
    QCOMPARE(tally.files, 4);
    QCOMPARE(tally.bytes, quint64(13));
}

void CopyItemTest::copiesTheLinkAndNotItsTarget()
{
    put(path(u"real"_s), "x");
    QFile::link(u"real"_s, path(u"link"_s));
    QVERIFY(copyItem(path(u"link"_s), path(u"copy"_s)));
    QCOMPARE(QFileInfo(path(u"copy"_s)).isSymLink(), true);
    QCOMPARE(contentOf(path(u"copy"_s)), QByteArray("x"));
}

void CopyItemTest::keepsModesTimesAndExtendedAttributes()
{
    put(path(u"from"_s), "x");
    const QByteArray from = QFile::encodeName(path(u"from"_s));
    ::chmod(from.constData(), 0604);
    ::setxattr(from.constData(), "user.tags", "red", 3, 0);
    const timespec times[] = {{1'600'000'000, 1}, {1'500'000'000, 123'456'789}};
    ::utimensat(AT_FDCWD, from.constData(), times, 0);

    QVERIFY(copyItem(path(u"from"_s), path(u"to"_s)));
    const QByteArray to = QFile::encodeName(path(u"to"_s));
    struct stat status;
    ::stat(to.constData(), &status);
    QCOMPARE(modeOf(path(u"to"_s)), 0604);
    QCOMPARE(qint64(status.st_mtim.tv_sec), qint64(1'500'000'000));
    QCOMPARE(qint64(status.st_mtim.tv_nsec), qint64(123'456'789));
    char value[8];
    QCOMPARE(::getxattr(to.constData(), "user.tags", value, sizeof value), 3);
}

void CopyItemTest::keepsTheModeOfAFolderThatForbidsWriting()
{
    put(path(u"from/a"_s), "x");
    ::chmod(QFile::encodeName(path(u"from"_s)).constData(), 0555);
    QVERIFY(copyItem(path(u"from"_s), path(u"to"_s)));
    QCOMPARE(modeOf(path(u"to"_s)), 0555);
    QCOMPARE(contentOf(path(u"to/a"_s)), QByteArray("x"));
    for (const char *name : {"from", "to"})
        ::chmod(QFile::encodeName(path(QString::fromLatin1(name))).constData(), 0755);
}

void CopyItemTest::keepsNamesThatAreNoText()
{
    QDir().mkpath(path(u"from"_s));
    const QByteArray name = QFile::encodeName(path(u"from/"_s)) + "caf\xE9.crate";
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT, 0600);
    if (file < 0)
        QSKIP("this file system takes no such names");
    ::close(file);
    QVERIFY(copyItem(path(u"from"_s), path(u"to"_s)));
    const QByteArray copied = QFile::encodeName(path(u"to/"_s)) + "caf\xE9.crate";
    QCOMPARE(::access(copied.constData(), F_OK), 0);
    QVERIFY(removeTree(path(u"from"_s)) && removeTree(path(u"to"_s)));
}

void CopyItemTest::makesAPipeAnew()
{
    QDir().mkpath(path(u"from"_s));
    ::mkfifo(QFile::encodeName(path(u"from/pipe"_s)).constData(), 0640);
    QVERIFY(copyItem(path(u"from"_s), path(u"to"_s)));
    QCOMPARE(treeOf(path(u"to"_s)).value(u"pipe"_s), QByteArray("(special)"));
    QVERIFY(removeTree(path(u"from"_s)) && removeTree(path(u"to"_s)));
}

void CopyItemTest::takesOverWhenTheKernelCannotCopy_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("between file systems") << EXDEV;
    QTest::newRow("unknown to the file system") << EOPNOTSUPP;
    QTest::newRow("unknown to the kernel") << ENOSYS;
}

void CopyItemTest::takesOverWhenTheKernelCannotCopy()
{
    QFETCH(int, error);
    const QByteArray content(700'001, 'c');
    put(path(u"from"_s), content);
    const ScopedFaults faults([error](FileOperation operation, const QString &) {
        return operation == FileOperation::Copy ? error : 0;
    });
    QVERIFY(copyItem(path(u"from"_s), path(u"to"_s)));
    QCOMPARE(contentOf(path(u"to"_s)), content);
}

void CopyItemTest::overwritesNothing_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("destination");
    for (const char *source : {"file", "folder", "link"}) {
        for (const char *destination : {"a file", "a folder", "a link"})
            QTest::addRow("%s onto %s", source, destination)
                << QString::fromLatin1(source) << QString::fromLatin1(destination);
    }
}

void CopyItemTest::overwritesNothing()
{
    QFETCH(QString, source);
    QFETCH(QString, destination);
    put(path(u"file"_s), "new");
    put(path(u"folder/inside"_s), "new");
    QFile::link(u"file"_s, path(u"link"_s));
    put(path(u"a file"_s), "old");
    QDir().mkpath(path(u"a folder"_s));
    QFile::link(u"nowhere"_s, path(u"a link"_s));
    const auto before = treeOf(m_folder->path());
    const Done done = copyItem(path(source), path(destination));
    QVERIFY(!done);
    QCOMPARE(done.error().message, u"The file “%1” couldn't be copied: File exists."_s.arg(source));
    QCOMPARE(treeOf(m_folder->path()), before);
}

void CopyItemTest::failsWithoutASource()
{
    QVERIFY(!copyItem(path(u"none"_s), path(u"to"_s)));
    QVERIFY(!copyItem(path(u"none"_s) + QChar(0), path(u"to"_s)));
    QCOMPARE(namesIn(m_folder->path()), QStringList());
}

/// Whatever call fails, success is never claimed for a copy that is not whole.
void CopyItemTest::tellsOfEveryFailure()
{
    bool succeeded = false;
    const Interruption what = {
        u"copy"_s, [](const QString &folder) { makeTree(folder + u"/from"_s); },
        [&](const QString &folder) {
            succeeded = copyItem(folder + u"/from"_s, folder + u"/to"_s).has_value();
        },
        [&](const QString &folder) {
            const bool whole = treeOf(folder + u"/to"_s) == treeOf(folder + u"/from"_s);
            return succeeded && !whole ? u"success is claimed for half a copy"_s : QString();
        }};
    const FaultReport report = failAtEachCall(what, EIO);
    QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
    QVERIFY(report.calls > 30);
}

QTEST_GUILESS_MAIN(CopyItemTest)
#include "copy_item_test.moc"
