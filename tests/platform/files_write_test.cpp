#include "platform/files_write.h"

#include "platform/fault_gate.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

class FilesWriteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesOverAFile_data();
    void writesOverAFile();
    void writesOnlyRegularFilesPlainly_data();
    void writesOnlyRegularFilesPlainly();
    void writesThroughALink();
    void joinsItsPartsPlainly();
    void makesANewFolderOnlyWhereNothingStands();
    void makesFoldersThatAreMissing_data();
    void makesFoldersThatAreMissing();
    void leavesAFolderThatExistsAsItIs();
    void makesNoFolderBelowAFile();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void FilesWriteTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    ::umask(022);
}

void FilesWriteTest::writesOverAFile_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<std::optional<mode_t>>("mode");
    QTest::addColumn<int>("modeAfter");
    const std::optional<mode_t> none;
    QTest::newRow("a new one") << QByteArray() << none << 0644;
    QTest::newRow("a new secret one") << QByteArray() << std::optional<mode_t>(0600) << 0600;
    QTest::newRow("a longer one") << QByteArray(100, 'x') << none << 0640;
    QTest::newRow("one that turns secret")
        << QByteArray("x") << std::optional<mode_t>(0600) << 0600;
}

void FilesWriteTest::writesOverAFile()
{
    QFETCH(QByteArray, before);
    QFETCH(std::optional<mode_t>, mode);
    const QString file = path(u"store.json"_s);
    if (!before.isNull()) {
        put(file, before);
        ::chmod(QFile::encodeName(file).constData(), 0640);
    }
    QVERIFY(writeFilePlainly(file, "[]\n", mode));
    QCOMPARE(contentOf(file), QByteArray("[]\n"));
    QTEST(modeOf(file), "modeAfter");
    QCOMPARE(namesIn(m_folder->path()), QStringList{u"store.json"_s});
}

void FilesWriteTest::writesOnlyRegularFilesPlainly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a folder") << u"folder"_s << u"Is a directory"_s;
    QTest::newRow("a pipe that nobody reads") << u"pipe"_s << u"No such device or address"_s;
    QTest::newRow("a device") << u"link to a device"_s << u"Invalid argument"_s;
    QTest::newRow("no folder") << u"none/store.json"_s << u"No such file or directory"_s;
}

void FilesWriteTest::writesOnlyRegularFilesPlainly()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QDir(m_folder->path()).mkdir(u"folder"_s);
    ::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600);
    QFile::link(u"/dev/null"_s, path(u"link to a device"_s));
    const Done done = writeFilePlainly(path(name), "[]\n");
    QVERIFY(!done);
    QCOMPARE(done.error().message,
             u"The file “%1” couldn't be written: %2."_s.arg(QFileInfo(name).fileName(), reason));
}

void FilesWriteTest::writesThroughALink()
{
    put(path(u"real"_s), "old");
    QFile::link(u"real"_s, path(u"link"_s));
    QVERIFY(writeFilePlainly(path(u"link"_s), "new"));
    QVERIFY(QFileInfo(path(u"link"_s)).isSymLink());
    QCOMPARE(contentOf(path(u"real"_s)), QByteArray("new"));
}

void FilesWriteTest::joinsItsPartsPlainly()
{
    put(path(u"store.json"_s), QByteArray(100, 'x'));
    const QByteArrayView parts[] = {"{", "", "\n  \"a\": 1", "\n}\n"};
    QVERIFY(writeFilePlainly(path(u"store.json"_s), parts));
    QCOMPARE(contentOf(path(u"store.json"_s)), QByteArray("{\n  \"a\": 1\n}\n"));
}

void FilesWriteTest::makesANewFolderOnlyWhereNothingStands()
{
    QCOMPARE(makeNewFolder(path(u"a"_s)).value(), true);
    QCOMPARE(makeNewFolder(path(u"a"_s)).value(), false);
    QFile::link(u"nowhere"_s, path(u"link"_s));
    QCOMPARE(makeNewFolder(path(u"link"_s)).value(), false);
    QVERIFY(!makeNewFolder(path(u"none/a"_s)).has_value());
}

void FilesWriteTest::makesFoldersThatAreMissing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("one") << u"a"_s;
    QTest::newRow("several") << u"a/b/c"_s;
    QTest::newRow("with slashes behind") << u"a/b//"_s;
    QTest::newRow("with slashes between") << u"a//b"_s;
}

void FilesWriteTest::makesFoldersThatAreMissing()
{
    QFETCH(QString, name);
    QVERIFY(makeFolders(path(name), 0700));
    QVERIFY(QFileInfo(path(name)).isDir());
    QCOMPARE(modeOf(path(u"a"_s)), 0700);
    QVERIFY(makeFolders(path(name), 0700));
}

void FilesWriteTest::leavesAFolderThatExistsAsItIs()
{
    QVERIFY(makeFolders(path(u"a"_s)));
    QCOMPARE(modeOf(path(u"a"_s)), 0755);
    QFile::link(u"a"_s, path(u"link"_s));
    QVERIFY(makeFolders(path(u"a"_s), 0700));
    QVERIFY(makeFolders(path(u"link"_s), 0700));
    QCOMPARE(modeOf(path(u"a"_s)), 0755);
}

void FilesWriteTest::makesNoFolderBelowAFile()
{
    put(path(u"file"_s), "kept");
    QVERIFY(!makeFolders(path(u"file/a"_s)));
    QVERIFY(!makeFolders(path(u"file"_s)));
    QVERIFY(!makeFolders(QString()));
    QCOMPARE(contentOf(path(u"file"_s)), QByteArray("kept"));
}

QTEST_GUILESS_MAIN(FilesWriteTest)
#include "files_write_test.moc"
