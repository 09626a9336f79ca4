#include "platform/file_search.h"

#include "platform/volumes.h"
#include "support/scoped_environment.h"
#include "support/test_folder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class FileSearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsNamesThatContainTheText_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("the whole name") << u"Song.mp3"_s << u"Song.mp3"_s << true;
        QTest::newRow("the stem") << u"Song.mp3"_s << u"Song"_s << true;
        QTest::newRow("within the name") << u"01 Song (1).mp3"_s << u"song"_s << true;
        QTest::newRow("in other letter case") << u"SONG.MP3"_s << u"song.mp3"_s << true;
        QTest::newRow("letters beyond ASCII") << u"ÉTÉ.mp3"_s << u"été"_s << true;
        QTest::newRow("another name") << u"Other.mp3"_s << u"Song"_s << false;
        QTest::newRow("another extension") << u"Song.txt"_s << u"Song"_s << false;
        QTest::newRow("no extension") << u"Song"_s << u"Song"_s << false;
        QTest::newRow("the extension alone") << u".mp3"_s << u"mp3"_s << false;
        QTest::newRow("in a visible folder") << u"Crates/Deep/Song.mp3"_s << u"Song"_s << true;
        QTest::newRow("in a hidden folder") << u".Trash/Song.mp3"_s << u"Song"_s << false;
    }
    void findsNamesThatContainTheText()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        QFETCH(bool, found);
        const TestFolder folder;
        const QString path = folder.write(name);
        const auto answers = platform::findFiles(searchOf(folder), {text});
        QCOMPARE(answers, QList<QStringList>{found ? QStringList{path} : QStringList()});
    }

    void answersEveryTextInPathOrder()
    {
        const TestFolder folder;
        const QString b = folder.write(u"b/Song (2).mp3"_s);
        const QString a = folder.write(u"a/Song.mp3"_s);
        const QString c = folder.write(u"Song.mp3"_s);
        const QList<QStringList> expected = {{c, a}, {c, a, b}};
        QCOMPARE(platform::findFiles(searchOf(folder), {u"Song.mp3"_s, u"Song"_s}), expected);
    }

    void listsAFileOnceWhereRootsOverlap()
    {
        const TestFolder folder;
        const QString path = folder.write(u"inner/Song.mp3"_s);
        platform::FileSearch search = searchOf(folder);
        search.roots.append(folder.path(u"inner"_s));
        QCOMPARE(platform::findFiles(search, {u"Song"_s}), QList<QStringList>{{path}});
    }

    void doesNotEnterLinksToFolders()
    {
        const TestFolder folder;
        const QString path = folder.write(u"real/Song.mp3"_s);
        QVERIFY(QFile::link(folder.path(u"real"_s), folder.path(u"linked"_s)));
        QVERIFY(QFile::link(folder.path(), folder.path(u"real/loop"_s)));
        QCOMPARE(platform::findFiles(searchOf(folder), {u"Song"_s}), QList<QStringList>{{path}});
    }

    void leavesOutFolders()
    {
        const TestFolder folder;
        folder.write(u"data/Song.mp3"_s);
        platform::FileSearch search = searchOf(folder);
        search.leftOut.append(folder.path(u"data"_s));
        QCOMPARE(platform::findFiles(search, {u"Song"_s}), QList<QStringList>{QStringList()});
    }

    void passesOverAFolderOfAnAudioName()
    {
        const TestFolder folder;
        folder.makeFolder(u"Song.mp3"_s);
        const auto answers = platform::findFiles(searchOf(folder), {u"Song"_s});
        QCOMPARE(answers, QList<QStringList>{QStringList()});
    }

    void passesOverRootsThatAreNotThere()
    {
        platform::FileSearch search;
        search.roots.append(u"/nowhere/at/all"_s);
        search.extensions.append(u"mp3"_s);
        QCOMPARE(platform::findFiles(search, {u"Song"_s}), QList<QStringList>{QStringList()});
    }

    void doesNotEnterFileSystemsOfTheKernel()
    {
#ifdef Q_OS_LINUX
        // Every process has such a file there.
        platform::FileSearch search;
        search.roots.append(u"/"_s);
        search.leftOut = {u"/usr"_s, u"/home"_s, u"/tmp"_s, u"/var"_s};
        search.extensions.append(u"conf"_s);
        const QList<QStringList> answers = platform::findFiles(search, {u"conf"_s});
        for (const QString &path : answers.first())
            QVERIFY2(!path.startsWith(u"/proc/"_s) && !path.startsWith(u"/sys/"_s),
                     qPrintable(path));
#endif
    }

    void searchesTheHomeFolderAndTheVolumesButNotItsOwnData()
    {
        const TestFolder folder;
        folder.makeFolder(u"volumes/Stick"_s);
        const platform::ScopedVolumeFolders volumes({folder.path(u"volumes"_s)});
        const ScopedVariable home("HOME", folder.path(u"home"_s).toUtf8());
        const ScopedVariable data("XDG_DATA_HOME", folder.path(u"home/data"_s).toUtf8());
        const platform::FileSearch search = platform::searchOfThisMachine();
        const QStringList roots = {folder.path(u"home"_s), folder.path(u"volumes/Stick"_s)};
        QCOMPARE(search.roots, roots);
        QCOMPARE(search.leftOut, QStringList{folder.path(u"home/data/Tarnwick"_s)});
    }

private:
    static platform::FileSearch searchOf(const TestFolder &folder)
    {
        platform::FileSearch search;
        search.roots.append(folder.path());
        search.extensions.append(u"mp3"_s);
        return search;
    }
};

QTEST_GUILESS_MAIN(FileSearchTest)
#include "file_search_test.moc"
