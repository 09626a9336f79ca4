#include "platform/file_handle.h"

#include "platform/fault_gate.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class FileHandleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsOnFromWhereItEnded();
    void followsALink();
    void refusesWhatIsNoRegularFile_data();
    void refusesWhatIsNoRegularFile();
    void passesFaultsOn();
    void skipsWithoutReading();
    void movesItsFileAlong();

private:
    QTemporaryDir m_folder;
};

void FileHandleTest::readsOnFromWhereItEnded()
{
    put(m_folder.filePath(u"a"_s), "abcdefgh");
    auto file = FileHandle::openForReading(m_folder.filePath(u"a"_s));
    QVERIFY(file.has_value());
    QCOMPARE(file->size(), quint64(8));
    char bytes[6];
    QCOMPARE(file->read(bytes, 6), qsizetype(6));
    QCOMPARE(QByteArray(bytes, 6), QByteArray("abcdef"));
    QCOMPARE(file->read(bytes, 0), qsizetype(0));
    QCOMPARE(file->read(bytes, 6), qsizetype(2));
    QCOMPARE(QByteArray(bytes, 2), QByteArray("gh"));
    QCOMPARE(file->read(bytes, 6), qsizetype(0));
}

void FileHandleTest::followsALink()
{
    put(m_folder.filePath(u"real"_s), "abc");
    QFile::link(u"real"_s, m_folder.filePath(u"link"_s));
    const auto file = FileHandle::openForReading(m_folder.filePath(u"link"_s));
    QVERIFY(file.has_value());
    QCOMPARE(file->size(), quint64(3));
}

void FileHandleTest::refusesWhatIsNoRegularFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing there") << u"none"_s << ENOENT;
    QTest::newRow("a folder") << u"folder"_s << EISDIR;
    QTest::newRow("a pipe without a writer") << u"pipe"_s << EINVAL;
    QTest::newRow("a device") << u"link to a device"_s << EINVAL;
    QTest::newRow("NUL in the path") << u"file"_s + QChar(0) << ENOENT;
    QTest::newRow("a slash behind a file") << u"file/"_s << ENOTDIR;
    QTest::newRow("a name too long") << QString(256, u'x') << ENAMETOOLONG;
}

void FileHandleTest::refusesWhatIsNoRegularFile()
{
    QFETCH(QString, name);
    QFETCH(int, error);
    put(m_folder.filePath(u"file"_s), "abc");
    QDir(m_folder.path()).mkdir(u"folder"_s);
    ::mkfifo(QFile::encodeName(m_folder.filePath(u"pipe"_s)).constData(), 0600);
    QFile::link(u"/dev/null"_s, m_folder.filePath(u"link to a device"_s));
    const auto file = FileHandle::openForReading(m_folder.filePath(name));
    QVERIFY(!file.has_value());
    QCOMPARE(file.error(), error);
}

void FileHandleTest::passesFaultsOn()
{
    put(m_folder.filePath(u"a"_s), "abc");
    auto file = FileHandle::openForReading(m_folder.filePath(u"a"_s));
    const ScopedFaults faults([](FileOperation, const QString &) { return EIO; });
    char byte = 0;
    QCOMPARE(file->read(&byte, 1).error(), EIO);
    QCOMPARE(FileHandle::openForReading(m_folder.filePath(u"a"_s)).error(), EIO);
}

void FileHandleTest::skipsWithoutReading()
{
    put(m_folder.filePath(u"a"_s), "abcdef");
    auto file = FileHandle::openForReading(m_folder.filePath(u"a"_s));
    char byte = 0;
    QCOMPARE(file->read(&byte, 1), qsizetype(1));
    QVERIFY(file->skip(3));
    QCOMPARE(file->read(&byte, 1), qsizetype(1));
    QCOMPARE(byte, 'e');
    QVERIFY(file->skip(quint64(5) << 30));
    QCOMPARE(file->read(&byte, 1), qsizetype(0));
    const ScopedFaults faults([](FileOperation, const QString &) { return EIO; });
    QCOMPARE(file->skip(1).error(), EIO);
}

void FileHandleTest::movesItsFileAlong()
{
    put(m_folder.filePath(u"a"_s), "a");
    put(m_folder.filePath(u"bb"_s), "bb");
    auto first = FileHandle::openForReading(m_folder.filePath(u"a"_s));
    auto second = FileHandle::openForReading(m_folder.filePath(u"bb"_s));
    *first = std::move(*second);
    char bytes[2];
    QCOMPARE(first->size(), quint64(2));
    QCOMPARE(first->read(bytes, 2), qsizetype(2));
    QCOMPARE(QByteArray(bytes, 2), QByteArray("bb"));
}

QTEST_GUILESS_MAIN(FileHandleTest)
#include "file_handle_test.moc"
