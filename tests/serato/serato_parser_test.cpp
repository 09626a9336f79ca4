#include "serato/serato_parser.h"

#include "platform/fault_gate.h"
#include "support/address_space.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"

#include <QRandomGenerator>
#include <QTest>

#include <cerrno>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

/// The example of docs/formats/serato-tlv.md.
const QByteArray exampleDatabase = hex("7672736e" // vrsn
                                       "00000008"
                                       "0032 002e 0030 002f" // "2.0/"
                                       "6f74726b"            // otrk
                                       "00000024"
                                       "7066696c" // pfil
                                       "0000000a"
                                       "0061 002e 006d 0070 0033" // "a.mp3"
                                       "75747063"                 // utpc
                                       "00000001"
                                       "07"
                                       "626d6973" // bmis
                                       "00000001"
                                       "01");

QStringList tagsOf(const QByteArray &bytes)
{
    QStringList tags;
    SeratoParser::walk(bytes, [&](const SeratoParser::Field &field) { tags << field.tag.text(); });
    return tags;
}

SeratoParser::Field fieldOf(const QByteArray &payload)
{
    return {"tsng"_tag, payload};
}

QStringList titlesIn(const std::vector<SeratoTrack> &tracks)
{
    QStringList titles;
    for (const SeratoTrack &track : tracks)
        titles << track.title;
    return titles;
}

QByteArray titled(QStringView title)
{
    return trackRecord({textRecord("tsng", title)});
}

const QByteArray anEmptyRecord = hex("61626364 00000000");

} // namespace

class SeratoParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void databaseOfTheFormatPageGivesItsTrack();
    void walkVisitsWholeRecordsOnly_data();
    void walkVisitsWholeRecordsOnly();
    void walkTellsHowFarItCame();
    void fieldsOfOneLevelStandInOrder();
    void textPayloads_data();
    void textPayloads();
    void numberPayloads_data();
    void numberPayloads();
    void flagPayloads_data();
    void flagPayloads();
    void damagedDatabaseGivesWhatLiesAheadOfTheDamage_data();
    void damagedDatabaseGivesWhatLiesAheadOfTheDamage();
    void trackWithoutFieldsIsKept_data();
    void trackWithoutFieldsIsKept();
    void otherRecordsOfADatabaseAreSkipped();
    void cratePaths_data();
    void cratePaths();
    void whatCannotBeReadFails_data();
    void whatCannotBeReadFails();
    void missingFileIsNamedInTheFailure();
    void hugeLengthsAllocateNothing();
    void hugeFileOfHolesIsWalkedByItsRules();
    void recordLargerThanTheMemoryFails();
    void hugeFileGetsNoMemoryOnTrust();
    void randomBytesNeverDisturb();
    void recordsPastTheBufferAreRead();
    void notesTellWhatWasLeftOut();
};

void SeratoParserTest::databaseOfTheFormatPageGivesItsTrack()
{
    const TestFolder folder;
    const auto tracks =
        SeratoParser::parseDatabase(folder.write(u"database V2"_s, exampleDatabase));
    QVERIFY(tracks);
    QCOMPARE(tracks->size(), 1);
    QCOMPARE(tracks->front().relativePath, u"a.mp3"_s);
    QCOMPARE(tracks->front().playCount, 7);
    QVERIFY(tracks->front().flaggedMissing);
}

void SeratoParserTest::walkVisitsWholeRecordsOnly_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("tags");
    const QByteArray sound = record("aaaa", "xyz");
    QTest::newRow("nothing") << QByteArray() << QStringList();
    QTest::newRow("7 bytes") << hex("61626364 000000") << QStringList();
    QTest::newRow("8 bytes, length 0") << anEmptyRecord << QStringList{u"abcd"_s};
    QTest::newRow("15 bytes, 7 of them behind the record")
        << anEmptyRecord + hex("61626364 000000") << QStringList{u"abcd"_s};
    QTest::newRow("16 bytes, two empty records")
        << anEmptyRecord + anEmptyRecord << QStringList{u"abcd"_s, u"abcd"_s};
    QTest::newRow("8 bytes, length 1") << hex("61626364 00000001") << QStringList();
    QTest::newRow("payload one byte short")
        << sound + hex("61626364 00000002 00") << QStringList{u"aaaa"_s};
    QTest::newRow("largest length of all")
        << sound + hex("61626364 ffffffff 0000") << QStringList{u"aaaa"_s};
    QTest::newRow("length with the sign bit alone")
        << sound + hex("61626364 80000000 0000") << QStringList{u"aaaa"_s};
    QTest::newRow("tag with high bytes")
        << sound + hex("c3a96b65 00000000") + sound << QStringList{u"aaaa"_s};
    QTest::newRow("tag whose last byte is 80")
        << sound + hex("61626380 00000000") + sound << QStringList{u"aaaa"_s};
    QTest::newRow("tag of control characters and NUL passes")
        << hex("00017f20 00000000") + sound
        << QStringList{QString::fromLatin1("\x00\x01\x7f ", 4), u"aaaa"_s};
}

void SeratoParserTest::walkVisitsWholeRecordsOnly()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, tags);
    QCOMPARE(tagsOf(bytes), tags);
}

void SeratoParserTest::walkTellsHowFarItCame()
{
    const auto ignore = [](const SeratoParser::Field &) {};
    QCOMPARE(SeratoParser::walk(anEmptyRecord + anEmptyRecord, ignore), 16);
    QCOMPARE(SeratoParser::walk(anEmptyRecord + "1234567", ignore), 8);
    QCOMPARE(SeratoParser::walk("1234567", ignore), 0);
}

void SeratoParserTest::fieldsOfOneLevelStandInOrder()
{
    const QByteArray bytes = record("aaaa", record("cccc", "x")) + record("bbbb", "y");
    const std::vector<SeratoParser::Field> fields = SeratoParser::fieldsIn(bytes);
    QCOMPARE(fields.size(), 2);
    QCOMPARE(fields[0].tag, "aaaa"_tag);
    QCOMPARE(fields[0].payload.toByteArray(), record("cccc", "x"));
    QCOMPARE(fields[1].tag, "bbbb"_tag);
    QCOMPARE(fields[1].payload.data(), bytes.constData() + bytes.size() - 1);
}

void SeratoParserTest::textPayloads_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("one byte") << hex("41") << QString();
    QTest::newRow("five bytes") << hex("0041 0042 00") << u"AB"_s;
    QTest::newRow("unpaired high surrogate") << hex("d800 0041") << u"\uFFFDA"_s;
    QTest::newRow("unpaired low surrogate") << hex("dc00 0041") << u"\uFFFDA"_s;
    QTest::newRow("high surrogate at the end") << hex("0041 d83d") << u"A\uFFFD"_s;
    QTest::newRow("surrogates in the wrong order") << hex("de00 d83d") << u"\uFFFD\uFFFD"_s;
    QTest::newRow("surrogate pair") << hex("d83d de00") << u"\U0001F600"_s;
    QTest::newRow("byte-order mark stays") << hex("feff 0041") << u"\uFEFFA"_s;
    QTest::newRow("NUL stays") << hex("0041 0000 0042") << QString(u"A\0B"_s);
}

void SeratoParserTest::textPayloads()
{
    QFETCH(const QByteArray, payload);
    QFETCH(const QString, text);
    QCOMPARE(fieldOf(payload).text(), text);
}

void SeratoParserTest::numberPayloads_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<quint64>("number");
    QTest::newRow("nothing") << QByteArray() << quint64(0);
    QTest::newRow("one byte") << hex("fe") << quint64(254);
    QTest::newRow("three bytes") << hex("010203") << quint64(0x010203);
    QTest::newRow("eight bytes") << hex("ffffffffffffffff") << ~quint64(0);
    QTest::newRow("nine bytes keep the last eight") << hex("010000000000000002") << quint64(2);
}

void SeratoParserTest::numberPayloads()
{
    QFETCH(const QByteArray, payload);
    QFETCH(const quint64, number);
    QCOMPARE(fieldOf(payload).number(), number);
}

void SeratoParserTest::flagPayloads_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<bool>("flag");
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("0") << hex("00") << false;
    QTest::newRow("1") << hex("01") << true;
    QTest::newRow("80") << hex("80") << true;
    QTest::newRow("only the first byte counts") << hex("0001") << false;
}

void SeratoParserTest::flagPayloads()
{
    QFETCH(const QByteArray, payload);
    QFETCH(const bool, flag);
    QCOMPARE(fieldOf(payload).flag(), flag);
}

void SeratoParserTest::damagedDatabaseGivesWhatLiesAheadOfTheDamage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("titles");
    const QByteArray sound = databaseVersion() + titled(u"one") + titled(u"two");
    const QStringList both = {u"one"_s, u"two"_s};
    QTest::newRow("empty file") << QByteArray() << QStringList();
    QTest::newRow("7 bytes") << sound.first(7) << QStringList();
    QTest::newRow("whole") << sound << both;
    QTest::newRow("other format, high byte first") << hex("ff d8 ff e0") + sound << QStringList();
    QTest::newRow("other format, ASCII")
        << "Just some text that is no database" + sound << QStringList();
    QTest::newRow("cut within the last record") << sound.chopped(1) << QStringList{u"one"_s};
    QTest::newRow("trailing bytes") << sound + "1234567" << both;
    QTest::newRow("length past the end in between")
        << titled(u"one") + hex("6f74726b ffffff00") + titled(u"two") << QStringList{u"one"_s};
    QTest::newRow("broken surrogate")
        << trackRecord({record("tsng", hex("d800 0041"))}) << QStringList{u"\uFFFDA"_s};
}

void SeratoParserTest::damagedDatabaseGivesWhatLiesAheadOfTheDamage()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, titles);
    const TestFolder folder;
    const auto tracks = SeratoParser::parseDatabase(folder.write(u"database V2"_s, bytes));
    QVERIFY(tracks);
    QCOMPARE(titlesIn(*tracks), titles);
}

void SeratoParserTest::trackWithoutFieldsIsKept_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("title");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("nonsense") << QByteArray("nonsense, and no field") << QString();
    QTest::newRow("damaged behind the first field")
        << textRecord("tsng", u"one") + hex("74617274 000000ff 0041") << u"one"_s;
}

void SeratoParserTest::trackWithoutFieldsIsKept()
{
    QFETCH(const QByteArray, payload);
    QFETCH(const QString, title);
    const TestFolder folder;
    const QByteArray bytes = record("otrk", payload) + titled(u"next");
    const auto tracks = SeratoParser::parseDatabase(folder.write(u"database V2"_s, bytes));
    QVERIFY(tracks);
    QCOMPARE(titlesIn(*tracks), QStringList({title, u"next"_s}));
    QVERIFY(tracks->front().relativePath.isEmpty());
    QVERIFY(tracks->front().artist.isEmpty());
}

void SeratoParserTest::otherRecordsOfADatabaseAreSkipped()
{
    const TestFolder folder;
    const QByteArray bytes = databaseVersion() + record("oxyz", titled(u"hidden")) +
                             titled(u"one") + record("OTRK", textRecord("tsng", u"upper case"));
    const auto tracks = SeratoParser::parseDatabase(folder.write(u"database V2"_s, bytes));
    QVERIFY(tracks);
    QCOMPARE(titlesIn(*tracks), QStringList{u"one"_s});
}

void SeratoParserTest::cratePaths_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("paths");
    const QByteArray version = textRecord("vrsn", u"1.0/Serato ScratchLive Crate");
    QTest::newRow("empty file") << QByteArray() << QStringList();
    QTest::newRow("version alone") << version << QStringList();
    QTest::newRow("entries in file order") << version + crateEntry(u"b.mp3") + crateEntry(u"a.mp3")
                                           << QStringList{u"b.mp3"_s, u"a.mp3"_s};
    QTest::newRow("leading slash stays") << crateEntry(u"/a.mp3") << QStringList{u"/a.mp3"_s};
    QTest::newRow("empty path adds nothing")
        << crateEntry(u"") + crateEntry(u"a.mp3") << QStringList{u"a.mp3"_s};
    QTest::newRow("the same path twice")
        << crateEntry(u"a.mp3") + crateEntry(u"a.mp3") << QStringList{u"a.mp3"_s, u"a.mp3"_s};
    QTest::newRow("two paths in one entry")
        << trackRecord({textRecord("ptrk", u"a.mp3"), textRecord("ptrk", u"b.mp3")})
        << QStringList{u"a.mp3"_s, u"b.mp3"_s};
    QTest::newRow("sort and column records play no part")
        << version + record("osrt", textRecord("ptrk", u"x")) + textRecord("ptrk", u"y") +
               crateEntry(u"a.mp3")
        << QStringList{u"a.mp3"_s};
    QTest::newRow("other fields of an entry play no part")
        << trackRecord({textRecord("pfil", u"x"), textRecord("ptrk", u"a.mp3")})
        << QStringList{u"a.mp3"_s};
    QTest::newRow("cut") << (crateEntry(u"a.mp3") + crateEntry(u"b.mp3")).chopped(1)
                         << QStringList{u"a.mp3"_s};
}

void SeratoParserTest::cratePaths()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, paths);
    const TestFolder folder;
    const auto read = SeratoParser::parseCrate(folder.write(u"x.crate"_s, bytes));
    QVERIFY(read);
    QCOMPARE(*read, paths);
}

void SeratoParserTest::whatCannotBeReadFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("fault");
    QTest::newRow("missing") << u"missing"_s << 0;
    QTest::newRow("folder") << u"folder"_s << 0;
    QTest::newRow("pipe without a writer") << u"pipe"_s << 0;
    QTest::newRow("no permission") << u"file"_s << EACCES;
    QTest::newRow("disk fault while reading") << u"file"_s << EIO;
}

void SeratoParserTest::whatCannotBeReadFails()
{
    QFETCH(const QString, name);
    QFETCH(const int, fault);
    const TestFolder folder;
    folder.write(u"file"_s, exampleDatabase);
    folder.makeFolder(u"folder"_s);
    QCOMPARE(::mkfifo(folder.path(u"pipe"_s).toUtf8().constData(), 0600), 0);
    const platform::ScopedFaults faults([=](platform::FileOperation operation, const QString &) {
        const auto refused =
            fault == EIO ? platform::FileOperation::Read : platform::FileOperation::Open;
        return operation == refused ? fault : 0;
    });
    QVERIFY(!SeratoParser::parseDatabase(folder.path(name)));
    QVERIFY(!SeratoParser::parseCrate(folder.path(name)));
}

void SeratoParserTest::missingFileIsNamedInTheFailure()
{
    const TestFolder folder;
    const auto tracks = SeratoParser::parseDatabase(folder.path(u"database V2"_s));
    QVERIFY(!tracks);
    QCOMPARE(tracks.error().message,
             u"The file “database V2” couldn't be opened: No such file or directory."_s);
}

void SeratoParserTest::hugeLengthsAllocateNothing()
{
    const TestFolder folder;
    const QByteArray inside = textRecord("tsng", u"one") + hex("74617274 ffffffff 0041");
    const QByteArray bytes = record("otrk", inside) + hex("6f74726b fffffff0 0041");
    const QString file = folder.write(u"database V2"_s, bytes);
    rusage before{};
    ::getrusage(RUSAGE_SELF, &before);
    const auto tracks = SeratoParser::parseDatabase(file);
    rusage after{};
    ::getrusage(RUSAGE_SELF, &after);
    QVERIFY(tracks);
    QCOMPARE(titlesIn(*tracks), QStringList{u"one"_s});
    QVERIFY(after.ru_maxrss - before.ru_maxrss < 100'000'000);
}

void SeratoParserTest::hugeFileOfHolesIsWalkedByItsRules()
{
    const TestFolder folder;
    const QString file = folder.write(u"database V2"_s, titled(u"one") + hex("786f6c65 07ffffff"));
    QFile large(file);
    QVERIFY(large.resize(large.size() + 0x07FFFFFF)); // 128 MB of one record nobody knows
    QVERIFY(large.open(QIODevice::Append));
    large.write(titled(u"two"));
    large.close();
    const auto tracks = SeratoParser::parseDatabase(file);
    QVERIFY(tracks);
    QCOMPARE(titlesIn(*tracks), QStringList({u"one"_s, u"two"_s}));
}

void SeratoParserTest::recordLargerThanTheMemoryFails()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer takes more memory than this test leaves.");
#endif
    const TestFolder folder;
    const QString file = folder.write(u"database V2"_s, titled(u"one") + hex("6f74726b ffffffff"));
    QFile large(file);
    QVERIFY(large.resize(large.size() + 0xFFFFFFFFLL)); // of holes, which are no bytes on the disk
    const ScopedAddressSpace limit(quint64(1) << 30);
    const QString message = u"The file “database V2” couldn't be read: Cannot allocate memory."_s;
    QCOMPARE(SeratoParser::parseDatabase(file).error().message, message);
    QCOMPARE(SeratoParser::parseCrate(file).error().message, message);
}

void SeratoParserTest::hugeFileGetsNoMemoryOnTrust()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer takes more memory than this test leaves.");
#endif
    const TestFolder folder;
    const QString file = folder.write(u"database V2"_s, titled(u"one") + hex("ff"));
    QVERIFY(QFile::resize(file, qint64(64) << 30));
    const ScopedAddressSpace limit(quint64(1) << 30);
    const auto tracks = SeratoParser::parseDatabase(file);
    QVERIFY2(tracks, qUtf8Printable(tracks ? QString() : tracks.error().message));
    QCOMPARE(titlesIn(*tracks), QStringList{u"one"_s});
}

void SeratoParserTest::randomBytesNeverDisturb()
{
    QRandomGenerator random(20260101);
    const QByteArray sound = databaseVersion() + titled(u"one") + crateEntry(u"a.mp3");
    const TestFolder folder;
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = sound;
        for (int damage = 0; damage < 4; ++damage)
            bytes[random.bounded(int(bytes.size()))] = char(random.bounded(256));
        bytes.truncate(random.bounded(int(bytes.size()) + 1));
        const QString file = folder.write(u"file"_s, bytes);
        QVERIFY(SeratoParser::parseDatabase(file)->size() <= 2);
        QVERIFY(SeratoParser::parseCrate(file)->size() <= 1);
    }
}

void SeratoParserTest::recordsPastTheBufferAreRead()
{
    const TestFolder folder;
    const QString longTitle(500'000, u'x');
    const QByteArray bytes = titled(u"one") + titled(longTitle) + titled(u"two");
    const auto tracks = SeratoParser::parseDatabase(folder.write(u"file"_s, bytes));
    QVERIFY(tracks);
    QCOMPARE(titlesIn(*tracks), QStringList({u"one"_s, longTitle, u"two"_s}));
}

void SeratoParserTest::notesTellWhatWasLeftOut()
{
    const TestFolder folder;
    const QByteArray bytes = titled(u"one") + record("otrk", "rest") + "1234567";
    SeratoParser::Notes notes;
    QVERIFY(SeratoParser::parseDatabase(folder.write(u"file"_s, bytes), &notes));
    QCOMPARE(notes, QStringList({u"otrk 1: the last 4 of 4 bytes are no record"_s,
                                 u"file: the last 7 of 41 bytes are no record"_s}));
    notes.clear();
    QVERIFY(SeratoParser::parseDatabase(folder.write(u"file"_s, titled(u"one")), &notes));
    QCOMPARE(notes, QStringList());
}

QTEST_GUILESS_MAIN(SeratoParserTest)
#include "serato_parser_test.moc"
