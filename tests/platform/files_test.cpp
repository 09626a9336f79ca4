#include "platform/files.h"

#include "platform/fault_gate.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <unistd.h>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::optional<FileFacts::Kind>)

class FilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tellsWhatStandsAtAPath_data();
    void tellsWhatStandsAtAPath();
    void tellsAbsenceFromNotKnowing();
    void tellsWhatLiesWithinAFolder_data();
    void tellsWhatLiesWithinAFolder();
    void followsTheLinksOnTheWay();
    void readsAWholeFile_data();
    void readsAWholeFile();
    void readsAFileThatIsLongerThanItsSizeSays();
    void explainsWhyAFileCannotBeRead_data();
    void explainsWhyAFileCannotBeRead();
    void readsNoFileThatMemoryCannotHold();
    void listsAFolderInNameOrder();
    void explainsWhyAFolderCannotBeListed_data();
    void explainsWhyAFolderCannotBeListed();

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

void FilesTest::initTestCase()
{
    put(path(u"file"_s), "12345");
    QDir(m_folder.path()).mkdir(u"folder"_s);
    ::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600);
    QFile::link(u"file"_s, path(u"link to file"_s));
    QFile::link(u"folder"_s, path(u"link to folder"_s));
    QFile::link(u"nowhere"_s, path(u"dangling link"_s));
}

void FilesTest::tellsWhatStandsAtAPath_data()
{
    using Kind = FileFacts::Kind;
    QTest::addColumn<QString>("name");
    QTest::addColumn<std::optional<Kind>>("kind");
    QTest::addColumn<bool>("present");
    const auto row = [](const QString &name, std::optional<Kind> kind, bool present) {
        QTest::newRow(qPrintable(name)) << name << kind << present;
    };
    row(u"file"_s, Kind::Regular, true);
    row(u"folder"_s, Kind::Folder, true);
    row(u"folder/"_s, Kind::Folder, true);
    row(u"pipe"_s, Kind::Other, true);
    row(u"link to file"_s, Kind::Regular, true);
    row(u"link to folder"_s, Kind::Folder, true);
    row(u"dangling link"_s, std::nullopt, true);
    row(u"none"_s, std::nullopt, false);
    row(u"file/"_s, std::nullopt, false);
    row(u"file/below"_s, std::nullopt, false);
    row(u"FILE"_s, std::nullopt, false);
    row(u"file"_s + QChar(0), std::nullopt, false);
}

void FilesTest::tellsWhatStandsAtAPath()
{
    using Kind = FileFacts::Kind;
    QFETCH(QString, name);
    QFETCH(std::optional<Kind>, kind);
    QFETCH(bool, present);
    const auto facts = factsOf(path(name));
    QCOMPARE(facts ? std::optional(facts->kind) : std::nullopt, kind);
    if (kind == Kind::Regular)
        QCOMPARE(facts->size, quint64(5));
    QCOMPARE(exists(path(name)), kind.has_value());
    QCOMPARE(isRegularFile(path(name)), kind == Kind::Regular);
    QCOMPARE(isFolder(path(name)), kind == Kind::Folder);
    QCOMPARE(isPresent(path(name)).value_or(!present), present);
}

void FilesTest::tellsAbsenceFromNotKnowing()
{
    QVERIFY(!isPresent(path(QString(256, u'x'))).has_value());
    const ScopedFaults faults([](FileOperation, const QString &) { return EIO; });
    QVERIFY(!exists(path(u"file"_s)));
    QCOMPARE(isPresent(path(u"file"_s)).error().message,
             u"The file “file” couldn't be found: Input/output error."_s);
}

void FilesTest::tellsWhatLiesWithinAFolder_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("within");
    const auto row = [](const char *name, const QString &item, const QString &folder, bool within) {
        QTest::newRow(name) << item << folder << within;
    };
    row("a file in it", u"folder/file"_s, u"folder"_s, true);
    row("at any depth", u"folder/below/further"_s, u"folder"_s, true);
    row("the folder itself", u"folder"_s, u"folder"_s, true);
    row("with a slash behind", u"folder/below"_s, u"folder/"_s, true);
    row("by way of a link to the folder", u"folder/below"_s, u"link to folder"_s, true);
    row("by way of a link to the item", u"link to below"_s, u"folder"_s, true);
    row("by way of points", u"folder/../folder/file"_s, u"./folder"_s, true);
    row("its parent", u"folder"_s, u"folder/below"_s, false);
    row("its neighbour", u"folder 2"_s, u"folder"_s, false);
    row("a link in it that leads out", u"folder/link out"_s, u"folder"_s, false);
    row("no such item", u"folder/none"_s, u"folder"_s, false);
    row("no such folder", u"folder/file"_s, u"none"_s, false);
}

void FilesTest::tellsWhatLiesWithinAFolder()
{
    QFETCH(QString, item);
    QFETCH(QString, folder);
    const QTemporaryDir nest;
    const auto inNest = [&](const QString &name) { return nest.filePath(name); };
    put(inNest(u"folder/file"_s), {});
    put(inNest(u"folder/below/further"_s), {});
    put(inNest(u"folder 2/file"_s), {});
    QFile::link(u"folder"_s, inNest(u"link to folder"_s));
    QFile::link(u"folder/below"_s, inNest(u"link to below"_s));
    QFile::link(u"../folder 2"_s, inNest(u"folder/link out"_s));
    QTEST(liesWithin(inNest(item), inNest(folder)), "within");
    QVERIFY(liesWithin(inNest(u"folder"_s), u"/"_s));
}

void FilesTest::followsTheLinksOnTheWay()
{
    const QTemporaryDir folder;
    const QString real = QFileInfo(folder.path()).canonicalFilePath();
    put(real + u"/real/song.mp3"_s, "music");
    QVERIFY(QFile::link(real + u"/real"_s, real + u"/linked"_s));
    QCOMPARE(canonicalPath(real + u"/linked/song.mp3"_s), real + u"/real/song.mp3"_s);
    QCOMPARE(canonicalPath(real + u"/real/../real/song.mp3"_s), real + u"/real/song.mp3"_s);
    QVERIFY(!canonicalPath(real + u"/linked/none.mp3"_s));
    QVERIFY(!canonicalPath(real + QChar(QChar::Null)));
}

void FilesTest::readsAWholeFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("small") << QByteArray("a\0b", 3);
    QTest::newRow("large") << QByteArray(3'000'000, 'x');
}

void FilesTest::readsAWholeFile()
{
    QFETCH(QByteArray, content);
    put(path(u"content"_s), content);
    const auto read = readFile(path(u"content"_s));
    QVERIFY(read.has_value());
    QCOMPARE(*read, content);
    QVERIFY(read->capacity() <= content.size() + 64);
}

void FilesTest::readsAFileThatIsLongerThanItsSizeSays()
{
    // What the kernel makes up while it is read has no size.
    const auto status = readFile(u"/proc/self/maps"_s);
    QVERIFY(status.has_value());
    QVERIFY(status->size() > 4096);
}

void FilesTest::explainsWhyAFileCannotBeRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing there")
        << u"none"_s << u"The file “none” couldn't be opened: No such file or directory."_s;
    QTest::newRow("a folder") << u"folder"_s
                              << u"The file “folder” couldn't be opened: Is a directory."_s;
    QTest::newRow("a pipe") << u"pipe"_s
                            << u"The file “pipe” couldn't be opened: Invalid argument."_s;
}

void FilesTest::explainsWhyAFileCannotBeRead()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    const auto read = readFile(path(name));
    QVERIFY(!read.has_value());
    QCOMPARE(read.error().message, message);
}

void FilesTest::readsNoFileThatMemoryCannotHold()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer ends the process at once");
#endif
    // All hole and no content: it takes no room on the disk.
    put(path(u"sparse"_s), "x");
    if (::truncate(QFile::encodeName(path(u"sparse"_s)).constData(), off_t(1) << 43) != 0)
        QSKIP("this file system has no files of that size");
    const auto read = readFile(path(u"sparse"_s));
    QFile::remove(path(u"sparse"_s));
    QVERIFY(!read.has_value());
    QCOMPARE(read.error().message,
             u"The file “sparse” couldn't be read: Cannot allocate memory."_s);
}

void FilesTest::listsAFolderInNameOrder()
{
    for (const char *name :
         {"list/b", "list/.hidden", "list/B", "list/é", "list/a/inside", "list/\uFEFFmark"})
        put(path(QString::fromUtf8(name)), "");
    QCOMPARE(listFolder(path(u"list"_s)).value(),
             (QStringList{u".hidden"_s, u"B"_s, u"a"_s, u"b"_s, u"é"_s, u"\uFEFFmark"_s}));
    QCOMPARE(listFolder(path(u"folder"_s)).value(), QStringList());
}

void FilesTest::explainsWhyAFolderCannotBeListed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing there")
        << u"none"_s << u"The file “none” couldn't be listed: No such file or directory."_s;
    QTest::newRow("a file") << u"file"_s
                            << u"The file “file” couldn't be listed: Not a directory."_s;
    QTest::newRow("NUL in the path")
        << u"folder"_s + QChar(0)
        << u"The file “folder"_s + QChar(0) + u"” couldn't be listed: No such file or directory."_s;
}

void FilesTest::explainsWhyAFolderCannotBeListed()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    const auto listed = listFolder(path(name));
    QVERIFY(!listed.has_value());
    QCOMPARE(listed.error().message, message);
}

QTEST_GUILESS_MAIN(FilesTest)
#include "files_test.moc"
