#include "serato/serato_document.h"

#include "platform/fault_gate.h"
#include "serato/serato_parser.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"

#include <QTest>

#include <cerrno>
#include <functional>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

/// What stands around the edited tracks and must not change: records and fields nobody here knows.
const QByteArray unknownRecord = record("oxyz", hex("00 01 02 03 ff fe fd"));
const QByteArray unknownField = record("uknw", hex("de ad be ef"));

QByteArray track(QStringView path, const QByteArrayList &more = {})
{
    return trackRecord(QByteArrayList{textRecord("pfil", path)} + more);
}

QByteArray edited(const QByteArray &bytes, const std::function<void(SeratoDocument &)> &edit)
{
    SeratoDocument document = SeratoDocument::fromBytes(bytes);
    edit(document);
    return document.serialize();
}

QByteArray deepCopy(const QByteArray &bytes)
{
    return QByteArray(bytes.constData(), bytes.size());
}

} // namespace

class SeratoDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void relinkOfTheFormatPageTouchesTwoFields();
    void unchangedDocumentIsTheFileByteForByte_data();
    void unchangedDocumentIsTheFileByteForByte();
    void damageIsLostOnWrite_data();
    void damageIsLostOnWrite();
    void recordsStandInFileOrder();
    void tracksAreFoundByPath_data();
    void tracksAreFoundByPath();
    void onlyTracksAreFoundByPath();
    void unknownPathChangesNothing();
    void setTextChangesTheFirstFieldInPlace();
    void setTextAppendsAFieldThatIsNotThere();
    void setTextKeepsASurrogatePair();
    void setTextOfThePathMovesTheTrack();
    void relinkSetsThePathAndClearsTheFlag();
    void relinkAppendsAFlagThatIsNotThere();
    void relinkStoresThePathAsItIsGiven();
    void revertRelinkSetsTheFlag();
    void firstOfSeveralTracksWithAPathIsMeant();
    void firstOfSeveralPathsInATrackIsMeant();
    void removeTrackTwiceRemovesBoth();
    void insertAppendsBehindAllRecords();
    void insertRefusesAPathThatIsThere_data();
    void insertRefusesAPathThatIsThere();
    void insertRefusesWhatIsNoTrack();
    void removedTrackCanBeInsertedAgain();
    void copiesChangeOnTheirOwn();
    void documentOutlivesTheBytesGiven();
    void readFails_data();
    void readFails();
    void writePutsTheDocumentInThePlaceOfTheFile();
    void failedWriteLeavesTheOldFile();
};

void SeratoDocumentTest::relinkOfTheFormatPageTouchesTwoFields()
{
    const QByteArray before = hex("6f74726b" // otrk
                                  "0000001c"
                                  "756e6b77" // uknw
                                  "00000002"
                                  "dead"
                                  "7066696c" // pfil
                                  "0000000a"
                                  "0061 002e 006d 0070 0033"); // "a.mp3"
    const QByteArray after = hex("6f74726b"                    // otrk
                                 "00000029"
                                 "756e6b77" // uknw
                                 "00000002"
                                 "dead"
                                 "7066696c" // pfil
                                 "0000000e"
                                 "0062 002f 0063 002e 006d 0070 0033" // "b/c.mp3"
                                 "626d6973"                           // bmis
                                 "00000001"
                                 "00");
    const TestFolder folder;
    const QString file = folder.write(u"database V2"_s, before);
    auto document = SeratoDocument::read(file);
    QVERIFY(document && document->relink(u"/a.mp3"_s, u"b/c.mp3"_s));
    QVERIFY(document->write(file));
    QCOMPARE(folder.read(u"database V2"_s), after);
}

void SeratoDocumentTest::unchangedDocumentIsTheFileByteForByte_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("version alone") << databaseVersion();
    QTest::newRow("unknown records between the tracks")
        << databaseVersion() + track(u"a.mp3") + unknownRecord + track(u"b.mp3") + unknownRecord;
    QTest::newRow("unknown fields")
        << trackRecord({unknownField, textRecord("pfil", u"a.mp3"), unknownField, record("uknw")});
    QTest::newRow("tracks without fields") << record("otrk") + record("otrk");
    QTest::newRow("odd texts") << trackRecord({record("pfil", hex("d800 41"))});
    QTest::newRow("a tag twice") << trackRecord(
        {textRecord("tsng", u"x"), textRecord("tsng", u"y")});
    QTest::newRow("unknown record that holds nonsense") << record("abcd", "no records in here");
}

void SeratoDocumentTest::unchangedDocumentIsTheFileByteForByte()
{
    QFETCH(const QByteArray, bytes);
    const TestFolder folder;
    const auto document = SeratoDocument::read(folder.write(u"database V2"_s, bytes));
    QVERIFY(document);
    QCOMPARE(document->serialize(), bytes);
    QVERIFY(document->write(folder.path(u"copy"_s)));
    QCOMPARE(folder.read(u"copy"_s), bytes);
}

void SeratoDocumentTest::damageIsLostOnWrite_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("kept");
    const QByteArray sound = databaseVersion() + track(u"a.mp3");
    QTest::newRow("7 bytes alone") << QByteArray("1234567") << QByteArray();
    QTest::newRow("trailing bytes") << sound + "1234567" << sound;
    QTest::newRow("cut record") << sound + track(u"b.mp3").chopped(1) << sound;
    QTest::newRow("high byte in a tag")
        << sound + hex("c3a96b65 00000000") + track(u"b.mp3") << sound;
    QTest::newRow("bytes behind the fields of a track")
        << sound + record("otrk", textRecord("pfil", u"b.mp3") + "rest") + track(u"c.mp3")
        << sound + track(u"b.mp3") + track(u"c.mp3");
    QTest::newRow("track of nonsense")
        << sound + record("otrk", "nonsense, no field") + sound << sound + record("otrk") + sound;
}

void SeratoDocumentTest::damageIsLostOnWrite()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QByteArray, kept);
    QCOMPARE(SeratoDocument::fromBytes(bytes).serialize(), kept);
}

void SeratoDocumentTest::recordsStandInFileOrder()
{
    const QByteArrayList records = {databaseVersion(), track(u"a.mp3", {unknownField}),
                                    unknownRecord, track(u"b.mp3")};
    const SeratoDocument document = SeratoDocument::fromBytes(records.join());
    QCOMPARE(document.recordCount(), 4);
    for (qsizetype i = 0; i < records.size(); ++i)
        QCOMPARE(document.record(i).bytes(), records.at(i));
    QCOMPARE(document.trackIndices(), QList<qsizetype>({1, 3}));
    QCOMPARE(document.trackIndex(u"b.mp3"_s), 3);
    QCOMPARE(document.track(u"a.mp3"_s)->bytes(), records.at(1));
}

void SeratoDocumentTest::tracksAreFoundByPath_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("found");
    const QByteArray plain = utf16(u"Users/a.mp3");
    QTest::newRow("as it stands") << plain << u"Users/a.mp3"_s << true;
    QTest::newRow("slash given") << plain << u"/Users/a.mp3"_s << true;
    QTest::newRow("slash stored") << utf16(u"/Users/a.mp3") << u"Users/a.mp3"_s << true;
    QTest::newRow("both slashes") << utf16(u"/Users/a.mp3") << u"/Users/a.mp3"_s << true;
    QTest::newRow("two slashes given") << plain << u"//Users/a.mp3"_s << false;
    QTest::newRow("two slashes stored, one given") << utf16(u"//a.mp3") << u"/a.mp3"_s << false;
    QTest::newRow("two slashes stored and given") << utf16(u"//a.mp3") << u"//a.mp3"_s << true;
    QTest::newRow("other letter case") << plain << u"users/a.mp3"_s << false;
    QTest::newRow("start of a path") << plain << u"Users/a.mp"_s << false;
    QTest::newRow("other Unicode form") << utf16(u"\u00E4.mp3") << u"a\u0308.mp3"_s << false;
    QTest::newRow("empty") << QByteArray() << QString() << true;
    QTest::newRow("slash alone is the empty path") << QByteArray() << u"/"_s << true;
    QTest::newRow("odd last byte") << plain + "x" << u"Users/a.mp3"_s << true;
    QTest::newRow("surrogate pair") << utf16(u"\U0001F600.mp3") << u"/\U0001F600.mp3"_s << true;
    QTest::newRow("unpaired surrogate is found by its repair")
        << hex("002f d800 0041") << u"\uFFFDA"_s << true;
    QTest::newRow("unpaired surrogate is not found by itself")
        << hex("d800 0041") << QString(QChar(0xD800)) + u'A' << false;
    QTest::newRow("NUL") << hex("0041 0000") << QString(u"A\0"_s) << true;
}

void SeratoDocumentTest::tracksAreFoundByPath()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const QString, path);
    QFETCH(const bool, found);
    const QByteArray bytes =
        databaseVersion() + track(u"other.mp3") + trackRecord({record("pfil", stored)});
    SeratoDocument document = SeratoDocument::fromBytes(bytes);
    QCOMPARE(document.trackIndex(path).has_value(), found);
    QCOMPARE(document.track(path).has_value(), found);
    QCOMPARE(document.setText(path, "tgen"_tag, u"x"_s), found);
    QCOMPARE(document.record(2).field("tgen"_tag) != nullptr, found);
}

void SeratoDocumentTest::onlyTracksAreFoundByPath()
{
    const QByteArray bytes = record("oxyz", textRecord("pfil", u"a.mp3")) + record("abcd");
    SeratoDocument document = SeratoDocument::fromBytes(bytes);
    QCOMPARE(document.trackIndex(u"a.mp3"_s), std::nullopt);
    QCOMPARE(document.trackIndex(QString()), std::nullopt);
    QVERIFY(!document.removeTrack(QString()));
}

void SeratoDocumentTest::unknownPathChangesNothing()
{
    const QByteArray bytes = databaseVersion() + track(u"a.mp3");
    SeratoDocument document = SeratoDocument::fromBytes(bytes);
    QVERIFY(!document.setText(u"b.mp3"_s, "tgen"_tag, u"x"_s));
    QVERIFY(!document.relink(u"b.mp3"_s, u"c.mp3"_s));
    QVERIFY(!document.revertRelink(u"b.mp3"_s, u"c.mp3"_s));
    QVERIFY(!document.removeTrack(u"b.mp3"_s));
    QVERIFY(!document.track(u"b.mp3"_s));
    QCOMPARE(document.serialize(), bytes);
}

void SeratoDocumentTest::setTextChangesTheFirstFieldInPlace()
{
    const auto file = [](QStringView genre) {
        return databaseVersion() + track(u"z.mp3") +
               track(u"a.mp3", {unknownField, textRecord("tgen", genre), textRecord("tsng", u"T"),
                                textRecord("tgen", u"second")}) +
               unknownRecord;
    };
    const QByteArray changed = edited(file(u"House"), [](SeratoDocument &document) {
        QVERIFY(document.setText(u"/a.mp3"_s, "tgen"_tag, u"Deep House, Größe"_s));
    });
    QCOMPARE(changed, file(u"Deep House, Größe"));
}

void SeratoDocumentTest::setTextAppendsAFieldThatIsNotThere()
{
    const QByteArray changed =
        edited(track(u"a.mp3", {unknownField}) + track(u"b.mp3"), [](SeratoDocument &document) {
            QVERIFY(document.setText(u"a.mp3"_s, "tgen"_tag, u"x"_s));
        });
    QCOMPARE(changed, track(u"a.mp3", {unknownField, textRecord("tgen", u"x")}) + track(u"b.mp3"));
}

void SeratoDocumentTest::setTextKeepsASurrogatePair()
{
    const QByteArray changed = edited(track(u"a.mp3"), [](SeratoDocument &document) {
        QVERIFY(document.setText(u"a.mp3"_s, "tsng"_tag, u"\U0001F600"_s));
        QCOMPARE(document.track(u"a.mp3"_s)->field("tsng"_tag)->text(), u"\U0001F600"_s);
    });
    QCOMPARE(changed, track(u"a.mp3", {record("tsng", hex("d83d de00"))}));
}

void SeratoDocumentTest::setTextOfThePathMovesTheTrack()
{
    SeratoDocument document = SeratoDocument::fromBytes(track(u"a.mp3"));
    QVERIFY(document.setText(u"a.mp3"_s, "pfil"_tag, u"b.mp3"_s));
    QCOMPARE(document.trackIndex(u"a.mp3"_s), std::nullopt);
    QCOMPARE(document.trackIndex(u"b.mp3"_s), 0);
}

void SeratoDocumentTest::relinkSetsThePathAndClearsTheFlag()
{
    const QByteArray before = trackRecord(
        {unknownField, flagRecord("bmis", true), textRecord("pfil", u"old.mp3"), unknownField});
    const QByteArray after = trackRecord({unknownField, flagRecord("bmis", false),
                                          textRecord("pfil", u"new/longer.mp3"), unknownField});
    const QByteArray changed =
        edited(unknownRecord + before + unknownRecord, [](SeratoDocument &document) {
            QVERIFY(document.relink(u"/old.mp3"_s, u"new/longer.mp3"_s));
        });
    QCOMPARE(changed, unknownRecord + after + unknownRecord);
}

void SeratoDocumentTest::relinkAppendsAFlagThatIsNotThere()
{
    const QByteArray changed =
        edited(track(u"old.mp3", {unknownField}), [](SeratoDocument &document) {
            QVERIFY(document.relink(u"old.mp3"_s, u"new.mp3"_s));
        });
    QCOMPARE(changed, track(u"new.mp3", {unknownField, flagRecord("bmis", false)}));
    const QByteArray pathless = edited(trackRecord({unknownField}), [](SeratoDocument &document) {
        QVERIFY(document.relink(QString(), u"new.mp3"_s));
    });
    QCOMPARE(pathless, trackRecord({unknownField, textRecord("pfil", u"new.mp3"),
                                    flagRecord("bmis", false)}));
}

void SeratoDocumentTest::relinkStoresThePathAsItIsGiven()
{
    const QByteArray changed = edited(track(u"old.mp3"), [](SeratoDocument &document) {
        QVERIFY(document.relink(u"old.mp3"_s, u"/new.mp3"_s));
    });
    QCOMPARE(changed, track(u"/new.mp3", {flagRecord("bmis", false)}));
}

void SeratoDocumentTest::revertRelinkSetsTheFlag()
{
    SeratoDocument document =
        SeratoDocument::fromBytes(track(u"old.mp3", {flagRecord("bmis", false)}));
    QVERIFY(document.relink(u"old.mp3"_s, u"new.mp3"_s));
    QVERIFY(document.revertRelink(u"/new.mp3"_s, u"old.mp3"_s));
    QCOMPARE(document.serialize(), track(u"old.mp3", {flagRecord("bmis", true)}));
    QCOMPARE(document.track(u"old.mp3"_s)->field("bmis"_tag)->byte(), 1);
}

void SeratoDocumentTest::firstOfSeveralTracksWithAPathIsMeant()
{
    const QByteArray twin = track(u"a.mp3");
    const auto genre = [](SeratoDocument &document) {
        QVERIFY(document.setText(u"a.mp3"_s, "tgen"_tag, u"x"_s));
    };
    QCOMPARE(edited(unknownRecord + twin + twin, genre),
             unknownRecord + track(u"a.mp3", {textRecord("tgen", u"x")}) + twin);
    const auto relink = [](SeratoDocument &document) {
        QVERIFY(document.relink(u"a.mp3"_s, u"b.mp3"_s));
        QCOMPARE(document.trackIndex(u"a.mp3"_s), 2);
    };
    QCOMPARE(edited(unknownRecord + twin + twin, relink),
             unknownRecord + track(u"b.mp3", {flagRecord("bmis", false)}) + twin);
}

void SeratoDocumentTest::firstOfSeveralPathsInATrackIsMeant()
{
    SeratoDocument document =
        SeratoDocument::fromBytes(track(u"first.mp3", {textRecord("pfil", u"second.mp3")}));
    QCOMPARE(document.trackIndex(u"second.mp3"_s), std::nullopt);
    QVERIFY(document.relink(u"first.mp3"_s, u"new.mp3"_s));
    QCOMPARE(document.serialize(),
             track(u"new.mp3", {textRecord("pfil", u"second.mp3"), flagRecord("bmis", false)}));
}

void SeratoDocumentTest::removeTrackTwiceRemovesBoth()
{
    const QByteArray first = track(u"a.mp3", {textRecord("tsng", u"first")});
    const QByteArray second = track(u"/a.mp3", {textRecord("tsng", u"second")});
    SeratoDocument document =
        SeratoDocument::fromBytes(databaseVersion() + first + unknownRecord + second);
    QVERIFY(document.removeTrack(u"a.mp3"_s));
    QCOMPARE(document.serialize(), databaseVersion() + unknownRecord + second);
    QVERIFY(document.removeTrack(u"a.mp3"_s));
    QCOMPARE(document.serialize(), databaseVersion() + unknownRecord);
    QVERIFY(!document.removeTrack(u"a.mp3"_s));
    QCOMPARE(document.trackIndices(), QList<qsizetype>());
}

void SeratoDocumentTest::insertAppendsBehindAllRecords()
{
    const QByteArray added = track(u"b.mp3", {unknownField});
    const QByteArray changed =
        edited(track(u"a.mp3") + unknownRecord, [&](SeratoDocument &document) {
            QVERIFY(document.insert(DocumentRecord::fromBytes(added)));
            QCOMPARE(document.trackIndex(u"/b.mp3"_s), 2);
        });
    QCOMPARE(changed, track(u"a.mp3") + unknownRecord + added);
}

void SeratoDocumentTest::insertRefusesAPathThatIsThere_data()
{
    QTest::addColumn<QByteArray>("there");
    QTest::addColumn<QByteArray>("added");
    QTest::newRow("same path") << track(u"a.mp3") << track(u"a.mp3", {unknownField});
    QTest::newRow("with a slash") << track(u"a.mp3") << track(u"/a.mp3");
    QTest::newRow("slash in the file") << track(u"/a.mp3") << track(u"a.mp3");
    QTest::newRow("no path") << trackRecord({unknownField}) << record("otrk");
    QTest::newRow("no path, and an empty one") << track(u"") << record("otrk");
}

void SeratoDocumentTest::insertRefusesAPathThatIsThere()
{
    QFETCH(const QByteArray, there);
    QFETCH(const QByteArray, added);
    SeratoDocument document = SeratoDocument::fromBytes(there);
    QVERIFY(!document.insert(DocumentRecord::fromBytes(added)));
    QCOMPARE(document.serialize(), there);
    SeratoDocument empty;
    QVERIFY(empty.insert(DocumentRecord::fromBytes(added)));
    QCOMPARE(empty.serialize(), added);
}

void SeratoDocumentTest::insertRefusesWhatIsNoTrack()
{
    SeratoDocument document = SeratoDocument::fromBytes(track(u"a.mp3"));
    QVERIFY(!document.insert(DocumentRecord::fromBytes(unknownRecord)));
    QVERIFY(!document.insert({"vrsn"_tag}));
    QCOMPARE(document.serialize(), track(u"a.mp3"));
}

void SeratoDocumentTest::removedTrackCanBeInsertedAgain()
{
    const QByteArray bytes = track(u"a.mp3", {unknownField}) + track(u"b.mp3");
    SeratoDocument document = SeratoDocument::fromBytes(bytes);
    const auto removed = document.track(u"a.mp3"_s);
    QVERIFY(removed && document.removeTrack(u"a.mp3"_s) && document.insert(*removed));
    QCOMPARE(document.serialize(), track(u"b.mp3") + track(u"a.mp3", {unknownField}));
}

void SeratoDocumentTest::copiesChangeOnTheirOwn()
{
    const QByteArray bytes = track(u"a.mp3") + track(u"b.mp3");
    std::optional<SeratoDocument> original = SeratoDocument::fromBytes(deepCopy(bytes));
    QVERIFY(original->setText(u"b.mp3"_s, "tgen"_tag, u"x"_s));
    SeratoDocument copy = *original;
    QVERIFY(copy.removeTrack(u"a.mp3"_s));
    QVERIFY(original->relink(u"b.mp3"_s, u"c.mp3"_s));
    QVERIFY(original->trackIndex(u"a.mp3"_s));
    original.reset();
    QCOMPARE(copy.serialize(), track(u"b.mp3", {textRecord("tgen", u"x")}));
}

void SeratoDocumentTest::documentOutlivesTheBytesGiven()
{
    QByteArray bytes = deepCopy(track(u"a.mp3"));
    const SeratoDocument document = SeratoDocument::fromBytes(bytes);
    bytes.fill('x');
    QCOMPARE(document.serialize(), track(u"a.mp3"));
}

void SeratoDocumentTest::readFails_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("message");
    QTest::newRow("missing") << 0
                             << u"The file “none” couldn't be opened: No such file or directory."_s;
    QTest::newRow("no permission")
        << EACCES << u"The file “none” couldn't be opened: Permission denied."_s;
}

void SeratoDocumentTest::readFails()
{
    QFETCH(const int, fault);
    QFETCH(const QString, message);
    const TestFolder folder;
    const platform::ScopedFaults faults(
        [=](platform::FileOperation, const QString &) { return fault; });
    const auto document = SeratoDocument::read(folder.path(u"none"_s));
    QVERIFY(!document);
    QCOMPARE(document.error().message, message);
}

void SeratoDocumentTest::writePutsTheDocumentInThePlaceOfTheFile()
{
    const TestFolder folder;
    const QString file =
        folder.write(u"database V2"_s, databaseVersion() + track(u"a.mp3") + "rest");
    auto document = SeratoDocument::read(file);
    QVERIFY(document->setText(u"a.mp3"_s, "tgen"_tag, u"x"_s));
    QVERIFY(document->write(file));
    QCOMPARE(folder.read(u"database V2"_s),
             databaseVersion() + track(u"a.mp3", {textRecord("tgen", u"x")}));
    QCOMPARE(folder.names(), QStringList{u"database V2"_s});
    QVERIFY(document->write(file));
    QCOMPARE(folder.read(u"database V2"_s), document->serialize());
}

void SeratoDocumentTest::failedWriteLeavesTheOldFile()
{
    const QByteArray old = databaseVersion() + track(u"a.mp3");
    SeratoDocument document = SeratoDocument::fromBytes(old);
    QVERIFY(document.setText(u"a.mp3"_s, "tgen"_tag, u"x"_s));
    bool failed = true;
    int n = 1;
    for (; failed && n < 50; ++n) {
        const TestFolder folder;
        const QString file = folder.write(u"database V2"_s, old);
        int calls = 0;
        int renamedAt = 0;
        {
            const platform::ScopedFaults faults(
                [&](platform::FileOperation operation, const QString &) {
                    ++calls;
                    if (operation == platform::FileOperation::Rename && calls != n)
                        renamedAt = calls;
                    return calls == n ? EIO : 0;
                });
            failed = !document.write(file);
        }
        const QByteArray now = folder.read(u"database V2"_s);
        QVERIFY2(now == (renamedAt > 0 ? document.serialize() : old), QByteArray::number(n));
        QVERIFY(!failed || renamedAt == 0);
        if (calls < n)
            break;
        failed = true;
    }
    QVERIFY2(n > 5 && n < 50, QByteArray::number(n));
}

QTEST_GUILESS_MAIN(SeratoDocumentTest)
#include "serato_document_test.moc"
