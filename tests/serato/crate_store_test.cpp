#include "serato/crate_store.h"

#include "platform/fault_gate.h"
#include "serato/serato_track.h"
#include "support/library_builder.h"

#include <QTest>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

QStringList namesOf(const QList<LoadedCrate> &crates)
{
    QStringList names;
    for (const LoadedCrate &crate : crates)
        names << crate.name;
    return names;
}

QString inSubcrates(const QString &name)
{
    return u"_Serato_/Subcrates/"_s + name;
}

} // namespace

class CrateStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void crateOfTheFormatPageIsRead();
    void normalizeDropsOneSlash_data();
    void normalizeDropsOneSlash();
    void noFolderMeansNoCrates();
    void nameIsTheFilesWithoutItsExtension_data();
    void nameIsTheFilesWithoutItsExtension();
    void whatIsNoCrateIsSkipped_data();
    void whatIsNoCrateIsSkipped();
    void cratesAreOrderedWithoutRegardToLetterCase();
    void entriesAreNormalizedInFileOrder();
    void entryWithASlashMatchesTheDatabasesPath();
    void damagedCrateHasTheEntriesAheadOfTheDamage();
    void crateThatCannotBeReadIsListedEmpty_data();
    void crateThatCannotBeReadIsListedEmpty();
    void recordOfACrate();
};

void CrateStoreTest::crateOfTheFormatPageIsRead()
{
    const QByteArray bytes = hex("7672736e" // vrsn
                                 "00000038"
                                 "0031 002e 0030 002f"                               // "1.0/"
                                 "0053 0065 0072 0061 0074 006f 0020"                // "Serato "
                                 "0053 0063 0072 0061 0074 0063 0068"                // "Scratch"
                                 "004c 0069 0076 0065 0020 0043 0072 0061 0074 0065" // "Live Crate"
                                 "6f74726b"                                          // otrk
                                 "00000012"
                                 "7074726b" // ptrk
                                 "0000000a"
                                 "0061 002e 006d 0070 0033"); // "a.mp3"
    QCOMPARE(bytes, crateVersion() + crateEntry(u"a.mp3"));
    const LibraryBuilder library;
    const QString file = library.folder().write(inSubcrates(u"Warm up.crate"_s), bytes);
    const LoadedCrate expected{u"Warm up"_s, QUrl::fromLocalFile(file), {u"a.mp3"_s}};
    QCOMPARE(CrateStore::load(library.location()), QList<LoadedCrate>{expected});
}

void CrateStoreTest::normalizeDropsOneSlash_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("normalized");
    QTest::newRow("none") << u"Users/a.mp3"_s << u"Users/a.mp3"_s;
    QTest::newRow("one") << u"/Users/a.mp3"_s << u"Users/a.mp3"_s;
    QTest::newRow("two") << u"//Users/a.mp3"_s << u"/Users/a.mp3"_s;
    QTest::newRow("slash alone") << u"/"_s << QString();
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("at the end") << u"Users/"_s << u"Users/"_s;
}

void CrateStoreTest::normalizeDropsOneSlash()
{
    QFETCH(const QString, path);
    QTEST(CrateStore::normalize(path), "normalized");
}

void CrateStoreTest::noFolderMeansNoCrates()
{
    const LibraryBuilder library;
    QCOMPARE(CrateStore::load(library.location()), QList<LoadedCrate>());
    library.folder().makeFolder(u"_Serato_/Subcrates"_s);
    QCOMPARE(CrateStore::load(library.location()), QList<LoadedCrate>());
}

void CrateStoreTest::nameIsTheFilesWithoutItsExtension_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("blank in the name") << u"Warm up.crate"_s << u"Warm up"_s;
    QTest::newRow("upper case extension") << u"Mix.CRATE"_s << u"Mix"_s;
    QTest::newRow("mixed case extension") << u"Mix.CrAtE"_s << u"Mix"_s;
    QTest::newRow("points in the name") << u"v1.2 mix.crate"_s << u"v1.2 mix"_s;
    QTest::newRow("separators stay in the name") << u"A%%B%%C.crate"_s << u"A%%B%%C"_s;
    QTest::newRow("hidden") << u".hidden.crate"_s << u".hidden"_s;
    QTest::newRow("extension twice") << u"a.crate.crate"_s << u"a.crate"_s;
    QTest::newRow("beyond ASCII") << u"Größe #1?.crate"_s << u"Größe #1?"_s;
}

void CrateStoreTest::nameIsTheFilesWithoutItsExtension()
{
    QFETCH(const QString, file);
    QFETCH(const QString, name);
    const LibraryBuilder library;
    const QString path = library.folder().write(inSubcrates(file), crateEntry(u"a.mp3"));
    const QList<LoadedCrate> crates = CrateStore::load(library.location());
    QCOMPARE(namesOf(crates), QStringList{name});
    QCOMPARE(crates.front().id(), path);
    QCOMPARE(crates.front().paths, QStringList{u"a.mp3"_s});
}

void CrateStoreTest::whatIsNoCrateIsSkipped_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("other extension") << u"notes.txt"_s;
    QTest::newRow("no extension") << u"crate"_s;
    QTest::newRow("nothing but the extension") << u".crate"_s;
    QTest::newRow("nothing behind the point") << u"crate."_s;
    QTest::newRow("extension in between") << u"a.crate.bak"_s;
    QTest::newRow("temporary of a write") << u".a.crate.twtmp"_s;
    QTest::newRow("in a folder within") << u"deeper/a.crate"_s;
}

void CrateStoreTest::whatIsNoCrateIsSkipped()
{
    QFETCH(const QString, file);
    const LibraryBuilder library;
    library.folder().write(inSubcrates(file), crateEntry(u"a.mp3"));
    QCOMPARE(namesOf(CrateStore::load(library.location())), QStringList());
}

void CrateStoreTest::cratesAreOrderedWithoutRegardToLetterCase()
{
    const LibraryBuilder library;
    for (const QString &name : {u"c"_s, u"B"_s, u"a"_s, u"A"_s, u"Ä"_s, u"b"_s, u"10"_s, u"9"_s})
        library.folder().write(inSubcrates(name + u".crate"_s));
    QCOMPARE(namesOf(CrateStore::load(library.location())),
             QStringList({u"10"_s, u"9"_s, u"A"_s, u"a"_s, u"B"_s, u"b"_s, u"c"_s, u"Ä"_s}));
}

void CrateStoreTest::entriesAreNormalizedInFileOrder()
{
    const LibraryBuilder library;
    library.folder().write(inSubcrates(u"a.crate"_s),
                           crateVersion() + crateEntry(u"/b.mp3") + crateEntry(u"a.mp3") +
                               crateEntry(u"b.mp3") + crateEntry(u"//a.mp3"));
    const LoadedCrate crate = CrateStore::load(library.location()).value(0);
    QCOMPARE(crate.paths, QStringList({u"b.mp3"_s, u"a.mp3"_s, u"b.mp3"_s, u"/a.mp3"_s}));
    QCOMPARE(crate.count(), 4);
    QCOMPARE(crate.pathSet(), QSet<QString>({u"b.mp3"_s, u"a.mp3"_s, u"/a.mp3"_s}));
}

void CrateStoreTest::entryWithASlashMatchesTheDatabasesPath()
{
    const LibraryBuilder library;
    library.folder().write(inSubcrates(u"a.crate"_s), crateEntry(u"/Users/a.mp3"));
    SeratoTrack track;
    track.relativePath = u"Users/a.mp3"_s;
    QVERIFY(CrateStore::load(library.location())
                .front()
                .pathSet()
                .contains(CrateStore::normalize(track.relativePath)));
}

void CrateStoreTest::damagedCrateHasTheEntriesAheadOfTheDamage()
{
    const LibraryBuilder library;
    library.folder().write(inSubcrates(u"a.crate"_s), crateVersion() + crateEntry(u"a.mp3") +
                                                          hex("6f74726b ffffffff") +
                                                          crateEntry(u"b.mp3"));
    QCOMPARE(CrateStore::load(library.location()).front().paths, QStringList{u"a.mp3"_s});
}

void CrateStoreTest::crateThatCannotBeReadIsListedEmpty_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<platform::FileOperation>("operation");
    QTest::newRow("no permission") << EACCES << platform::FileOperation::Open;
    QTest::newRow("disk fault") << EIO << platform::FileOperation::Read;
    QTest::newRow("folder of the name") << 0 << platform::FileOperation::Open;
}

void CrateStoreTest::crateThatCannotBeReadIsListedEmpty()
{
    QFETCH(const int, fault);
    QFETCH(const platform::FileOperation, operation);
    const LibraryBuilder library;
    const TestFolder &folder = library.folder();
    const QString bad = fault == 0 ? folder.makeFolder(inSubcrates(u"bad.crate"_s))
                                   : folder.write(inSubcrates(u"bad.crate"_s), crateEntry(u"x"));
    folder.write(inSubcrates(u"good.crate"_s), crateEntry(u"a.mp3"));
    const platform::ScopedFaults faults([=](platform::FileOperation asked, const QString &path) {
        return asked == operation && path == bad ? fault : 0;
    });
    const QList<LoadedCrate> crates = CrateStore::load(library.location());
    QCOMPARE(namesOf(crates), QStringList({u"bad"_s, u"good"_s}));
    QCOMPARE(crates[0].count(), 0);
    QCOMPARE(crates[1].count(), 1);
}

void CrateStoreTest::recordOfACrate()
{
    const LoadedCrate crate{u"a"_s, QUrl::fromLocalFile(u"/v/50% #1/a.crate"_s), {}};
    QCOMPARE(crate.id(), u"/v/50% #1/a.crate"_s);
    QVERIFY(crate.pathSet().isEmpty());
}

QTEST_GUILESS_MAIN(CrateStoreTest)
#include "crate_store_test.moc"
