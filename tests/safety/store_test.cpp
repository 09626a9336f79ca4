#include "safety/store.h"

#include "platform/fault_gate.h"
#include "support/safety_records.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <thread>
#include <vector>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class StoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void makesTheDataFolderForItsOwnerAlone();
    void makesSubfoldersAgainWhenTheyHaveGone();
    void makesNoFiles();
    void keepsItsNames();
    void answersPathsEvenWhereNothingCanBeMade();
    void canBeAskedOnSeveralThreadsAtOnce();
    void tellsPlainNames_data();
    void tellsPlainNames();

private:
    QString data(const QString &name = {}) const { return dataIn(m_folder->path(), name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void StoreTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    keepDataIn(m_folder->path());
}

void StoreTest::makesTheDataFolderForItsOwnerAlone()
{
    QVERIFY(!QFileInfo::exists(data()));
    QCOMPARE(Store::root() + u'/', data());
    QVERIFY(QFileInfo(data()).isDir());
    QCOMPARE(modeOf(data()), 0700);
}

void StoreTest::makesSubfoldersAgainWhenTheyHaveGone()
{
    QCOMPARE(Store::snapshots(), data(u"Snapshots"_s));
    QVERIFY(QDir(data(u"Snapshots"_s)).removeRecursively());
    QCOMPARE(Store::snapshots(), data(u"Snapshots"_s));
    QVERIFY(QFileInfo(data(u"Snapshots"_s)).isDir());
    QVERIFY(QDir(data()).removeRecursively());
    QCOMPARE(Store::holding(), data(u"Holding"_s));
    QVERIFY(QFileInfo(data(u"Holding"_s)).isDir());
    QCOMPARE(modeOf(data()), 0700);
}

void StoreTest::makesNoFiles()
{
    (void)Store::changeLog();
    (void)Store::cueVault();
    QCOMPARE(namesIn(data()), QStringList());
    (void)Store::holdingManifest();
    QCOMPARE(namesIn(data()), QStringList{u"Holding"_s});
    QCOMPARE(namesIn(data(u"Holding"_s)), QStringList());
}

void StoreTest::keepsItsNames()
{
    QCOMPARE(Store::changeLog(), data(u"changelog.json"_s));
    QCOMPARE(Store::cueVault(), data(u"cuevault.json"_s));
    QCOMPARE(Store::holdingManifest(), data(u"Holding/manifest.json"_s));
}

void StoreTest::answersPathsEvenWhereNothingCanBeMade()
{
    const platform::ScopedFaults faults(
        [](platform::FileOperation, const QString &) { return EROFS; });
    QCOMPARE(Store::root() + u'/', data());
    QCOMPARE(Store::snapshots(), data(u"Snapshots"_s));
    QCOMPARE(Store::holding(), data(u"Holding"_s));
    QVERIFY(!QFileInfo::exists(data()));
}

void StoreTest::canBeAskedOnSeveralThreadsAtOnce()
{
    std::vector<std::thread> threads;
    std::vector<QString> answers(8);
    for (QString &answer : answers)
        threads.emplace_back([&answer] { answer = Store::snapshots(); });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(answers, std::vector<QString>(8, data(u"Snapshots"_s)));
}

void StoreTest::tellsPlainNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isPlain");
    QTest::newRow("an id") << u"snap-20261120-140500-123"_s << true;
    QTest::newRow("a point ahead") << u".x"_s << true;
    QTest::newRow("empty") << u""_s << false;
    QTest::newRow("the folder itself") << u"."_s << false;
    QTest::newRow("the folder above") << u".."_s << false;
    QTest::newRow("a way up") << u"../x"_s << false;
    QTest::newRow("a way down") << u"a/b"_s << false;
    QTest::newRow("from the root") << u"/"_s << false;
    QTest::newRow("NUL") << u"a"_s + QChar(0) << false;
}

void StoreTest::tellsPlainNames()
{
    QFETCH(QString, name);
    QTEST(Store::isPlainName(name), "isPlain");
}

QTEST_GUILESS_MAIN(StoreTest)
#include "store_test.moc"
