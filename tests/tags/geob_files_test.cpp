#include "tags/geob_files.h"

#include "support/tag_builder.h"
#include "support/test_folder.h"
#include "tags/serato_geob.h"

#include <QTest>

#include <sys/stat.h>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;
using SeratoGEOB::CueFrames;

Q_DECLARE_METATYPE(TagBuilder)

namespace {

const QString markers2 = u"Serato Markers2"_s;
const QString markers1 = u"Serato Markers_"_s;
const QString beatGrid = u"Serato BeatGrid"_s;
const QString noEditableTag = u"This file has no editable ID3 tag."_s;
constexpr qsizetype capturedBelow = 8'000'000;

QByteArray payloadOf(const QString &descriptor, const QByteArray &data)
{
    return objectPayload(descriptor.toLatin1(), data);
}

/// All the ways to write into a file.
enum class Operation { Restore, WriteGain, Strip };

Done perform(Operation operation, const QString &path)
{
    switch (operation) {
    case Operation::Restore:
        return SeratoGEOB::restoreCueFrames({{markers2, payloadOf(markers2, "restored")}}, path);
    case Operation::WriteGain:
        return SeratoGEOB::writeReplayGain(-3.2, path);
    case Operation::Strip:
        break;
    }
    return SeratoGEOB::stripCueFrames(path);
}

constexpr Operation allOperations[] = {Operation::Restore, Operation::WriteGain, Operation::Strip};

} // namespace

class GeobFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesAGainIntoASmallFile();

    void restoresInPlaceAndAppendsWhatIsMissing();
    void restoresOverTheFirstOfTwoFrames();
    void appendsInTheOrderOfTheDescriptions();
    void restoresWhatElseTheDictionaryHolds();
    void restoresIntoATagOfEightMillionBytes();
    void restoringNothingDropsThePadding();
    void restoresWhatWasCaptured();

    void formatsTheGain_data();
    void formatsTheGain();
    void formatsTheGainAlikeInEveryLocale();
    void writesOverTheGainThatStandsThere();
    void looksForTheGainsFrame_data();
    void looksForTheGainsFrame();

    void stripsCueFramesAlone();
    void stripsPaddingWhereThereIsNothingElseToStrip();
    void stripsNothingFromAFileWithoutATag();

    void refusesAFileWithoutAnEditableTag_data();
    void refusesAFileWithoutAnEditableTag();
    void failsForWhatCannotBeRead();
    void writesTheSameBytesTheSecondTime();
    void overwritesAStaleTemporary();
    void keepsALinkALink();

private:
    QString writeFile(const QByteArray &content) { return m_folder.write(u"a.mp3"_s, content); }
    QString writeFile(const TagBuilder &builder) { return writeFile(builder.file()); }
    QByteArray file() const { return m_folder.read(u"a.mp3"_s); }

    TestFolder m_folder;
};

void GeobFilesTest::writesAGainIntoASmallFile()
{
    const QString path = writeFile("ID3"
                                   "\x03\x00\x00"     // version 2.3, flags
                                   "\x00\x00\x00\x0e" // 14 bytes
                                   "TIT2"
                                   "\x00\x00\x00\x02" //   2 bytes
                                   "\x00\x00"         //   flags
                                   "\x00\x41"         //   Latin-1, "A"
                                   "\x00\x00"         // padding
                                   "\xff\xfb"_ba);    // audio
    QVERIFY(SeratoGEOB::writeReplayGain(-3.2, path).has_value());
    QCOMPARE(file(), "ID3"
                     "\x03\x00\x00"     // version 2.3, flags
                     "\x00\x00\x00\x35" // 53 bytes
                     "TIT2"
                     "\x00\x00\x00\x02" //   2 bytes
                     "\x00\x00"         //   flags
                     "\x00\x41"         //   Latin-1, "A"
                     "TXXX"
                     "\x00\x00\x00\x1f"      //   31 bytes
                     "\x00\x00"              //   flags
                     "\x00"                  //   Latin-1
                     "REPLAYGAIN_TRACK_GAIN" //   description
                     "\x00"                  //   its end
                     "-3.20 dB"              //   value
                     "\xff\xfb"_ba);         // audio
    QCOMPARE(m_folder.names(), QStringList{u"a.mp3"_s});
}

void GeobFilesTest::restoresInPlaceAndAppendsWhatIsMissing()
{
    const QByteArray oddFlags = "\x40\x80"_ba;
    const QString path = writeFile(TagBuilder(4)
                                       .frame("GEOB", payloadOf(markers1, "lost"), oddFlags)
                                       .frame("TIT2", "x")
                                       .object("Something else", "kept")
                                       .object("Serato BeatGrid", "lost too")
                                       .frame("APIC", QByteArray(3000, 'p'))
                                       .padding(50));
    const CueFrames saved{{markers2, payloadOf(markers2, "cues")},
                          {markers1, payloadOf(markers1, "old cues")},
                          {beatGrid, payloadOf(beatGrid, "grid")}};
    QVERIFY(SeratoGEOB::restoreCueFrames(saved, path).has_value());
    QCOMPARE(file(), TagBuilder(4)
                         .frame("GEOB", payloadOf(markers1, "old cues"), oddFlags)
                         .frame("TIT2", "x")
                         .object("Something else", "kept")
                         .object("Serato BeatGrid", "grid")
                         .frame("APIC", QByteArray(3000, 'p'))
                         .object("Serato Markers2", "cues")
                         .file());
}

void GeobFilesTest::restoresOverTheFirstOfTwoFrames()
{
    const QString path = writeFile(TagBuilder()
                                       .frame("GEOB", utf16ObjectPayload("Serato Markers2", "u"))
                                       .object("Serato Markers2", "first")
                                       .object("Serato Markers2", "second"));
    QVERIFY(
        SeratoGEOB::restoreCueFrames({{markers2, payloadOf(markers2, "saved")}}, path).has_value());
    QCOMPARE(file(), TagBuilder()
                         .frame("GEOB", utf16ObjectPayload("Serato Markers2", "u"))
                         .object("Serato Markers2", "saved")
                         .object("Serato Markers2", "second")
                         .file());
}

void GeobFilesTest::appendsInTheOrderOfTheDescriptions()
{
    const QString path = writeFile(TagBuilder().frame("TIT2", "x"));
    const CueFrames saved{{beatGrid, "3"}, {markers1, "2"}, {markers2, "1"}};
    QVERIFY(SeratoGEOB::restoreCueFrames(saved, path).has_value());
    QCOMPARE(file(), TagBuilder()
                         .frame("TIT2", "x")
                         .frame("GEOB", "1")
                         .frame("GEOB", "2")
                         .frame("GEOB", "3")
                         .file());
}

void GeobFilesTest::restoresWhatElseTheDictionaryHolds()
{
    const QString path = writeFile(TagBuilder().object("Serato Overview", "old"));
    const CueFrames saved{{u"Serato Overview"_s, payloadOf(u"Serato Overview"_s, "new")},
                          {u"A new one"_s, payloadOf(u"A new one"_s, "data")},
                          {beatGrid, payloadOf(beatGrid, "grid")}};
    QVERIFY(SeratoGEOB::restoreCueFrames(saved, path).has_value());
    QCOMPARE(file(), TagBuilder()
                         .object("Serato Overview", "new")
                         .object("Serato BeatGrid", "grid")
                         .object("A new one", "data")
                         .file());
}

void GeobFilesTest::restoresIntoATagOfEightMillionBytes()
{
    const QByteArray artwork(capturedBelow, 'p');
    const QString path = writeFile(TagBuilder().frame("APIC", artwork));
    QVERIFY(SeratoGEOB::captureCueFrames(path).isEmpty());
    QVERIFY(
        SeratoGEOB::restoreCueFrames({{beatGrid, payloadOf(beatGrid, "grid")}}, path).has_value());
    QVERIFY(file() == TagBuilder().frame("APIC", artwork).object("Serato BeatGrid", "grid").file());
}

void GeobFilesTest::restoringNothingDropsThePadding()
{
    const QString path = writeFile(TagBuilder().frame("TIT2", "x").padding(2000));
    QVERIFY(SeratoGEOB::restoreCueFrames({}, path).has_value());
    QCOMPARE(file(), TagBuilder().frame("TIT2", "x").file());
}

void GeobFilesTest::restoresWhatWasCaptured()
{
    const QByteArray original = TagBuilder()
                                    .frame("TIT2", "x")
                                    .object("Serato Markers2", "cues")
                                    .object("Serato Markers_", "old cues")
                                    .object("Serato BeatGrid", "grid")
                                    .file();
    const QString path = writeFile(original);
    const CueFrames saved = SeratoGEOB::captureCueFrames(path);
    QVERIFY(SeratoGEOB::stripCueFrames(path).has_value());
    QVERIFY(SeratoGEOB::captureCueFrames(path).isEmpty());
    QVERIFY(SeratoGEOB::restoreCueFrames(saved, path).has_value());
    QCOMPARE(file(), original);
}

void GeobFilesTest::formatsTheGain_data()
{
    QTest::addColumn<double>("gain");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("negative") << -3.2 << "-3.20 dB"_ba;
    QTest::newRow("positive") << 3.2 << "3.20 dB"_ba;
    QTest::newRow("zero") << 0.0 << "0.00 dB"_ba;
    QTest::newRow("whole") << 12.0 << "12.00 dB"_ba;
    QTest::newRow("rounded up") << 1.006 << "1.01 dB"_ba;
    QTest::newRow("rounded down") << -1.004 << "-1.00 dB"_ba;
    QTest::newRow("a tie to even") << 0.125 << "0.12 dB"_ba;
    QTest::newRow("a tie to even, upwards") << 0.375 << "0.38 dB"_ba;
    QTest::newRow("just below zero") << -0.001 << "-0.00 dB"_ba;
    QTest::newRow("large") << -1234567.891 << "-1234567.89 dB"_ba;
}

void GeobFilesTest::formatsTheGain()
{
    QFETCH(double, gain);
    QFETCH(QByteArray, text);
    const QString path = writeFile(TagBuilder());
    QVERIFY(SeratoGEOB::writeReplayGain(gain, path).has_value());
    QCOMPARE(file(), TagBuilder().userText("REPLAYGAIN_TRACK_GAIN", text).file());
}

void GeobFilesTest::formatsTheGainAlikeInEveryLocale()
{
    const QLocale former;
    QLocale::setDefault(QLocale(QLocale::German));
    const QString path = writeFile(TagBuilder());
    QVERIFY(SeratoGEOB::writeReplayGain(-1234.5, path).has_value());
    QLocale::setDefault(former);
    QCOMPARE(file(), TagBuilder().userText("REPLAYGAIN_TRACK_GAIN", "-1234.50 dB").file());
}

void GeobFilesTest::writesOverTheGainThatStandsThere()
{
    const QString path = writeFile(TagBuilder().frame("TIT2", "x").object("Serato Markers2"));
    QVERIFY(SeratoGEOB::writeReplayGain(-3.2, path).has_value());
    QVERIFY(SeratoGEOB::writeReplayGain(1.5, path).has_value());
    QCOMPARE(file(), TagBuilder()
                         .frame("TIT2", "x")
                         .object("Serato Markers2")
                         .userText("REPLAYGAIN_TRACK_GAIN", "1.50 dB")
                         .file());
}

void GeobFilesTest::looksForTheGainsFrame_data()
{
    QTest::addColumn<TagBuilder>("before");
    QTest::addColumn<TagBuilder>("after");
    const QByteArray name = "REPLAYGAIN_TRACK_GAIN";
    const QByteArray written = userTextPayload(name, "2.00 dB");
    const auto inPlace = [&](const char *row, const QByteArray &payload) {
        QTest::newRow(row) << TagBuilder().frame("TXXX", payload, "\x40\1"_ba).frame("TIT2", "x")
                           << TagBuilder().frame("TXXX", written, "\x40\1"_ba).frame("TIT2", "x");
    };
    const auto appended = [&](const char *row, const QByteArray &id, const QByteArray &payload) {
        QTest::newRow(row)
            << TagBuilder().frame(id, payload).frame("TIT2", "x")
            << TagBuilder().frame(id, payload).frame("TIT2", "x").frame("TXXX", written);
    };
    inPlace("found", userTextPayload(name, "-9.00 dB"));
    inPlace("no value", userTextPayload(name, {}));
    inPlace("no zero byte", zeros(1) + name);
    inPlace("another encoding byte", "\x03" + name + zeros(1) + "1");
    appended("lower case", "TXXX", userTextPayload(name.toLower(), "1"));
    appended("longer", "TXXX", userTextPayload(name + "S", "1"));
    appended("shorter", "TXXX", userTextPayload(name.chopped(1), "1"));
    appended("no zero byte, longer", "TXXX", zeros(1) + name + "1");
    appended("UTF-16", "TXXX", "\x01\xff\xfeR\0E\0P\0"_ba);
    appended("one byte", "TXXX", zeros(1));
    appended("empty", "TXXX", {});
    appended("two bytes", "TXXX", zeros(2));
    appended("another frame", "WXXX", userTextPayload(name, "1"));
    appended("the album's gain", "TXXX", userTextPayload("REPLAYGAIN_ALBUM_GAIN", "1"));
    const auto twice = [&](const QByteArray &first) {
        return TagBuilder().frame("TXXX", zeros(1)).frame("TXXX", first).userText(name, "second");
    };
    QTest::newRow("two of them") << twice(userTextPayload(name, "first")) << twice(written);
}

void GeobFilesTest::looksForTheGainsFrame()
{
    QFETCH(TagBuilder, before);
    QFETCH(TagBuilder, after);
    const QString path = writeFile(before);
    QVERIFY(SeratoGEOB::writeReplayGain(2, path).has_value());
    QCOMPARE(file(), after.file());
}

void GeobFilesTest::stripsCueFramesAlone()
{
    const QString path = writeFile(TagBuilder()
                                       .object("Serato Markers2")
                                       .frame("TIT2", "x")
                                       .object("Serato Markers_")
                                       .object("Serato Autotags", "gain")
                                       .object("Serato BeatGrid")
                                       .object("Serato BeatGrid")
                                       .frame("TPE1", "y", "\x80\0"_ba)
                                       .padding(20));
    QVERIFY(SeratoGEOB::stripCueFrames(path).has_value());
    QCOMPARE(file(), TagBuilder()
                         .frame("TIT2", "x")
                         .object("Serato Autotags", "gain")
                         .frame("TPE1", "y", "\x80\0"_ba)
                         .file());
}

void GeobFilesTest::stripsPaddingWhereThereIsNothingElseToStrip()
{
    const QString path = writeFile(TagBuilder().frame("TIT2", "x").padding(20));
    QVERIFY(SeratoGEOB::stripCueFrames(path).has_value());
    QCOMPARE(file(), TagBuilder().frame("TIT2", "x").file());
}

void GeobFilesTest::stripsNothingFromAFileWithoutATag()
{
    for (const QByteArray &content : {QByteArray(), "no tag here"_ba,
                                      TagBuilder().flags(0x80).object("Serato Markers2").file()}) {
        QVERIFY(SeratoGEOB::stripCueFrames(writeFile(content)).has_value());
        QCOMPARE(file(), content);
    }
}

void GeobFilesTest::refusesAFileWithoutAnEditableTag_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no tag") << "\xff\xfb and audio"_ba;
    QTest::newRow("ID3v1 alone") << QByteArray(500, 'a') + "TAG" + QByteArray(125, ' ');
    QTest::newRow("a header alone") << TagBuilder().audio({}).file();
    QTest::newRow("extended header") << TagBuilder().flags(0x40).frame("TIT2", "x").file();
    QTest::newRow("unsynchronised") << TagBuilder().flags(0x80).frame("TIT2", "x").file();
    QTest::newRow("a tag that is cut short")
        << TagBuilder().frame("TIT2", "x").audio({}).file().chopped(1);
}

void GeobFilesTest::refusesAFileWithoutAnEditableTag()
{
    QFETCH(QByteArray, content);
    const QString path = writeFile(content);
    for (const Operation operation : {Operation::Restore, Operation::WriteGain}) {
        const Done done = perform(operation, path);
        QVERIFY(!done.has_value());
        QCOMPARE(done.error().message, noEditableTag);
        QCOMPARE(file(), content);
    }
    QCOMPARE(m_folder.names(), QStringList{u"a.mp3"_s});
}

void GeobFilesTest::failsForWhatCannotBeRead()
{
    const QString pipe = m_folder.path(u"pipe.mp3"_s);
    QCOMPARE(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    for (const Operation operation : allOperations) {
        QCOMPARE(perform(operation, m_folder.path(u"missing.mp3"_s)).error().message,
                 u"The file “missing.mp3” couldn't be opened: No such file or directory."_s);
        QVERIFY(!perform(operation, pipe).has_value());
        QVERIFY(!perform(operation, m_folder.path()).has_value());
        QVERIFY(!perform(operation, {}).has_value());
    }
    QVERIFY(QFile::remove(pipe));
}

void GeobFilesTest::writesTheSameBytesTheSecondTime()
{
    const QByteArray original = TagBuilder(4)
                                    .flags(0x3F)
                                    .revision(1)
                                    .object("Serato Markers2", "first")
                                    .object("Serato Markers2", "second")
                                    .userText("REPLAYGAIN_TRACK_GAIN", "9.00 dB")
                                    .padding(33)
                                    .file();
    for (const Operation operation : allOperations) {
        const QString path = writeFile(original);
        QVERIFY(perform(operation, path).has_value());
        const QByteArray once = file();
        QVERIFY(once != original);
        QVERIFY(perform(operation, path).has_value());
        QCOMPARE(file(), once);
    }
}

void GeobFilesTest::overwritesAStaleTemporary()
{
    for (const Operation operation : allOperations) {
        const QString path = writeFile(TagBuilder().object("Serato Markers2").padding(9));
        m_folder.write(u".a.mp3.twtmp"_s, QByteArray(100'000, 's'));
        QVERIFY(perform(operation, path).has_value());
        QVERIFY(SeratoGEOB::readTag(file()).has_value());
        QVERIFY(file().size() < 1000);
        QCOMPARE(m_folder.names(), QStringList{u"a.mp3"_s});
    }
}

void GeobFilesTest::keepsALinkALink()
{
    TestFolder elsewhere;
    const QString target = elsewhere.write(u"target.mp3"_s, TagBuilder().padding(30).file());
    const QString link = m_folder.path(u"link.mp3"_s);
    QVERIFY(QFile::link(target, link));
    QVERIFY(SeratoGEOB::writeReplayGain(1, link).has_value());
    QCOMPARE(QFileInfo(link).symLinkTarget(), target);
    QCOMPARE(elsewhere.read(u"target.mp3"_s),
             TagBuilder().userText("REPLAYGAIN_TRACK_GAIN", "1.00 dB").file());
    QVERIFY(QFile::remove(link));
}

QTEST_APPLESS_MAIN(GeobFilesTest)
#include "geob_files_test.moc"
