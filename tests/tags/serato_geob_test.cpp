#include "tags/serato_geob.h"

#include "support/tag_builder.h"

#include <QRandomGenerator>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;
using SeratoGEOB::Frame;
using SeratoGEOB::Tag;

Q_DECLARE_METATYPE(std::vector<Frame>)
Q_DECLARE_METATYPE(std::optional<QString>)

namespace {

const QByteArray smallFile = "ID3"              // magic
                             "\x03\x00"         // version 2.3, revision 0
                             "\x00"             // flags
                             "\x00\x00\x00\x0e" // size: 14 bytes
                             "TIT2"             // a frame
                             "\x00\x00\x00\x02" //   2 bytes
                             "\x00\x00"         //   flags
                             "\x00\x41"         //   Latin-1, "A"
                             "\x00\x00"         // padding
                             "\xff\xfb"_ba;     // audio

const QByteArray smallFileWritten = "ID3"              // magic
                                    "\x03\x00"         // version 2.3, revision 0
                                    "\x00"             // flags
                                    "\x00\x00\x00\x0c" // size: 12 bytes
                                    "TIT2"             // the frame
                                    "\x00\x00\x00\x02" //   2 bytes
                                    "\x00\x00"         //   flags
                                    "\x00\x41"         //   Latin-1, "A"
                                    "\xff\xfb"_ba;     // audio

std::vector<QString> idsOf(const std::optional<Tag> &tag)
{
    std::vector<QString> ids;
    for (const Frame &frame : tag.value().frames)
        ids.push_back(frame.id);
    return ids;
}

} // namespace

class SeratoGeobTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesASmallFile();
    void readsSizesAsTheVersionStatesThem();
    void refusesWhatIsNoEditableTag_data();
    void refusesWhatIsNoEditableTag();
    void acceptsFlagsUpTo3F();
    void findsFrames_data();
    void findsFrames();
    void keepsAudioBehindTheTag_data();
    void keepsAudioBehindTheTag();
    void letsTheBytesOfAMalformedSizeOverlap();
    void writesRevisionAndFlagsAsZero();
    void writesEveryByteOfSizesInItsPlace();
    void keepsFrameFlags();
    void cutsAnIdToFourBytesOfUtf8();
    void keepsNulInAnId();
    void countsTheBytesOfAnIdAsWritten();
    void givesTheDescriptionOfAnObject_data();
    void givesTheDescriptionOfAnObject();
    void knowsCueFramesByTheirExactDescription();
    void listsCueDescriptionsInOrder();
    void writesTheTagAloneAheadOfTheAudio();
    void takesMovedBytesForTheAudioWithoutCopying();
    void leavesTheCallersBytesAlone();
    void survivesDamage();
};

void SeratoGeobTest::readsAndWritesASmallFile()
{
    const auto tag = SeratoGEOB::readTag(smallFile);
    QVERIFY(tag.has_value());
    QCOMPARE(*tag, (Tag{3, {{u"TIT2"_s, {0, 0}, "\0A"_ba}}, "\xff\xfb"_ba}));
    QCOMPARE(SeratoGEOB::serialize(*tag), smallFileWritten);
    QCOMPARE(SeratoGEOB::readTag(smallFileWritten), tag);
}

void SeratoGeobTest::readsSizesAsTheVersionStatesThem()
{
    // 0x80 plain, and "01 00" in bytes of seven bits.
    const QByteArray payload(128, 'x');
    for (const int major : {0, 1, 2, 3, 4, 5, 255}) {
        const QByteArray size = major == 4 ? "\x00\x00\x01\x00"_ba : "\x00\x00\x00\x80"_ba;
        const QByteArray file = TagBuilder(major).raw("PRIV" + size + zeros(2) + payload).file();
        const auto tag = SeratoGEOB::readTag(file);
        QVERIFY(tag.has_value());
        QCOMPARE(int(tag->major), major);
        QCOMPARE(tag->frames, (std::vector<Frame>{{u"PRIV"_s, {0, 0}, payload}}));
        QCOMPARE(SeratoGEOB::serialize(*tag), file);
    }
}

void SeratoGeobTest::refusesWhatIsNoEditableTag_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray frames = TagBuilder().frame("TIT2", "x").file();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("ten bytes") << "ID3\x03\0\0\0\0\0\0"_ba;
    QTest::newRow("no tag") << "\xff\xfb" + frames;
    QTest::newRow("first letter") << "iD3" + frames.sliced(3);
    QTest::newRow("second letter") << "Id3" + frames.sliced(3);
    QTest::newRow("third character") << "ID2" + frames.sliced(3);
    QTest::newRow("extended header") << TagBuilder().flags(0x40).frame("TIT2", "x").file();
    QTest::newRow("unsynchronised") << TagBuilder().flags(0x80).frame("TIT2", "x").file();
    QTest::newRow("all flags") << TagBuilder().flags(0xFF).frame("TIT2", "x").file();
    QTest::newRow("one byte past the end")
        << TagBuilder().frame("TIT2", "x").statedSize(12).audio({}).file();
    QTest::newRow("far past the end") << TagBuilder().statedSize((1 << 28) - 1).file();
    QTest::newRow("farthest past the end")
        << "ID3\x03\0\0\xff\xff\xff\xff"_ba + QByteArray(100, 'x');
}

void SeratoGeobTest::refusesWhatIsNoEditableTag()
{
    QFETCH(QByteArray, file);
    QVERIFY(!SeratoGEOB::readTag(file).has_value());
}

void SeratoGeobTest::acceptsFlagsUpTo3F()
{
    for (const int flags : {0x00, 0x01, 0x0F, 0x10, 0x20, 0x3F}) {
        const auto tag = SeratoGEOB::readTag(TagBuilder().flags(flags).frame("TIT2", "x").file());
        QCOMPARE(idsOf(tag), std::vector<QString>{u"TIT2"_s});
    }
}

void SeratoGeobTest::findsFrames_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<std::vector<QString>>("ids");
    const auto row = [](const char *name, const TagBuilder &builder,
                        const std::vector<QString> &ids) {
        QTest::newRow(name) << builder.file() << ids;
    };
    const std::vector<QString> one{u"TIT2"_s};
    const auto title = [](int major = 3) { return TagBuilder(major).frame("TIT2", "x"); };
    row("size 0", TagBuilder(), {});
    row("size 9 with bytes", TagBuilder().raw("TIT2\0\0\0\0\0"_ba), {});
    row("size 10", TagBuilder().raw("TIT2\0\0\0\0\0\0"_ba), one);
    row("padding alone", TagBuilder().padding(500), {});
    row("a frame behind a zero byte", TagBuilder().padding(1).frame("TIT2", "x"), {});
    row("one frame up to the end", title(), one);
    row("one frame, major 4", title(4), one);
    row("padding of one byte", title().padding(1), one);
    row("padding of ten bytes", title().padding(10), one);
    row("padding behind a frame", title().padding(900), one);
    row("a frame behind the padding", title().padding(10).frame("TPE1", "y"), one);
    row("nine bytes that are no header", title().raw("TPE1\0\0\0\0\0"_ba), one);
    row("ten bytes that are a header", title().raw("TPE1\0\0\0\0\0\0"_ba), {u"TIT2"_s, u"TPE1"_s});
    row("an empty payload", TagBuilder().frame("TIT2", {}).frame("TPE1", {}),
        {u"TIT2"_s, u"TPE1"_s});
    row("the same frame twice", title().frame("TIT2", "x"), {u"TIT2"_s, u"TIT2"_s});
    row("a first frame that overruns", TagBuilder().raw("TIT2\0\0\0\2\0\0x"_ba), {});
    row("a later frame that overruns", title().raw("TPE1\0\0\0\2\0\0x"_ba), one);
    row("frames behind one that overruns", title().raw("TPE1\0\0\1\0\0\0x"_ba).frame("TALB", "z"),
        one);
    row("a size of all ones", title().raw("TPE1\xff\xff\xff\xff\0\0x"_ba), one);
    row("a size of all ones, major 4", title(4).raw("TPE1\xff\xff\xff\xff\0\0x"_ba), one);
    row("unknown frames", TagBuilder().frame("ABCD", "x").frame("X9 !", "y"),
        {u"ABCD"_s, u"X9 !"_s});
    row("a title of version 2.2", TagBuilder(2).raw("TT2\0\0\2\0A"_ba).padding(50), {});
}

void SeratoGeobTest::findsFrames()
{
    QFETCH(QByteArray, file);
    const auto tag = SeratoGEOB::readTag(file);
    QVERIFY(tag.has_value());
    QTEST(idsOf(tag), "ids");
    QCOMPARE(tag->audio, "audio"_ba);
}

void SeratoGeobTest::keepsAudioBehindTheTag_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("audio");
    QTest::addColumn<QByteArray>("written");
    const QByteArray empty = "ID3\x03\0\0\0\0\0\0"_ba;
    const auto row = [](const char *name, const TagBuilder &builder, const QByteArray &audio,
                        const QByteArray &written) {
        QTest::newRow(name) << builder.file() << audio << written;
    };
    row("eleven bytes", TagBuilder().audio("x"), "x", empty + "x");
    row("no audio", TagBuilder().frame("TIT2", "x").audio({}), {},
        TagBuilder().frame("TIT2", "x").audio({}).file());
    row("bytes of a tag too small for a frame", TagBuilder().raw("123456789"), "audio",
        empty + "audio");
    row("padding", TagBuilder().frame("TIT2", "x").padding(700), "audio",
        TagBuilder().frame("TIT2", "x").file());
    row("a footer",
        TagBuilder(4)
            .flags(0x10)
            .frame("TIT2", "x")
            .audio("3DI_footer"
                   "audio"),
        "3DI_footer"
        "audio",
        TagBuilder(4)
            .frame("TIT2", "x")
            .audio("3DI_footer"
                   "audio")
            .file());
    row("another tag", TagBuilder().audio(smallFile), smallFile, empty + smallFile);
    row("a frame that overruns into the audio",
        TagBuilder().raw("TIT2\0\0\0\7\0\0x"_ba).audio("audio"), "audio", empty + "audio");
}

void SeratoGeobTest::keepsAudioBehindTheTag()
{
    QFETCH(QByteArray, file);
    const auto tag = SeratoGEOB::readTag(file);
    QVERIFY(tag.has_value());
    QTEST(tag->audio, "audio");
    QTEST(SeratoGEOB::serialize(*tag), "written");
}

void SeratoGeobTest::letsTheBytesOfAMalformedSizeOverlap()
{
    // 0x4080 in the header and in the frame. Sums would be 0x8080, seven bits of each 0x4000.
    const QByteArray payload(0x4080 - 10, 'p');
    const QByteArray file = "ID3\x04\0\0\0\x01\x80\x80"_ba + "PRIV" +
                            syncsafeBytes(payload.size()) + zeros(2) + payload + "audio";
    QCOMPARE(SeratoGEOB::readTag(file)->audio, "audio"_ba);
    const QByteArray framed =
        TagBuilder(4).raw("PRIV\0\x01\x80\x80\0\0"_ba + QByteArray(0x4080, 'p')).file();
    QCOMPARE(SeratoGEOB::readTag(framed)->frames.at(0).payload.size(), 0x4080);
}

void SeratoGeobTest::writesRevisionAndFlagsAsZero()
{
    const auto tag =
        SeratoGEOB::readTag(TagBuilder(4).revision(7).flags(0x3F).frame("TIT2", "x").file());
    QCOMPARE(SeratoGEOB::serialize(tag.value()), TagBuilder(4).frame("TIT2", "x").file());
}

void SeratoGeobTest::writesEveryByteOfSizesInItsPlace()
{
    const QByteArray large(0x123456, 'x');
    const QByteArray plain = SeratoGEOB::serialize({3, {{u"PRIV"_s, {0, 0}, large}}, {}});
    QCOMPARE(plain.first(20), "ID3\x03\0\0\x00\x48\x68\x60PRIV\x00\x12\x34\x56\0\0"_ba);
    const QByteArray safe = SeratoGEOB::serialize({4, {{u"PRIV"_s, {0, 0}, large}}, {}});
    QCOMPARE(safe.first(20), "ID3\x04\0\0\x00\x48\x68\x60PRIV\x00\x48\x68\x56\0\0"_ba);
    QCOMPARE(SeratoGEOB::readTag(plain)->frames.at(0).payload, large);
    QCOMPARE(SeratoGEOB::readTag(safe)->frames.at(0).payload, large);
}

void SeratoGeobTest::keepsFrameFlags()
{
    const QByteArray file =
        TagBuilder().frame("TIT2", "x", "\x40\x80"_ba).frame("TPE1", "y", "\xff\xff"_ba).file();
    const auto tag = SeratoGEOB::readTag(file);
    QCOMPARE(tag.value().frames[0].flags, (std::array<quint8, 2>{0x40, 0x80}));
    QCOMPARE(SeratoGEOB::serialize(*tag), file);
}

void SeratoGeobTest::cutsAnIdToFourBytesOfUtf8()
{
    const auto writtenId = [](const QByteArray &id) {
        const auto tag = SeratoGEOB::readTag(TagBuilder().frame(id, "x").file());
        return SeratoGEOB::serialize(tag.value()).sliced(10, 4);
    };
    QCOMPARE(SeratoGEOB::readTag(TagBuilder().frame("T\xe9T2", "x").file())->frames[0].id,
             u"T\u00e9T2"_s);
    QCOMPARE(writtenId("T\xe9T2"), "T\xc3\xa9T"_ba);
    QCOMPARE(writtenId("TIT\x80"), "TIT\xc2"_ba);
    QCOMPARE(writtenId("\xff\xff\xff\xff"), "\xc3\xbf\xc3\xbf"_ba);
    QCOMPARE(writtenId("TIT\x7f"), "TIT\x7f"_ba);
}

void SeratoGeobTest::keepsNulInAnId()
{
    const QByteArray file = TagBuilder().frame("T\0T2"_ba, "x").file();
    const auto tag = SeratoGEOB::readTag(file);
    QCOMPARE(tag.value().frames.at(0).id.size(), 4);
    QCOMPARE(SeratoGEOB::serialize(*tag), file);
}

void SeratoGeobTest::countsTheBytesOfAnIdAsWritten()
{
    const QByteArray written = SeratoGEOB::serialize({3, {{u"TT2"_s, {0, 0}, "x"}}, "audio"});
    QCOMPARE(written, "ID3\x03\0\0\0\0\0\x0a"
                      "TT2\0\0\0\1\0\0x"
                      "audio"_ba);
}

void SeratoGeobTest::givesTheDescriptionOfAnObject_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<std::optional<QString>>("description");
    const auto row = [](const char *name, const QString &id, const QByteArray &payload,
                        const std::optional<QString> &description = {}) {
        QTest::newRow(name) << id << payload << description;
    };
    const QString object = u"GEOB"_s;
    const QByteArray cues = objectPayload("Serato Markers2", "cues");
    row("cues", object, cues, u"Serato Markers2"_s);
    row("no data behind it", object, objectPayload("Serato BeatGrid", {}), u"Serato BeatGrid"_s);
    row("a file name", object, "\0a\0file\0desc\0data"_ba, u"desc"_s);
    row("four zero bytes", object, zeros(4), u""_s);
    row("three zero bytes", object, zeros(3));
    row("two bytes", object, zeros(2));
    row("empty", object, {});
    row("no third terminator", object, "\0a\0b"_ba);
    row("a third text up to the end", object, "\0a\0b\0Serato Markers2"_ba);
    row("no terminator", object, "\0application"_ba);
    row("another encoding byte", object, "\x03" + cues.sliced(1), u"Serato Markers2"_s);
    row("Latin-1", object, "\0\0\0caf\xe9\0"_ba, u"caf\u00e9"_s);
    row("UTF-16", object, utf16ObjectPayload("Serato Markers2", "cues"), u""_s);
    row("another frame", u"PRIV"_s, cues);
    row("lower case", u"geob"_s, cues);
}

void SeratoGeobTest::givesTheDescriptionOfAnObject()
{
    QFETCH(QString, id);
    QFETCH(QByteArray, payload);
    QTEST((Frame{id, {0, 0}, payload}.geobDescriptor()), "description");
}

void SeratoGeobTest::knowsCueFramesByTheirExactDescription()
{
    const auto isCue = [](const QByteArray &description, const QString &id = u"GEOB"_s) {
        return SeratoGEOB::isCueFrame({id, {0, 0}, objectPayload(description, "cues")});
    };
    QVERIFY(isCue("Serato Markers2"));
    QVERIFY(isCue("Serato Markers_"));
    QVERIFY(isCue("Serato BeatGrid"));
    QVERIFY(!isCue("Serato Autotags"));
    QVERIFY(!isCue("serato markers2"));
    QVERIFY(!isCue("Serato Markers"));
    QVERIFY(!isCue("Serato Markers2 "));
    QVERIFY(!isCue({}));
    QVERIFY(!isCue("Serato Markers2", u"PRIV"_s));
}

void SeratoGeobTest::listsCueDescriptionsInOrder()
{
    QCOMPARE(SeratoGEOB::cueDescriptors(),
             (QStringList{u"Serato Markers2"_s, u"Serato Markers_"_s, u"Serato BeatGrid"_s}));
}

void SeratoGeobTest::writesTheTagAloneAheadOfTheAudio()
{
    const auto tag = SeratoGEOB::readTag(smallFile);
    QCOMPARE(SeratoGEOB::serializeTagAlone(tag.value()), smallFileWritten.chopped(2));
}

void SeratoGeobTest::takesMovedBytesForTheAudioWithoutCopying()
{
    QByteArray file = TagBuilder().frame("TIT2", "x").audio(QByteArray(1000, 'a')).file();
    const char *bytes = file.constData();
    const auto tag = SeratoGEOB::readTag(std::move(file));
    QCOMPARE(tag.value().audio, QByteArray(1000, 'a'));
    QCOMPARE(tag->audio.constData(), bytes + 21);
}

void SeratoGeobTest::leavesTheCallersBytesAlone()
{
    const QByteArray file = smallFile;
    auto tag = SeratoGEOB::readTag(file);
    tag.value().audio[0] = '!';
    tag->frames[0].payload[0] = '!';
    QCOMPARE(file, smallFile);
}

/// Every byte of a tag changed in every bit, and every length: whatever is read can be written, and
/// reads back the same.
void SeratoGeobTest::survivesDamage()
{
    for (const int major : {3, 4}) {
        const QByteArray file = TagBuilder(major)
                                    .frame("TIT2", "x", "\x40\0"_ba)
                                    .object("Serato Markers2")
                                    .frame("APIC", QByteArray(200, 'p'))
                                    .padding(15)
                                    .file();
        const auto check = [](const QByteArray &damaged) {
            const auto tag = SeratoGEOB::readTag(damaged);
            if (!tag)
                return;
            const QByteArray written = SeratoGEOB::serialize(*tag);
            QVERIFY(written.size() <= damaged.size());
            QCOMPARE(SeratoGEOB::readTag(written)->audio, tag->audio);
            for (const Frame &frame : tag->frames)
                frame.geobDescriptor();
        };
        for (qsizetype at = 0; at < file.size(); ++at) {
            for (int bit = 0; bit < 8; ++bit) {
                QByteArray damaged = file;
                damaged[at] = char(damaged[at] ^ (1 << bit));
                check(damaged);
            }
            check(file.first(at));
        }
    }
}

QTEST_APPLESS_MAIN(SeratoGeobTest)
#include "serato_geob_test.moc"
