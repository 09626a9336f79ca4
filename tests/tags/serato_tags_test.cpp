#include "tags/serato_tags.h"

#include "platform/fault_gate.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <sys/stat.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(SeratoTags::Presence)
Q_DECLARE_METATYPE(std::optional<double>)

namespace {

constexpr int largest = 7'999'999;

QByteArray zeros(qsizetype count)
{
    return QByteArray(count, '\0');
}

QByteArray syncsafe(int size)
{
    QByteArray bytes;
    for (const int shift : {21, 14, 7, 0})
        bytes.append(char((size >> shift) & 0x7F));
    return bytes;
}

/// A header that states `size` and then the bytes, however many they are.
QByteArray tagStating(int size, const QByteArray &body)
{
    return QByteArray("ID3\x03\x00\x00", 6) + syncsafe(size) + body;
}

QByteArray tagOf(const QByteArray &body)
{
    return tagStating(int(body.size()), body) + "audio";
}

/// Serato's analysis tag from its description on: description, version, then the fields.
QByteArray analysis(const QByteArray &fields)
{
    return "Serato Autotags" + QByteArray("\x00\x01\x01", 3) + fields;
}

} // namespace

class SeratoTagsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void probesFourExtensions_data();
    void probesFourExtensions();
    void findsWhatATagHolds_data();
    void findsWhatATagHolds();
    void parsesTheGainOfTheAnalysisTag_data();
    void parsesTheGainOfTheAnalysisTag();
    void givesNoValueForWhatIsNoTag_data();
    void givesNoValueForWhatIsNoTag();
    void readsTheLargestTagButNoLargerOne();
    void readsWhatIsThereOfATagThatIsCutShort();
    void searchesTheTagAlone();
    void findsPatternsOnBothSidesOfTheFirstRead();
    void looksNeitherAtTheVersionNorAtTheFlags();
    void letsTheBytesOfAMalformedSizeOverlap();
    void keepsNothingOfTheFileReadBefore();
    void givesNoValueForWhatIsNoRegularFile();
    void followsALinkToAFile();
    void answersTheSameForAFileKnownToBeRegular();
    void givesNoValueWhenAnyCallOfTheSystemFails();

private:
    QString write(const QByteArray &content);
    std::optional<SeratoTags::Presence> probe(const QByteArray &content);

    QTemporaryDir m_folder;
};

QString SeratoTagsTest::write(const QByteArray &content)
{
    QFile file(m_folder.filePath(u"track é.mp3"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("the test file can't be written");
    return file.fileName();
}

std::optional<SeratoTags::Presence> SeratoTagsTest::probe(const QByteArray &content)
{
    return SeratoTags::presence(write(content));
}

void SeratoTagsTest::probesFourExtensions_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("supported");
    for (const char *name : {"a.mp3", "a.aif", "a.aiff", "a.wav", "a.MP3", "a.Aiff", "a.b.WAV"})
        QTest::newRow(name) << QString::fromLatin1(name) << true;
    for (const char *name : {"a.flac", "a.m4a", "a.ogg", "a.mp3x", "a.mp", "mp3", "a", "", ".mp3",
                             "a.mp3.bak", "folder.mp3/a", "a.mp3 ", "a."})
        QTest::newRow(name) << QString::fromLatin1(name) << false;
}

void SeratoTagsTest::probesFourExtensions()
{
    QFETCH(QString, path);
    QTEST(SeratoTags::isSupported(path), "supported");
    QTEST(SeratoTags::isSupported(u"/Music/A folder.x/"_s + path), "supported");
}

void SeratoTagsTest::findsWhatATagHolds_data()
{
    using SeratoTags::Presence;
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<Presence>("expected");
    const auto row = [](const char *name, const QByteArray &body, const Presence &expected) {
        QTest::newRow(name) << body << expected;
    };
    row("nothing of interest", "TIT2 a title", {});
    row("one byte", "x", {});
    row("cues", "Serato Markers2", {.hasMarkers = true});
    row("the older cues alone", "Serato Markers_", {});
    row("both cues", "Serato Markers_Serato Markers2", {.hasMarkers = true});
    row("a beat grid", "Serato BeatGrid", {.hasBeatGrid = true});
    row("a gain", "REPLAYGAIN", {.hasGain = true, .hasReplayGain = true});
    row("a gain in lower case", QByteArray("TXXX\0replaygain_track_gain", 26),
        {.hasGain = true, .hasReplayGain = true});
    row("a gain in mixed case", "ReplayGain", {});
    row("an analysis", "Serato Autotags", {.hasGain = true});
    row("an analysis with its gain", analysis(QByteArray("120.00\0-3.5\0", 12)),
        {.hasGain = true, .autogain = -3.5});
    row("everything",
        "Serato BeatGrid, REPLAYGAIN, replaygain, Serato Markers2 " +
            analysis(QByteArray("120.00\0-3.5\0", 12)),
        {.hasMarkers = true,
         .hasBeatGrid = true,
         .hasGain = true,
         .hasReplayGain = true,
         .autogain = -3.5});
    row("within a frame's header", QByteArray("XSerato Markers2X\0\0", 19), {.hasMarkers = true});
    row("in the padding", zeros(1000) + "Serato BeatGrid" + zeros(1000), {.hasBeatGrid = true});
    row("in UTF-16", QByteArray("R\0E\0P\0L\0A\0Y\0G\0A\0I\0N\0", 20), {});
}

void SeratoTagsTest::findsWhatATagHolds()
{
    QFETCH(QByteArray, body);
    QFETCH(SeratoTags::Presence, expected);
    const auto found = probe(tagOf(body));
    QVERIFY(found.has_value());
    QCOMPARE(*found, expected);
}

void SeratoTagsTest::parsesTheGainOfTheAnalysisTag_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<std::optional<double>>("gain");
    const auto row = [](const char *name, const QByteArray &body, std::optional<double> gain = {}) {
        QTest::newRow(name) << body << gain;
    };
    const auto fields = [&row](const char *name, QByteArrayView second,
                               std::optional<double> gain = {}) {
        row(name, analysis("120.00" + zeros(1) + second.toByteArray() + zeros(1)), gain);
    };
    fields("a negative gain", "-3.5", -3.5);
    fields("a positive gain", "3.257", 3.257);
    fields("a sign ahead", "+2", 2.0);
    fields("an exponent", "-1e1", -10.0);
    fields("hexadecimal", "0x10", 16.0);
    fields("letters", "loud");
    fields("a blank ahead", " -3.5");
    fields("a tab ahead", "\t-3.5");
    fields("a line feed ahead", "\n-3.5");
    fields("a blank behind", "-3.5 ");
    fields("a comma", "-3,5");
    fields("a unit", "-3.5 dB");
    fields("a high byte", "-3.5\xe9");
    fields("no number at all", "nan");
    fields("without bound", "inf");
    fields("beyond all bounds", "-1e999");
    fields("empty", "");
    row("a first field of letters", analysis("x" + zeros(1) + "1.5" + zeros(1)), 1.5);
    row("an empty first field", analysis(zeros(1) + "1.5" + zeros(1)));
    row("a third field", analysis("120" + zeros(1) + "1" + zeros(1) + "2" + zeros(1)), 1.0);
    row("no terminator at the end", analysis("120" + zeros(1) + "1.5"), 1.5);
    row("one field without terminator", analysis("120"));
    row("one field", analysis("120" + zeros(1)));
    row("no field", analysis({}));
    row("any version",
        "Serato Autotags" + QByteArray("\0\xff\0", 3) +
            "1\0"
            "2"_ba,
        2.0);
    row("the version cut short", "Serato Autotags" + zeros(2));
    row("the version missing", "Serato Autotags" + zeros(1));
    row("nothing behind it", "Serato Autotags");
    row("another byte behind it", "Serato Autotags2" + zeros(2) + "120" + zeros(1) + "1");
    row("a second analysis", "Serato Autotags!" + analysis("120" + zeros(1) + "1.5" + zeros(1)));
    row("two analyses",
        analysis("120" + zeros(1) + "1.5" + zeros(1)) +
            analysis("120" + zeros(1) + "2.5" + zeros(1)),
        1.5);
}

void SeratoTagsTest::parsesTheGainOfTheAnalysisTag()
{
    QFETCH(QByteArray, body);
    QFETCH(std::optional<double>, gain);
    const auto found = probe(tagStating(int(body.size()), body));
    QVERIFY(found.has_value());
    QCOMPARE(found->autogain, gain);
    QVERIFY(found->hasGain);
    QVERIFY(!found->hasReplayGain);
}

void SeratoTagsTest::givesNoValueForWhatIsNoTag_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray marked = "Serato Markers2";
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("nine bytes") << tagStating(1, {}).chopped(1);
    QTest::newRow("a header alone") << tagStating(15, {});
    QTest::newRow("no tag") << QByteArray("\xff\xfb\x90\x44", 4) + marked + zeros(100);
    QTest::newRow("lower case") << "id3" + tagOf(marked).sliced(3);
    QTest::newRow("a tag further on") << "x" + tagOf(marked);
    QTest::newRow("a chunk of a WAV file") << "RIFF\x30\0\0\0WAVEid3 "_ba + tagOf(marked);
    QTest::newRow("size 0") << tagStating(0, marked);
    QTest::newRow("size 8,000,000") << tagStating(largest + 1, marked);
    QTest::newRow("a size with a top bit") << "ID3\3\0\0\x80\0\0\x0f"_ba + marked;
}

void SeratoTagsTest::givesNoValueForWhatIsNoTag()
{
    QFETCH(QByteArray, content);
    QVERIFY(!probe(content).has_value());
}

void SeratoTagsTest::readsTheLargestTagButNoLargerOne()
{
    const QByteArray body = zeros(largest - 15) + "Serato Markers2";
    const auto found = probe(tagOf(body));
    QVERIFY(found.has_value());
    QVERIFY(found->hasMarkers);
    QVERIFY(!probe(tagStating(largest + 1, body + zeros(100))).has_value());
}

void SeratoTagsTest::readsWhatIsThereOfATagThatIsCutShort()
{
    QCOMPARE(probe(tagStating(5000, "x")), SeratoTags::Presence());
    const auto found = probe(tagStating(largest, "Serato BeatGrid"));
    QVERIFY(found.has_value());
    QVERIFY(found->hasBeatGrid);
    QVERIFY(probe(tagStating(20000, zeros(9000) + "Serato BeatGrid"))->hasBeatGrid);
}

void SeratoTagsTest::searchesTheTagAlone()
{
    for (const int size : {1, 14, 100, 4085, 4086, 4087, 9000, 20000}) {
        const QByteArray body = zeros(size);
        QCOMPARE(probe(tagOf(body) + "Serato Markers2"), SeratoTags::Presence());
        QCOMPARE(probe(tagStating(size, body + "Serato Markers2")), SeratoTags::Presence());
    }
    // One byte of the pattern lies behind the end of the tag.
    QCOMPARE(probe(tagStating(14, "Serato Markers2")), SeratoTags::Presence());
    QCOMPARE(probe(tagStating(24, analysis("120" + zeros(1) + "1234")))->autogain, 12.0);
}

void SeratoTagsTest::findsPatternsOnBothSidesOfTheFirstRead()
{
    for (int ahead = 4050; ahead < 4110; ++ahead) {
        const auto found = probe(tagOf(zeros(ahead) + "Serato Markers2" + zeros(500)));
        QVERIFY(found.has_value());
        QVERIFY(found->hasMarkers);
        QVERIFY(!found->hasBeatGrid);
    }
}

void SeratoTagsTest::looksNeitherAtTheVersionNorAtTheFlags()
{
    QByteArray content = tagOf("Serato Markers2");
    for (const char version : {'\x02', '\x03', '\x04', '\xff'}) {
        for (const char flags : {'\x00', '\x40', '\x80', '\xff'}) {
            content[3] = version;
            content[5] = flags;
            QCOMPARE(probe(content), SeratoTags::Presence{.hasMarkers = true});
        }
    }
}

void SeratoTagsTest::letsTheBytesOfAMalformedSizeOverlap()
{
    // 0x4080. Their sum would be 0x8080, and seven bits of each would give 0x4000.
    const QByteArray header = "ID3\3\0\0\0\x01\x80\x80"_ba;
    QVERIFY(probe(header + zeros(0x4080 - 15) + "Serato Markers2")->hasMarkers);
    QVERIFY(!probe(header + zeros(0x4080 - 14) + "Serato Markers2")->hasMarkers);
    // The top bit of each byte alone.
    for (const auto &[bytes, size] :
         {std::pair("\0\x80\0\0"_ba, 0x200000), std::pair("\0\0\x80\0"_ba, 0x4000),
          std::pair("\0\0\0\x80"_ba, 0x80)}) {
        const QByteArray start = "ID3\3\0\0"_ba + bytes;
        QCOMPARE(probe(start + zeros(size - 15) + "Serato Markers2"),
                 SeratoTags::Presence{.hasMarkers = true});
        QCOMPARE(probe(start + zeros(size - 14) + "Serato Markers2"), SeratoTags::Presence());
    }
}

void SeratoTagsTest::keepsNothingOfTheFileReadBefore()
{
    QVERIFY(probe(tagOf(zeros(30000) + "Serato Markers2"))->hasMarkers);
    QCOMPARE(probe(tagStating(40000, zeros(20000))), SeratoTags::Presence());
    QVERIFY(!probe("ID3").has_value());
}

void SeratoTagsTest::givesNoValueForWhatIsNoRegularFile()
{
    const QString pipe = m_folder.filePath(u"pipe.mp3"_s);
    QCOMPARE(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    const QString locked = m_folder.filePath(u"locked.mp3"_s);
    QVERIFY(QFile::copy(write(tagOf("Serato Markers2")), locked));
    QVERIFY(SeratoTags::presence(locked).has_value());
    QVERIFY(!SeratoTags::presence(pipe).has_value());
    QVERIFY(!SeratoTags::presence(m_folder.path()).has_value());
    QVERIFY(!SeratoTags::presence(u"/dev/zero"_s).has_value());
    QVERIFY(!SeratoTags::presence(m_folder.filePath(u"missing.mp3"_s)).has_value());
    QVERIFY(!SeratoTags::presence(locked + u"/x.mp3"_s).has_value());
    QVERIFY(!SeratoTags::presence(QString()).has_value());
    QVERIFY(!SeratoTags::presence(locked + QChar(QChar::Null)).has_value());
}

void SeratoTagsTest::followsALinkToAFile()
{
    const QString link = m_folder.filePath(u"link.mp3"_s);
    QVERIFY(QFile::link(write(tagOf("Serato Markers2")), link));
    QCOMPARE(SeratoTags::presence(link), SeratoTags::Presence{.hasMarkers = true});
}

void SeratoTagsTest::answersTheSameForAFileKnownToBeRegular()
{
    const QString path = write(tagOf(zeros(6000) + "Serato Markers2"));
    QCOMPARE(SeratoTags::presenceInRegularFile(path), SeratoTags::Presence{.hasMarkers = true});
    QVERIFY(!SeratoTags::presenceInRegularFile(write("no tag at all")).has_value());
    QVERIFY(!SeratoTags::presenceInRegularFile(m_folder.filePath(u"missing.mp3"_s)).has_value());
    QVERIFY(!SeratoTags::presenceInRegularFile(path + QChar(QChar::Null)).has_value());
}

void SeratoTagsTest::givesNoValueWhenAnyCallOfTheSystemFails()
{
    const QString path = write(tagOf(zeros(20000) + "Serato Markers2"));
    int calls = 0;
    int failing = 0;
    const platform::ScopedFaults faults(
        [&](platform::FileOperation, const QString &) { return ++calls == failing ? EIO : 0; });
    QVERIFY(SeratoTags::presence(path).has_value());
    const int needed = calls;
    QCOMPARE(needed, 3); // open, the first read, the rest
    for (failing = 1; failing <= needed; ++failing) {
        calls = 0;
        QVERIFY(!SeratoTags::presence(path).has_value());
    }
}

QTEST_APPLESS_MAIN(SeratoTagsTest)
#include "serato_tags_test.moc"
