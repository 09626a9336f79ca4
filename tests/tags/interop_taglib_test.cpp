// What is written here, as the library sees it on which many players rest.

#include "interop_files.h"
#include "support/test_folder.h"

#include <QTest>

#include <attachedpictureframe.h>
#include <generalencapsulatedobjectframe.h>
#include <id3v2frame.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <textidentificationframe.h>
#include <unknownframe.h>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray bytesOf(const TagLib::ByteVector &bytes)
{
    return QByteArray(bytes.data(), qsizetype(bytes.size()));
}

QByteArray textOf(const TagLib::String &text)
{
    return QByteArray::fromStdString(text.to8Bit(true));
}

/// A frame in one line: its id, its description if it has one, its content.
QByteArray described(TagLib::ID3v2::Frame *frame)
{
    const QByteArray id = bytesOf(frame->frameID()) + '|';
    using namespace TagLib::ID3v2;
    if (const auto *object = dynamic_cast<GeneralEncapsulatedObjectFrame *>(frame))
        return id + textOf(object->description()) + '|' + bytesOf(object->object());
    if (const auto *text = dynamic_cast<UserTextIdentificationFrame *>(frame))
        return id + textOf(text->description()) + '|' + textOf(text->fieldList().back());
    if (const auto *picture = dynamic_cast<AttachedPictureFrame *>(frame))
        return id + textOf(picture->description()) + '|' + bytesOf(picture->picture());
    if (const auto *unknown = dynamic_cast<UnknownFrame *>(frame))
        return id + bytesOf(unknown->data());
    return id + textOf(frame->toString());
}

/// What the library says of a file.
struct Reading
{
    unsigned version = 0;
    QByteArrayList frames; ///< file order
    int milliseconds = 0;
    int bitrate = 0;

    bool operator==(const Reading &) const = default;
};

Reading read(const QString &path)
{
    TagLib::MPEG::File file(path.toLocal8Bit().constData());
    Reading reading;
    if (!file.isValid() || !file.hasID3v2Tag())
        return reading;
    reading.version = file.ID3v2Tag()->header()->majorVersion();
    for (TagLib::ID3v2::Frame *frame : file.ID3v2Tag()->frameList())
        reading.frames.append(described(frame));
    reading.milliseconds = file.audioProperties()->lengthInMilliseconds();
    reading.bitrate = file.audioProperties()->bitrate();
    return reading;
}

/// Sets the line that begins with `start`, or adds it behind all others.
void setLine(QByteArrayList &lines, const QByteArray &start, const QByteArray &rest)
{
    for (QByteArray &line : lines) {
        if (line.startsWith(start)) {
            line = start + rest;
            return;
        }
    }
    lines.append(start + rest);
}

} // namespace

class InteropTaglibTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheGainAndAllOtherFrames_data();
    void findsTheGainAndAllOtherFrames();
    void findsRestoredCuesAndAllOtherFrames_data();
    void findsRestoredCuesAndAllOtherFrames();

private:
    TestFolder m_folder;
};

void InteropTaglibTest::findsTheGainAndAllOtherFrames_data()
{
    addInteropFiles();
}

void InteropTaglibTest::findsTheGainAndAllOtherFrames()
{
    QFETCH(int, version);
    QFETCH(QByteArray, file);
    const QString path = m_folder.write(u"a.mp3"_s, file);
    Reading expected = read(path);
    QCOMPARE(int(expected.version), version);
    QVERIFY(!expected.frames.isEmpty());
    QVERIFY(expected.milliseconds > 2500);
    QVERIFY(SeratoGEOB::writeReplayGain(-3.2, path).has_value());
    setLine(expected.frames, "TXXX|REPLAYGAIN_TRACK_GAIN|", "-3.20 dB");
    const Reading found = read(path);
    QCOMPARE(found.frames, expected.frames);
    QVERIFY(found == expected);
}

void InteropTaglibTest::findsRestoredCuesAndAllOtherFrames_data()
{
    addInteropFiles();
}

void InteropTaglibTest::findsRestoredCuesAndAllOtherFrames()
{
    QFETCH(QByteArray, file);
    const QString path = m_folder.write(u"a.mp3"_s, file);
    Reading expected = read(path);
    const QByteArray data = "restored " + QByteArray(1000, 'c');
    const SeratoGEOB::CueFrames saved{
        {u"Serato Markers2"_s, objectPayload("Serato Markers2", data)},
        {u"Serato BeatGrid"_s, objectPayload("Serato BeatGrid", data)}};
    QVERIFY(SeratoGEOB::restoreCueFrames(saved, path).has_value());
    setLine(expected.frames, "GEOB|Serato Markers2|", data);
    setLine(expected.frames, "GEOB|Serato BeatGrid|", data);
    const Reading found = read(path);
    QCOMPARE(found.frames, expected.frames);
    QVERIFY(found == expected);
}

QTEST_APPLESS_MAIN(InteropTaglibTest)
#include "interop_taglib_test.moc"
