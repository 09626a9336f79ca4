#include "platform/system_calls.h"

#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class SystemCallsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheTemporaryBesideAFile_data();
    void namesTheTemporaryBesideAFile();
    void answersErrorsOfTheSystem();
    void statesNoPathThatHoldsNul();
    void passesTheGateWithEveryCall();
};

void SystemCallsTest::namesTheTemporaryBesideAFile_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("temporary");
    const auto row = [](const char *path, const char *temporary) {
        QTest::newRow(path) << QByteArray(path) << QByteArray(temporary);
    };
    row("/music/a.mp3", "/music/.a.mp3.twtmp");
    row("a.mp3", ".a.mp3.twtmp");
    row("/a", "/.a.twtmp");
    row("/music/.hidden", "/music/..hidden.twtmp");
    row("/_Serato_/database V2", "/_Serato_/.database V2.twtmp");
}

void SystemCallsTest::namesTheTemporaryBesideAFile()
{
    QFETCH(QByteArray, path);
    QTEST(calls::temporaryBeside(path), "temporary");
}

void SystemCallsTest::answersErrorsOfTheSystem()
{
    QTemporaryDir folder;
    const QByteArray root = QFile::encodeName(folder.path());
    struct stat status;
    QByteArray target;
    QByteArrayList names;
    put(folder.filePath(u"file"_s), "");
    QCOMPARE(calls::statusOf(root + "/none", status), ENOENT);
    QCOMPARE(calls::makeFolder(root, 0700), EEXIST);
    QCOMPARE(calls::removeFolder(root), ENOTEMPTY);
    QCOMPARE(calls::removeEntry(root + "/none"), ENOENT);
    QCOMPARE(calls::renameWithoutReplacing(root + "/file", root + "/file"), EEXIST);
    QCOMPARE(calls::readLink(root + "/file", target), EINVAL);
    QCOMPARE(calls::listFolder(root + "/file", names), ENOTDIR);
    QCOMPARE(calls::makeLink("x", root + "/file"), EEXIST);
    QCOMPARE(calls::flushFolderOf(root + "/file"), 0);
    QCOMPARE(calls::flushFolderOf(root + "/none/file"), ENOENT);
}

void SystemCallsTest::statesNoPathThatHoldsNul()
{
    QTemporaryDir folder;
    put(folder.filePath(u"file"_s), "kept");
    const QByteArray file = QFile::encodeName(folder.filePath(u"file"_s));
    const QByteArray cut = file + QByteArray("\0x", 2);
    QCOMPARE(calls::removeEntry(cut), ENOENT);
    QCOMPARE(calls::renameEntry(cut, file + "2"), ENOENT);
    QCOMPARE(calls::renameEntry(file, file + QByteArray("2\0", 2)), ENOENT);
    QCOMPARE(calls::renameWithoutReplacing(file, file + QByteArray("2\0", 2)), ENOENT);
    QCOMPARE(namesIn(folder.path()), QStringList{u"file"_s});
}

void SystemCallsTest::passesTheGateWithEveryCall()
{
    const ScopedFaults faults([](FileOperation, const QString &) { return EIO; });
    struct stat status = {};
    QByteArray target;
    QByteArrayList names;
    QCOMPARE(calls::statusOf("/", status), EIO);
    QCOMPARE(calls::listFolder("/", names), EIO);
    QCOMPARE(calls::makeFolder("/", 0700), EIO);
    QCOMPARE(calls::setMode("/none", 0700), EIO);
    QCOMPARE(calls::removeEntry("/none"), EIO);
    QCOMPARE(calls::removeFolder("/none"), EIO);
    QCOMPARE(calls::renameEntry("/none", "/none2"), EIO);
    QCOMPARE(calls::renameWithoutReplacing("/none", "/none2"), EIO);
    QCOMPARE(calls::readLink("/none", target), EIO);
    QCOMPARE(calls::makeLink("x", "/none/none"), EIO);
    QCOMPARE(calls::makeSpecial("/none/none", status), EIO);
    QCOMPARE(calls::flushFolderOf("/none/none"), EIO);
}

QTEST_GUILESS_MAIN(SystemCallsTest)
#include "system_calls_test.moc"
