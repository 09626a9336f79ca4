#include "safety/holding_folder.h"

#include "platform/fault_gate.h"
#include "safety/store.h"
#include "safety/store_file.h"
#include "support/other_file_system.h"
#include "support/safety_records.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);
const QByteArray audio(200'000, 'a');

/// Another process that has a file or folder to itself, as far as it can be had.
class HeldLock
{
public:
    explicit HeldLock(const QString &path)
        : m_file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC))
        , m_isHeld(::flock(m_file, LOCK_EX | LOCK_NB) == 0)
    {}
    ~HeldLock() { ::close(m_file); }
    HeldLock(const HeldLock &) = delete;
    HeldLock &operator=(const HeldLock &) = delete;

    bool isHeld() const { return m_isHeld; }

private:
    const int m_file;
    const bool m_isHeld;
};

} // namespace

class HoldingFolderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void startsEmptyWithoutAManifest();
    void movesAFileIntoAFolderOfItsOwn();
    void keepsTwoFilesOfOneNameApart();
    void holdsForCalendarDays();
    void failsToHoldWithoutATrace_data();
    void failsToHoldWithoutATrace();
    void givesAFileBack();
    void makesTheOriginalFolderAgain();
    void givesBackPastItsDate();
    void doesNothingForAnUnknownId();
    void leavesAnItemHeldWhereItsPlaceIsTaken_data();
    void leavesAnItemHeldWhereItsPlaceIsTaken();
    void marksAnItemWhoseFileHasGone();
    void leavesAnItemHeldWhereItCannotLook();
    void purgesWhatHasExpired();
    void writesTheManifestAtEveryPurge();
    void dropsTheRecordWhereTheFolderCannotBeRemoved();
    void neverPurgesWhatWasRestored();
    void removesNothingOutsideItsFolder_data();
    void removesNothingOutsideItsFolder();
    void countsWhatIsNotRestored();
    void startsEmptyFromABadManifest_data();
    void startsEmptyFromABadManifest();
    void staysAheadOfADiskThatFails();
    void losesNothingOfAnothers();
    void keepsNobodyWaitingWhileItMoves();
    void letsOnlyOneGiveAFileBack();
    void purgesNothingThatIsBeingGivenBack();
    void makesNoManifestForAMoveThatFails();
    void givesNoIdTwice();
    void movesAcrossFileSystems();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString held(const QString &name = {}) const
    {
        return dataIn(m_folder->path(), u"Holding/"_s + name);
    }
    QByteArray manifest() const { return contentOf(held(u"manifest.json"_s)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void HoldingFolderTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    keepDataIn(m_folder->path());
    qputenv("TZ", "UTC");
    ::tzset();
}

void HoldingFolderTest::startsEmptyWithoutAManifest()
{
    const HoldingFolder holding;
    QCOMPARE(holding.items(), QList<HeldItem>());
    QCOMPARE(holding.count(), 0);
    QCOMPARE(holding.totalBytes(), quint64(0));
}

void HoldingFolderTest::movesAFileIntoAFolderOfItsOwn()
{
    const platform::ScopedClock clock(noon.addMSecs(700));
    put(path(u"music/a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"music/a.mp3"_s), u"Duplicate"_s);
    QVERIFY(item.has_value());
    const HeldItem wanted = {.id = u"held-1-1795176000"_s,
                             .originalPath = path(u"music/a.mp3"_s),
                             .heldPath = held(u"held-1-1795176000/a.mp3"_s),
                             .reason = u"Duplicate"_s,
                             .date = noon,
                             .expiresAt = noon.addDays(30),
                             .restored = false};
    QCOMPARE(*item, wanted);
    QCOMPARE(holding.items(), QList<HeldItem>{wanted});
    QCOMPARE(contentOf(wanted.heldPath), audio);
    QCOMPARE(namesIn(path(u"music"_s)), QStringList());
    QCOMPARE(HoldingFolder().items(), QList<HeldItem>{wanted});
    QCOMPARE(manifest(), StoreFile::listOf({StoreFile::encoded(wanted)}));
}

void HoldingFolderTest::keepsTwoFilesOfOneNameApart()
{
    const platform::ScopedClock clock(noon);
    put(path(u"one/a.mp3"_s), "one");
    put(path(u"two/a.mp3"_s), "two");
    HoldingFolder holding;
    const auto one = holding.hold(path(u"one/a.mp3"_s), u"r"_s);
    const auto two = holding.hold(path(u"two/a.mp3"_s), u"r"_s);
    QVERIFY(one && two);
    QCOMPARE(contentOf(one->heldPath), QByteArray("one"));
    QCOMPARE(contentOf(two->heldPath), QByteArray("two"));
    QCOMPARE(two->id, u"held-2-1795176000"_s);
    QCOMPARE(holding.items(), (QList<HeldItem>{*two, *one}));
}

void HoldingFolderTest::holdsForCalendarDays()
{
    qputenv("TZ", "Europe/Berlin");
    ::tzset();
    const platform::ScopedClock clock(QDateTime({2026, 10, 10}, {12, 0}, Qt::UTC)); // 14:00 there
    put(path(u"a.mp3"_s), audio);
    const auto item = HoldingFolder().hold(path(u"a.mp3"_s), u"r"_s);
    QVERIFY(item.has_value());
    QCOMPARE(item->expiresAt, QDateTime({2026, 11, 9}, {13, 0}, Qt::UTC)); // 14:00 there
}

void HoldingFolderTest::failsToHoldWithoutATrace_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such file") << u"none.mp3"_s;
    QTest::newRow("no such folder") << u"none/a.mp3"_s;
    QTest::newRow("NUL in the path") << u"a.mp3"_s + QChar(0);
}

void HoldingFolderTest::failsToHoldWithoutATrace()
{
    QFETCH(QString, name);
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(name), u"r"_s);
    QVERIFY(!item.has_value());
    QVERIFY(item.error().message.endsWith(u"couldn't be moved: No such file or directory."_s));
    QCOMPARE(holding.items().size(), 0);
    QCOMPARE(namesIn(held()), QStringList());
    QCOMPARE(contentOf(path(u"a.mp3"_s)), audio);
}

void HoldingFolderTest::givesAFileBack()
{
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    QVERIFY(holding.restore(item->id));
    QCOMPARE(contentOf(path(u"a.mp3"_s)), audio);
    QVERIFY(holding.items().first().restored);
    QCOMPARE(HoldingFolder().items(), holding.items());
    QCOMPARE(namesIn(held(item->id)), QStringList());
    QVERIFY(QFileInfo(held(item->id)).isDir());
}

void HoldingFolderTest::makesTheOriginalFolderAgain()
{
    put(path(u"gone/deep/a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"gone/deep/a.mp3"_s), u"r"_s);
    QVERIFY(QDir(path(u"gone"_s)).removeRecursively());
    QVERIFY(holding.restore(item->id));
    QCOMPARE(contentOf(path(u"gone/deep/a.mp3"_s)), audio);
}

void HoldingFolderTest::givesBackPastItsDate()
{
    platform::ScopedClock clock(noon);
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    clock.set(noon.addDays(100));
    QVERIFY(holding.restore(item->id));
    QCOMPARE(contentOf(path(u"a.mp3"_s)), audio);
}

void HoldingFolderTest::doesNothingForAnUnknownId()
{
    HoldingFolder holding;
    QVERIFY(holding.restore(u"held-9-9"_s));
    QCOMPARE(namesIn(held()), QStringList());
}

void HoldingFolderTest::leavesAnItemHeldWhereItsPlaceIsTaken_data()
{
    QTest::addColumn<QString>("occupant");
    for (const char *occupant : {"file", "folder", "dangling link", "file for its folder"})
        QTest::newRow(occupant) << QString::fromLatin1(occupant);
}

void HoldingFolderTest::leavesAnItemHeldWhereItsPlaceIsTaken()
{
    QFETCH(QString, occupant);
    put(path(u"music/a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"music/a.mp3"_s), u"r"_s);
    if (occupant == u"file"_s)
        put(path(u"music/a.mp3"_s), "new");
    else if (occupant == u"folder"_s)
        QDir().mkpath(path(u"music/a.mp3"_s));
    else if (occupant == u"dangling link"_s)
        QFile::link(u"nowhere"_s, path(u"music/a.mp3"_s));
    else {
        QVERIFY(QDir(m_folder->path()).rmdir(u"music"_s));
        put(path(u"music"_s), "new");
    }
    const auto before = treeOf(m_folder->path());
    QVERIFY(!holding.restore(item->id));
    QCOMPARE(treeOf(m_folder->path()), before);
    QVERIFY(!holding.items().first().restored);
    QCOMPARE(contentOf(item->heldPath), audio);
}

void HoldingFolderTest::marksAnItemWhoseFileHasGone()
{
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    QFile::remove(item->heldPath);
    QVERIFY(holding.restore(item->id));
    QVERIFY(HoldingFolder().items().first().restored);
    QVERIFY(!QFileInfo::exists(path(u"a.mp3"_s)));
}

void HoldingFolderTest::leavesAnItemHeldWhereItCannotLook()
{
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
        return operation == platform::FileOperation::Stat ? EIO : 0;
    });
    QVERIFY(!holding.restore(item->id));
    QVERIFY(!holding.items().first().restored);
}

void HoldingFolderTest::purgesWhatHasExpired()
{
    platform::ScopedClock clock(noon);
    for (const char *name : {"old.mp3", "edge.mp3", "live.mp3"})
        put(path(QString::fromLatin1(name)), audio);
    HoldingFolder holding;
    const auto old = holding.hold(path(u"old.mp3"_s), u"r"_s);
    clock.set(noon.addDays(1));
    const auto edge = holding.hold(path(u"edge.mp3"_s), u"r"_s);
    clock.set(noon.addDays(1).addSecs(1));
    const auto live = holding.hold(path(u"live.mp3"_s), u"r"_s);
    clock.set(noon.addDays(31));

    HoldingFolder launched;
    launched.purgeExpired();
    QCOMPARE(launched.items(), QList<HeldItem>{*live});
    QCOMPARE(HoldingFolder().items(), QList<HeldItem>{*live});
    QCOMPARE(namesIn(held()), (QStringList{live->id, u"manifest.json"_s}));
    QCOMPARE(contentOf(live->heldPath), audio);
}

void HoldingFolderTest::writesTheManifestAtEveryPurge()
{
    HoldingFolder().purgeExpired(noon);
    QCOMPARE(manifest(), QByteArray("[]\n"));
    put(held(u"manifest.json"_s), "damaged");
    HoldingFolder().purgeExpired(noon);
    QCOMPARE(manifest(), QByteArray("[]\n"));
}

void HoldingFolderTest::dropsTheRecordWhereTheFolderCannotBeRemoved()
{
    platform::ScopedClock clock(noon);
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
        return operation == platform::FileOperation::Remove ? EACCES : 0;
    });
    holding.purgeExpired(noon.addDays(31));
    QCOMPARE(holding.items(), QList<HeldItem>());
    QCOMPARE(manifest(), QByteArray("[]\n"));
    QCOMPARE(contentOf(item->heldPath), audio);
}

void HoldingFolderTest::neverPurgesWhatWasRestored()
{
    platform::ScopedClock clock(noon);
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    QVERIFY(holding.restore(item->id));
    holding.purgeExpired(noon.addYears(5));
    QCOMPARE(holding.items().size(), 1);
    QVERIFY(QFileInfo(held(item->id)).isDir());
}

void HoldingFolderTest::removesNothingOutsideItsFolder_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : {"", ".", "..", "../..", "../../../kept", "x/../../.."})
        QTest::addRow("'%s'", id) << QString::fromLatin1(id);
}

void HoldingFolderTest::removesNothingOutsideItsFolder()
{
    QFETCH(QString, id);
    put(path(u"kept/file"_s), "kept");
    put(held(u"other/file"_s), "kept");
    const HeldItem bad = {.id = id,
                          .originalPath = u"/a"_s,
                          .heldPath = u"/b"_s,
                          .reason = u"r"_s,
                          .date = noon,
                          .expiresAt = noon,
                          .restored = false};
    put(held(u"manifest.json"_s), StoreFile::listOf({StoreFile::encoded(bad)}));
    HoldingFolder holding;
    QCOMPARE(holding.items().size(), 1);
    holding.purgeExpired(noon.addDays(1));
    QCOMPARE(holding.items().size(), 0);
    QCOMPARE(contentOf(path(u"kept/file"_s)), QByteArray("kept"));
    QCOMPARE(contentOf(held(u"other/file"_s)), QByteArray("kept"));
}

void HoldingFolderTest::countsWhatIsNotRestored()
{
    HoldingFolder holding;
    QList<HeldItem> items;
    for (const char *name : {"a", "bb", "ccc"}) {
        put(path(QString::fromLatin1(name)), name);
        items << *holding.hold(path(QString::fromLatin1(name)), u"r"_s);
    }
    QVERIFY(holding.restore(items.at(1).id));
    QCOMPARE(holding.count(), 2);
    QCOMPARE(holding.activeItems(), (QList<HeldItem>{items.at(2), items.at(0)}));
    QCOMPARE(holding.totalBytes(), quint64(4));
    QFile::remove(items.at(2).heldPath);
    QCOMPARE(holding.totalBytes(), quint64(1));
    QCOMPARE(HoldingFolder().items().size(), 3);
}

void HoldingFolderTest::startsEmptyFromABadManifest_data()
{
    QTest::addColumn<QByteArray>("bad");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("held");
    QTest::newRow("an object") << QByteArray("{}");
    QTest::newRow("a record without fields") << QByteArray("[{}]");
}

void HoldingFolderTest::startsEmptyFromABadManifest()
{
    QFETCH(QByteArray, bad);
    put(held(u"manifest.json"_s), bad);
    put(held(u"held-1-1/a.mp3"_s), audio);
    put(path(u"b.mp3"_s), audio);
    HoldingFolder holding;
    QCOMPARE(holding.items().size(), 0);
    QCOMPARE(manifest(), bad);
    const auto item = holding.hold(path(u"b.mp3"_s), u"r"_s);
    QVERIFY(item->id.startsWith(u"held-1-"_s));
    QCOMPARE(HoldingFolder().items(), QList<HeldItem>{*item});
    QCOMPARE(contentOf(held(u"held-1-1/a.mp3"_s)), audio);
}

void HoldingFolderTest::staysAheadOfADiskThatFails()
{
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    {
        const platform::ScopedFaults faults(
            [](platform::FileOperation operation, const QString &asked) {
                const bool isManifest = asked.endsWith(u"manifest.json"_s);
                return isManifest && operation == platform::FileOperation::Write ? ENOSPC : 0;
            });
        QVERIFY(holding.hold(path(u"a.mp3"_s), u"r"_s));
    }
    QCOMPARE(holding.items().size(), 1);
    QCOMPARE(HoldingFolder().items().size(), 0);
    QVERIFY(holding.restore(holding.items().first().id));
    QCOMPARE(HoldingFolder().items(), holding.items());
}

void HoldingFolderTest::losesNothingOfAnothers()
{
    const platform::ScopedClock clock(noon);
    for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s})
        put(path(name), name.toUtf8());
    HoldingFolder one;
    HoldingFolder other;
    const auto a = one.hold(path(u"a.mp3"_s), u"r"_s);
    const auto b = other.hold(path(u"b.mp3"_s), u"r"_s);
    QVERIFY(a && b);
    QVERIFY(a->id != b->id);
    QCOMPARE(HoldingFolder().items(), (QList<HeldItem>{*b, *a}));
    QVERIFY(one.restore(a->id));
    const auto c = other.hold(path(u"c.mp3"_s), u"r"_s);
    QVERIFY(c.has_value());
    one.purgeExpired();
    HeldItem given = *a;
    given.restored = true;
    QCOMPARE(HoldingFolder().items(), (QList<HeldItem>{*c, *b, given}));
    QVERIFY(one.restore(c->id));
    QCOMPARE(contentOf(path(u"c.mp3"_s)), QByteArray("c.mp3"));
}

void HoldingFolderTest::keepsNobodyWaitingWhileItMoves()
{
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    QVERIFY(item.has_value());
    const QString manifest = Store::holdingManifest();
    QList<bool> free;
    const platform::ScopedFaults faults([&](platform::FileOperation operation, const QString &at) {
        if (operation == platform::FileOperation::Rename && at == item->heldPath)
            free.append(HeldLock(manifest).isHeld());
        return 0;
    });
    QVERIFY(holding.restore(item->id));
    QCOMPARE(free, QList<bool>{true});
}

void HoldingFolderTest::letsOnlyOneGiveAFileBack()
{
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    QVERIFY(item.has_value());
    {
        const HeldLock another(QFileInfo(item->heldPath).path());
        QVERIFY(!holding.restore(item->id));
        QCOMPARE(contentOf(item->heldPath), audio);
        QCOMPARE(HoldingFolder().items(), QList<HeldItem>{*item});
    }
    QVERIFY(holding.restore(item->id));
    QCOMPARE(contentOf(path(u"a.mp3"_s)), audio);
}

void HoldingFolderTest::purgesNothingThatIsBeingGivenBack()
{
    const platform::ScopedClock clock(noon);
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    QVERIFY(item.has_value());
    const QDateTime later = item->expiresAt.addDays(1);
    {
        const HeldLock another(QFileInfo(item->heldPath).path());
        holding.purgeExpired(later);
        QCOMPARE(contentOf(item->heldPath), audio);
        QCOMPARE(HoldingFolder().items(), QList<HeldItem>{*item});
    }
    holding.purgeExpired(later);
    QVERIFY(!QFileInfo::exists(item->heldPath));
    QCOMPARE(HoldingFolder().items(), QList<HeldItem>());
}

void HoldingFolderTest::makesNoManifestForAMoveThatFails()
{
    put(path(u"a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"a.mp3"_s), u"r"_s);
    QVERIFY(item.has_value());
    QVERIFY(QFile::remove(Store::holdingManifest()));
    put(path(u"a.mp3"_s), "another");
    QVERIFY(!holding.restore(item->id));
    QVERIFY(!QFileInfo::exists(Store::holdingManifest()));
}

/// A purge makes the list shorter, and a clock can be put back: the number and the moment of an
/// item come once more.
void HoldingFolderTest::givesNoIdTwice()
{
    platform::ScopedClock clock(noon.addDays(-40));
    for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s})
        put(path(name), name.toUtf8());
    HoldingFolder holding;
    QVERIFY(holding.hold(path(u"a.mp3"_s), u"r"_s));
    clock.set(noon);
    const auto b = holding.hold(path(u"b.mp3"_s), u"r"_s);
    holding.purgeExpired();
    const auto c = holding.hold(path(u"c.mp3"_s), u"r"_s);
    QVERIFY(b && c);
    QCOMPARE(b->id, u"held-2-1795176000"_s);
    QCOMPARE(c->id, u"held-3-1795176000"_s);
    QCOMPARE(contentOf(b->heldPath), QByteArray("b.mp3"));
    QCOMPARE(contentOf(c->heldPath), QByteArray("c.mp3"));
}

void HoldingFolderTest::movesAcrossFileSystems()
{
    if (!linkToOtherFileSystem(path(u"music"_s)))
        QSKIP("no second file system");
    put(path(u"music/a.mp3"_s), audio);
    HoldingFolder holding;
    const auto item = holding.hold(path(u"music/a.mp3"_s), u"r"_s);
    QVERIFY(item.has_value());
    QCOMPARE(namesIn(path(u"music"_s)), QStringList());
    QCOMPARE(contentOf(item->heldPath), audio);
    QVERIFY(holding.restore(item->id));
    QCOMPARE(contentOf(path(u"music/a.mp3"_s)), audio);
    QVERIFY(!QFileInfo::exists(item->heldPath));
}

QTEST_GUILESS_MAIN(HoldingFolderTest)
#include "holding_folder_test.moc"
