#include "serato/crate_writer.h"

#include "platform/fault_gate.h"
#include "serato/crate_store.h"
#include "support/fault_loop.h"
#include "support/library_builder.h"
#include "support/test_files.h"

#include <QTest>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;
using CrateWriter::addTracks;

namespace {

const QString crateName = u"_Serato_/Subcrates/Mix.crate"_s;
const QByteArray oldCrate = crateVersion() + record("osrt", "sort") + crateEntry(u"a.mp3");
const QByteArray newCrate = crateVersion() + crateEntry(u"a.mp3") + crateEntry(u"b.mp3");
/// What the rule for a crate that can't be read leads to.
const QByteArray crateOfTheAdded = crateVersion() + crateEntry(u"b.mp3");

SeratoLibrary::Location libraryIn(const QString &folder)
{
    return {u"Test"_s, QUrl::fromLocalFile(folder + u"/_Serato_"_s), true, true};
}

bool addOne(const QString &folder)
{
    return addTracks({u"b.mp3"_s}, u"Mix"_s, libraryIn(folder)).has_value();
}

/// Empty if the crate is one of the expected, alone in its folder but for a temporary of its own,
/// and can be added to.
QString troubleWith(const QString &folder, const QByteArrayList &expected, const QByteArray &after)
{
    const QString file = folder + u'/' + crateName;
    const QByteArray found = contentOf(file);
    if (!expected.contains(found))
        return u"the crate is neither the old nor the new one: "_s +
               QString::fromLatin1(found.toHex());
    for (const QString &name : namesIn(folder + u"/_Serato_/Subcrates"_s)) {
        if (name != u"Mix.crate" && name != u".Mix.crate.twtmp")
            return u"a stray file: "_s + name;
    }
    if (!addOne(folder))
        return u"adding fails from then on"_s;
    const QByteArray then = contentOf(file);
    return then == after || then == found ? QString() : u"adding goes wrong from then on"_s;
}

QList<Interruption> cases()
{
    const auto write = [](const QString &folder) { put(folder + u'/' + crateName, oldCrate); };
    const auto add = [](const QString &folder) { (void)addOne(folder); };
    return {
        {u"killed with a crate there"_s, write, add,
         [](const QString &folder) {
             return troubleWith(folder, {oldCrate, newCrate}, newCrate);
         }},
        {u"killed with no crate there"_s, [](const QString &) {}, add,
         [](const QString &folder) {
             return troubleWith(folder, {"(none)", crateOfTheAdded}, crateOfTheAdded);
         }},
        {u"failing with a crate there"_s, write, add,
         [](const QString &folder) {
             return troubleWith(folder, {oldCrate, newCrate, crateOfTheAdded}, newCrate);
         }},
    };
}

} // namespace

class CrateWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newCrateHoldsVersionAndEntries();
    void newCrateOfNoTracksHoldsTheVersion();
    void whatIsAddedCanBeRead();
    void tracksAreAddedBehindTheEntries_data();
    void tracksAreAddedBehindTheEntries();
    void otherRecordsOfTheFileAreDropped();
    void crateThatCannotBeReadStartsEmpty();
    void damagedCrateKeepsWhatCouldBeRead();
    void folderThatCannotBeMadeFails();
    void crateThatIsAFolderFails();
    void failedWriteLeavesTheOldCrate();
    void crateUrlIsTheFileInTheSubcrates();
    void interruptedWritersLeaveTheOldCrateOrTheNew_data();
    void interruptedWritersLeaveTheOldCrateOrTheNew();
    void failuresLeaveTheOldCrateOrTheNew_data();
    void failuresLeaveTheOldCrateOrTheNew();
};

void CrateWriterTest::newCrateHoldsVersionAndEntries()
{
    const LibraryBuilder library;
    const auto added = addTracks({u"/a.mp3"_s, u"b.mp3"_s}, u"Mix"_s, library.location());
    QVERIFY(added);
    QCOMPARE(*added, 2);
    QCOMPARE(library.folder().read(crateName),
             hex("7672736e" // vrsn
                 "00000038"
                 "0031 002e 0030 002f"                               // "1.0/"
                 "0053 0065 0072 0061 0074 006f 0020"                // "Serato "
                 "0053 0063 0072 0061 0074 0063 0068"                // "Scratch"
                 "004c 0069 0076 0065 0020 0043 0072 0061 0074 0065" // "Live Crate"
                 "6f74726b"                                          // otrk
                 "00000012"
                 "7074726b" // ptrk
                 "0000000a"
                 "0061 002e 006d 0070 0033" // "a.mp3"
                 "6f74726b"                 // otrk
                 "00000012"
                 "7074726b" // ptrk
                 "0000000a"
                 "0062 002e 006d 0070 0033")); // "b.mp3"
    QCOMPARE(library.folder().names(u"_Serato_/Subcrates"_s), QStringList{u"Mix.crate"_s});
}

void CrateWriterTest::newCrateOfNoTracksHoldsTheVersion()
{
    const LibraryBuilder library;
    QCOMPARE(addTracks({}, u"Mix"_s, library.location()).value_or(-1), 0);
    QCOMPARE(library.folder().read(crateName), crateVersion());
}

void CrateWriterTest::whatIsAddedCanBeRead()
{
    const LibraryBuilder library;
    const QStringList paths = {u"Users/Größe.mp3"_s, u"\U0001F600.mp3"_s, u"a.mp3"_s};
    QVERIFY(addTracks(paths, u"50% #1?"_s, library.location()));
    const LoadedCrate crate = CrateStore::load(library.location()).value(0);
    QCOMPARE(crate.name, u"50% #1?"_s);
    QCOMPARE(crate.paths, paths);
}

void CrateWriterTest::tracksAreAddedBehindTheEntries_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("added");
    const QStringList two = {u"b.mp3"_s, u"a.mp3"_s};
    QTest::newRow("three, one of which is there")
        << two << QStringList{u"c.mp3"_s, u"a.mp3"_s, u"d.mp3"_s}
        << QStringList{u"b.mp3"_s, u"a.mp3"_s, u"c.mp3"_s, u"d.mp3"_s} << 2;
    QTest::newRow("the same twice") << two << QStringList{u"c.mp3"_s, u"c.mp3"_s}
                                    << QStringList{u"b.mp3"_s, u"a.mp3"_s, u"c.mp3"_s} << 1;
    QTest::newRow("the same with and without a slash")
        << two << QStringList{u"/c.mp3"_s, u"c.mp3"_s}
        << QStringList{u"b.mp3"_s, u"a.mp3"_s, u"c.mp3"_s} << 1;
    QTest::newRow("none") << two << QStringList() << two << 0;
    QTest::newRow("with a slash, there without") << two << QStringList{u"/a.mp3"_s} << two << 0;
    QTest::newRow("there with a slash, given without")
        << QStringList{u"/a.mp3"_s} << QStringList{u"a.mp3"_s}
        << QStringList{u"/a.mp3"_s, u"a.mp3"_s} << 1;
    QTest::newRow("there with a slash, given with it")
        << QStringList{u"/a.mp3"_s} << QStringList{u"/a.mp3"_s}
        << QStringList{u"/a.mp3"_s, u"a.mp3"_s} << 1;
    QTest::newRow("two slashes keep the second")
        << two << QStringList{u"//a.mp3"_s} << QStringList{u"b.mp3"_s, u"a.mp3"_s, u"/a.mp3"_s}
        << 1;
    QTest::newRow("entries that repeat stay")
        << QStringList{u"a.mp3"_s, u"a.mp3"_s} << QStringList{u"b.mp3"_s}
        << QStringList{u"a.mp3"_s, u"a.mp3"_s, u"b.mp3"_s} << 1;
    QTest::newRow("other letter case is another path")
        << two << QStringList{u"A.mp3"_s} << QStringList{u"b.mp3"_s, u"a.mp3"_s, u"A.mp3"_s} << 1;
}

void CrateWriterTest::tracksAreAddedBehindTheEntries()
{
    QFETCH(const QStringList, before);
    QFETCH(const QStringList, paths);
    QFETCH(const QStringList, after);
    QFETCH(const int, added);
    const auto crateOf = [](const QStringList &entries) {
        QByteArray bytes = crateVersion();
        for (const QString &entry : entries)
            bytes += crateEntry(entry);
        return bytes;
    };
    const LibraryBuilder library;
    library.folder().write(crateName, crateOf(before));
    QCOMPARE(addTracks(paths, u"Mix"_s, library.location()).value_or(-1), added);
    QCOMPARE(library.folder().read(crateName), crateOf(after));
}

void CrateWriterTest::otherRecordsOfTheFileAreDropped()
{
    const LibraryBuilder library;
    library.folder().write(crateName,
                           textRecord("vrsn", u"81.0") + record("osrt", "sort") +
                               trackRecord({record("uknw", "x"), textRecord("ptrk", u"a.mp3")}) +
                               record("ovct", "column"));
    QCOMPARE(addTracks({}, u"Mix"_s, library.location()).value_or(-1), 0);
    QCOMPARE(library.folder().read(crateName), crateVersion() + crateEntry(u"a.mp3"));
}

void CrateWriterTest::crateThatCannotBeReadStartsEmpty()
{
    const LibraryBuilder library;
    const QString file = library.folder().write(crateName, crateVersion() + crateEntry(u"a.mp3"));
    {
        const platform::ScopedFaults faults(
            [=](platform::FileOperation operation, const QString &path) {
                return operation == platform::FileOperation::Read && path == file ? EIO : 0;
            });
        QCOMPARE(addTracks({u"b.mp3"_s}, u"Mix"_s, library.location()).value_or(-1), 1);
    }
    QCOMPARE(library.folder().read(crateName), crateVersion() + crateEntry(u"b.mp3"));
}

void CrateWriterTest::damagedCrateKeepsWhatCouldBeRead()
{
    const LibraryBuilder library;
    library.folder().write(crateName, crateEntry(u"a.mp3") + crateEntry(u"b.mp3").chopped(1));
    QCOMPARE(addTracks({u"c.mp3"_s}, u"Mix"_s, library.location()).value_or(-1), 1);
    QCOMPARE(library.folder().read(crateName),
             crateVersion() + crateEntry(u"a.mp3") + crateEntry(u"c.mp3"));
}

void CrateWriterTest::folderThatCannotBeMadeFails()
{
    const LibraryBuilder library;
    library.folder().write(u"_Serato_/Subcrates"_s, "a file");
    const auto added = addTracks({u"a.mp3"_s}, u"Mix"_s, library.location());
    QVERIFY(!added);
    QCOMPARE(added.error().message, u"The file “Subcrates” couldn't be created: File exists."_s);
    QCOMPARE(library.folder().read(u"_Serato_/Subcrates"_s), QByteArray("a file"));
}

void CrateWriterTest::crateThatIsAFolderFails()
{
    const LibraryBuilder library;
    library.folder().makeFolder(crateName);
    QVERIFY(!addTracks({u"a.mp3"_s}, u"Mix"_s, library.location()));
    QVERIFY(QFileInfo(library.folder().path(crateName)).isDir());
}

void CrateWriterTest::failedWriteLeavesTheOldCrate()
{
    const QByteArray before = crateVersion() + crateEntry(u"a.mp3");
    const QByteArray after = before + crateEntry(u"b.mp3");
    int failures = 0;
    for (int n = 1;; ++n) {
        const LibraryBuilder library;
        library.folder().write(crateName, before);
        int changes = 0;
        bool renamed = false;
        bool added = false;
        {
            // Only the writing side: a crate that can't be read is a case of its own.
            const platform::ScopedFaults faults(
                [&](platform::FileOperation operation, const QString &path) {
                    if (operation == platform::FileOperation::Read || path.endsWith(u".crate"_s))
                        return 0;
                    const bool fails = ++changes == n;
                    renamed |= operation == platform::FileOperation::Rename && !fails;
                    return fails ? ENOSPC : 0;
                });
            added = addTracks({u"b.mp3"_s}, u"Mix"_s, library.location()).has_value();
        }
        QCOMPARE(library.folder().read(crateName), renamed ? after : before);
        QCOMPARE(added, renamed);
        failures += !added;
        if (changes < n)
            break;
    }
    QVERIFY2(failures >= 4, QByteArray::number(failures));
}

void CrateWriterTest::crateUrlIsTheFileInTheSubcrates()
{
    const SeratoLibrary::Location location{u"USB"_s, QUrl::fromLocalFile(u"/v/50%/_Serato_"_s)};
    QCOMPARE(CrateWriter::crateUrl(u"Warm up #1"_s, location).toLocalFile(),
             u"/v/50%/_Serato_/Subcrates/Warm up #1.crate"_s);
}

void CrateWriterTest::interruptedWritersLeaveTheOldCrateOrTheNew_data()
{
    QTest::addColumn<int>("which");
    QTest::newRow("a crate is there") << 0;
    QTest::newRow("no crate and no folder is there") << 1;
}

void CrateWriterTest::interruptedWritersLeaveTheOldCrateOrTheNew()
{
    QFETCH(const int, which);
    const FaultReport report = killAtEachCall(cases()[which]);
    QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
    QVERIFY2(report.calls >= 8, QByteArray::number(report.calls));
}

void CrateWriterTest::failuresLeaveTheOldCrateOrTheNew_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<int>("error");
    QTest::newRow("disk full") << 2 << ENOSPC;
    QTest::newRow("disk gone") << 2 << EIO;
    QTest::newRow("no crate and no folder is there") << 1 << EACCES;
}

void CrateWriterTest::failuresLeaveTheOldCrateOrTheNew()
{
    QFETCH(const int, which);
    QFETCH(const int, error);
    const FaultReport report = failAtEachCall(cases()[which], error);
    QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
    QVERIFY2(report.calls >= 8, QByteArray::number(report.calls));
}

TARNWICK_FAULT_LOOP_MAIN(CrateWriterTest, cases)
#include "crate_writer_test.moc"
