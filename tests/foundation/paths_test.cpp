#include "foundation/paths.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class PathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesAPathApart_data();
    void takesAPathApart();
    void joinsByOneSlash();
    void standardizesOnTheTextAlone_data();
    void standardizesOnTheTextAlone();
    void dropsOneLeadingSlash();
};

void PathsTest::takesAPathApart_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("extension");
    const auto row = [](const char *path, const char *folder, const char *last, const char *base,
                        const char *extension) {
        QTest::addRow("'%s'", path)
            << QString::fromUtf8(path) << QString::fromUtf8(folder) << QString::fromUtf8(last)
            << QString::fromUtf8(base) << QString::fromUtf8(extension);
    };
    row("/Music/a.mp3", "/Music", "a.mp3", "a", "mp3");
    row("a.mp3", "", "a.mp3", "a", "mp3");
    row("/a.mp3", "/", "a.mp3", "a", "mp3");
    row("/a/b/", "/a", "b", "b", "");
    row("/a//b///", "/a", "b", "b", "");
    row("/a.x/b", "/a.x", "b", "b", "");
    row(".mp3", "", ".mp3", ".mp3", "");
    row("/x/.crate", "/x", ".crate", ".crate", "");
    row("a.", "", "a.", "a.", "");
    row("a.b.c", "", "a.b.c", "a.b", "c");
    row("..mp3", "", "..mp3", ".", "mp3");
    row("a.mp3/", "", "a.mp3", "a", "mp3");
    row("/", "/", "/", "/", "");
    row("///", "/", "/", "/", "");
    row("", "", "", "", "");
    row("a b.AIFF", "", "a b.AIFF", "a b", "AIFF");
    row("/é/ü.mp3", "/é", "ü.mp3", "ü", "mp3");
}

void PathsTest::takesAPathApart()
{
    QFETCH(QString, path);
    QTEST(lastPathComponent(path), "last");
    QTEST(pathExtension(path), "extension");
    QTEST(baseName(path), "base");
    QTEST(parentFolder(path), "folder");
}

void PathsTest::joinsByOneSlash()
{
    QCOMPARE(joinedPath(u"/a"_s, u"b"_s), u"/a/b"_s);
    QCOMPARE(joinedPath(u"/a/"_s, u"b"_s), u"/a/b"_s);
    QCOMPARE(joinedPath(u"/"_s, u"b"_s), u"/b"_s);
}

void PathsTest::standardizesOnTheTextAlone_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("standard");
    const auto row = [](const char *path, const char *standard) {
        QTest::addRow("'%s'", path) << QString::fromLatin1(path) << QString::fromLatin1(standard);
    };
    row("/a/b", "/a/b");
    row("/a//b/", "/a/b");
    row("/a/./b", "/a/b");
    row("/a/../b", "/b");
    row("/../a", "/a");
    row("/..", "/");
    row("/", "/");
    row("a/../..", "..");
    row("../../a", "../../a");
    row("a/b/../c", "a/c");
    row("", "");
    row("/a/...", "/a/...");
}

void PathsTest::standardizesOnTheTextAlone()
{
    QFETCH(QString, path);
    QTEST(standardizedPath(path), "standard");
}

void PathsTest::dropsOneLeadingSlash()
{
    QCOMPARE(withoutLeadingSlash(u"/Users/a.mp3"_s), u"Users/a.mp3"_s);
    QCOMPARE(withoutLeadingSlash(u"//a"_s), u"/a"_s);
    QCOMPARE(withoutLeadingSlash(u"a"_s), u"a"_s);
    QCOMPARE(withoutLeadingSlash(QString()), QString());
}

QTEST_GUILESS_MAIN(PathsTest)
#include "paths_test.moc"
