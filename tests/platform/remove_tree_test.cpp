#include "platform/remove_tree.h"

#include "platform/files_write.h"
#include "support/fault_loop.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

class RemoveTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void removesFilesButNoFolders();
    void removesOnlyAnEmptyFolder();
    void removesATreeWithoutFollowingLinks();
    void takesNothingToRemoveForRemoved();
    void stopsAtTheFirstFailure();
    void tellsOfEveryFailure();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void RemoveTreeTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void RemoveTreeTest::removesFilesButNoFolders()
{
    put(path(u"file"_s), "");
    put(path(u"target"_s), "kept");
    QFile::link(u"target"_s, path(u"link"_s));
    QDir(m_folder->path()).mkdir(u"folder"_s);
    QVERIFY(removeFile(path(u"file"_s)));
    QVERIFY(removeFile(path(u"link"_s)));
    QVERIFY(!removeFile(path(u"folder"_s)));
    QVERIFY(!removeFile(path(u"none"_s)));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{u"folder"_s, u"target"_s}));
}

void RemoveTreeTest::removesOnlyAnEmptyFolder()
{
    put(path(u"full/inside"_s), "kept");
    QDir(m_folder->path()).mkdir(u"empty"_s);
    QVERIFY(!removeEmptyFolder(path(u"full"_s)));
    QVERIFY(!removeEmptyFolder(path(u"full/inside"_s)));
    QVERIFY(removeEmptyFolder(path(u"empty"_s)));
    QCOMPARE(contentOf(path(u"full/inside"_s)), QByteArray("kept"));
}

void RemoveTreeTest::removesATreeWithoutFollowingLinks()
{
    put(path(u"outside/kept"_s), "kept");
    put(path(u"tree/a/.hidden"_s), "x");
    put(path(u"tree/b"_s), "x");
    QDir(m_folder->path()).mkpath(u"tree/empty"_s);
    QFile::link(path(u"outside"_s), path(u"tree/link"_s));
    QVERIFY(removeTree(path(u"tree"_s)));
    QCOMPARE(namesIn(m_folder->path()), QStringList{u"outside"_s});
    QCOMPARE(contentOf(path(u"outside/kept"_s)), QByteArray("kept"));
}

void RemoveTreeTest::takesNothingToRemoveForRemoved()
{
    QVERIFY(removeTree(path(u"none"_s)));
    put(path(u"file"_s), "");
    QVERIFY(removeTree(path(u"file"_s)));
    QCOMPARE(namesIn(m_folder->path()), QStringList());
}

void RemoveTreeTest::stopsAtTheFirstFailure()
{
    for (const char *name : {"tree/a", "tree/b", "tree/c"})
        put(path(QString::fromLatin1(name)), "x");
    const ScopedFaults faults([](FileOperation operation, const QString &asked) {
        return operation == FileOperation::Remove && asked.endsWith(u"/b"_s) ? EACCES : 0;
    });
    const Done done = removeTree(path(u"tree"_s));
    QVERIFY(!done);
    QCOMPARE(done.error().message, u"The file “tree” couldn't be removed: Permission denied."_s);
    QCOMPARE(namesIn(path(u"tree"_s)), (QStringList{u"b"_s, u"c"_s}));
}

void RemoveTreeTest::tellsOfEveryFailure()
{
    bool succeeded = false;
    const Interruption what = {
        u"remove"_s,
        [](const QString &folder) {
            put(folder + u"/tree/a/b"_s, "x");
            put(folder + u"/tree/c"_s, "x");
        },
        [&](const QString &folder) { succeeded = removeTree(folder + u"/tree"_s).has_value(); },
        [&](const QString &folder) {
            const bool isGone = namesIn(folder).isEmpty();
            return succeeded && !isGone ? u"success is claimed for what still stands"_s : QString();
        }};
    const FaultReport report = failAtEachCall(what, EIO);
    QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
    QCOMPARE(report.calls, 10);
    QVERIFY(succeeded);
}

QTEST_GUILESS_MAIN(RemoveTreeTest)
#include "remove_tree_test.moc"
