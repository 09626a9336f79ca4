#include "platform/file_attributes.h"

#include "platform/fault_gate.h"
#include "platform/open_file.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <fcntl.h>
#include <sys/xattr.h>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class FileAttributesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void takesOverEveryExtendedAttribute();
    void pardonsWhatThisUserMayNotSet_data();
    void pardonsWhatThisUserMayNotSet();
    void tellsOfADiskThatFails();

private:
    int takeOver();

    QTemporaryDir m_folder;
    QByteArray m_from;
    QByteArray m_to;
};

void FileAttributesTest::init()
{
    put(m_folder.filePath(u"from"_s), "x");
    put(m_folder.filePath(u"to"_s), "x");
    m_from = QFile::encodeName(m_folder.filePath(u"from"_s));
    m_to = QFile::encodeName(m_folder.filePath(u"to"_s));
}

int FileAttributesTest::takeOver()
{
    const auto from = OpenFile::open(m_from, O_RDONLY);
    const auto to = OpenFile::open(m_to, O_WRONLY);
    struct stat status;
    ::stat(m_from.constData(), &status);
    return takeOverAttributes(*from, status, *to);
}

void FileAttributesTest::takesOverEveryExtendedAttribute()
{
    const QByteArray large(1000, 'v');
    ::setxattr(m_from.constData(), "user.large", large.constData(), size_t(large.size()), 0);
    ::setxattr(m_from.constData(), "user.empty", "", 0, 0);
    QCOMPARE(takeOver(), 0);
    QByteArray value(2000, '\0');
    QCOMPARE(::getxattr(m_to.constData(), "user.large", value.data(), 2000), ssize_t(1000));
    QCOMPARE(value.first(1000), large);
    QCOMPARE(::getxattr(m_to.constData(), "user.empty", value.data(), 2000), ssize_t(0));
}

void FileAttributesTest::pardonsWhatThisUserMayNotSet_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::newRow("a file system without them") << QByteArray("/proc/version");
}

void FileAttributesTest::pardonsWhatThisUserMayNotSet()
{
    QFETCH(QByteArray, device);
    const auto from = OpenFile::open(m_from, O_RDONLY);
    const auto to = OpenFile::open(device, O_RDONLY);
    if (!to)
        QSKIP("no such file system");
    ::setxattr(m_from.constData(), "user.tags", "red", 3, 0);
    struct stat status;
    ::stat(m_from.constData(), &status);
    QCOMPARE(takeOverAttributes(*from, status, *to), 0);
    QCOMPARE(takeOverTimes(status, *to), 0);
}

void FileAttributesTest::tellsOfADiskThatFails()
{
    const auto from = OpenFile::open(m_from, O_RDONLY);
    const auto to = OpenFile::open(m_to, O_WRONLY);
    struct stat status;
    ::stat(m_from.constData(), &status);
    const ScopedFaults faults([](FileOperation operation, const QString &) {
        return operation == FileOperation::SetAttributes ? EIO : 0;
    });
    QCOMPARE(takeOverAttributes(*from, status, *to), EIO);
    QCOMPARE(takeOverTimes(status, *to), EIO);
}

QTEST_GUILESS_MAIN(FileAttributesTest)
#include "file_attributes_test.moc"
