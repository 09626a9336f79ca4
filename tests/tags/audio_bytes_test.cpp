// Whatever is written into a tag, and whatever the tag looked like: every frame that could be read
// stands behind it, and no byte of audio has changed. What is to be expected is worked out here on
// the list of frames that a file was made of, without the codec.

#include "support/tag_builder.h"
#include "support/test_folder.h"
#include "tags/geob_files.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QTest>

#include <functional>
#include <optional>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QByteArray gainName = "REPLAYGAIN_TRACK_GAIN";

struct MadeFrame
{
    QByteArray id;
    QByteArray payload;
    QByteArray flags = zeros(2);
    QByteArray name = {}; ///< an object's description, a user text's; empty for all else
};

MadeFrame object(const QByteArray &name, const QByteArray &data)
{
    return {"GEOB", objectPayload(name, data), zeros(2), name};
}

MadeFrame utf16Object(const QByteArray &name, const QByteArray &data)
{
    return {"GEOB", utf16ObjectPayload(name, data)};
}

MadeFrame userText(const QByteArray &name, const QByteArray &value)
{
    return {"TXXX", userTextPayload(name, value), zeros(2), name};
}

/// A file and what it was made of.
struct MadeFile
{
    int major = 3;
    int flags = 0;
    QByteArray ahead = {};              ///< bytes that keep the frames behind them from being read
    std::vector<MadeFrame> frames = {}; ///< those that can be read if nothing stands ahead
    QByteArray behind = {};             ///< what of the tag can't be read: padding, broken frames
    QByteArray audio = QByteArray(2000, 'a');

    QByteArray bytes() const { return builder(frames, ahead, behind).flags(flags).file(); }

    /// What a file with these frames, and no padding, must look like.
    QByteArray written(const std::vector<MadeFrame> &wanted) const
    {
        return builder(wanted, {}, {}).file();
    }

    std::vector<MadeFrame> readable() const
    {
        return ahead.isEmpty() ? frames : std::vector<MadeFrame>();
    }

private:
    TagBuilder builder(const std::vector<MadeFrame> &list, const QByteArray &first,
                       const QByteArray &last) const
    {
        TagBuilder built(major);
        built.raw(first);
        for (const MadeFrame &frame : list)
            built.frame(frame.id, frame.payload, frame.flags);
        built.raw(last).audio(audio);
        return built;
    }
};

void setFirst(std::vector<MadeFrame> &frames, const MadeFrame &wanted)
{
    for (MadeFrame &frame : frames) {
        if (frame.id == wanted.id && frame.name == wanted.name) {
            frame.payload = wanted.payload;
            return;
        }
    }
    frames.push_back(wanted);
}

/// A way to write into a file, and what it does to a list of frames.
struct Change
{
    const char *name;
    std::function<Done(const QString &)> write;
    std::function<void(std::vector<MadeFrame> &)> expect;
};

const std::vector<Change> &allChanges()
{
    static const MadeFrame cues = object("Serato Markers2", "restored cues");
    static const MadeFrame grid = object("Serato BeatGrid", QByteArray(700, 'g'));
    static const std::vector<Change> changes{
        {"restore",
         [](const QString &path) {
             return SeratoGEOB::restoreCueFrames(
                 {{u"Serato Markers2"_s, cues.payload}, {u"Serato BeatGrid"_s, grid.payload}},
                 path);
         },
         [](std::vector<MadeFrame> &frames) {
             setFirst(frames, cues);
             setFirst(frames, grid);
         }},
        {"gain", [](const QString &path) { return SeratoGEOB::writeReplayGain(-4.56, path); },
         [](std::vector<MadeFrame> &frames) { setFirst(frames, userText(gainName, "-4.56 dB")); }},
        {"strip", [](const QString &path) { return SeratoGEOB::stripCueFrames(path); },
         [](std::vector<MadeFrame> &frames) {
             std::erase_if(frames, [](const MadeFrame &frame) {
                 return frame.name == "Serato Markers2" || frame.name == "Serato Markers_" ||
                        frame.name == "Serato BeatGrid";
             });
         }},
    };
    return changes;
}

QByteArray hash(QByteArrayView bytes)
{
    return QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Sha256);
}

/// All behind the tag, by the size that the file's own header states.
QByteArrayView audioOf(const QByteArray &file)
{
    qsizetype size = 0;
    for (int at = 6; at < 10; ++at)
        size = size << 7 | uchar(file.at(at));
    return QByteArrayView(file).sliced(10 + size);
}

QByteArray id3v1()
{
    return "TAG" + QByteArray("A title").leftJustified(124, '\0') + '\x11';
}

QByteArray apeTag()
{
    const QByteArray item = "\x08\0\0\0\0\0\0\0GAIN\0-4.00 dB"_ba;
    const QByteArray sizes =
        "\xd0\x07\0\0"_ba + QByteArray(1, char(item.size() + 32)) + "\0\0\0\1\0\0\0"_ba;
    return "APETAGEX" + sizes + "\0\0\0\xa0"_ba + zeros(8) + item + "APETAGEX" + sizes +
           "\0\0\0\x80"_ba + zeros(8);
}

QByteArray randomBytes(QRandomGenerator &random, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

MadeFrame randomFrame(QRandomGenerator &random)
{
    static const QByteArrayList names{"Serato Markers2", "Serato Markers_", "Serato BeatGrid",
                                      "Serato Autotags", "Serato Overview", "Something else"};
    const QByteArray data = randomBytes(random, random.bounded(3000));
    MadeFrame frame{"TIT2", data};
    switch (random.bounded(8)) {
    case 0:
    case 1:
    case 2:
        frame = object(names[random.bounded(int(names.size()))], data);
        break;
    case 3:
        frame = utf16Object(names[random.bounded(int(names.size()))], data);
        break;
    case 4:
        frame = userText(random.bounded(2) ? gainName : gainName.toLower(), "1.00 dB");
        break;
    case 5:
        frame.id = "X" + QByteArray::number(100 + random.bounded(900));
        break;
    case 6:
        frame.payload.clear();
        break;
    default:
        break;
    }
    if (random.bounded(4) == 0)
        frame.flags = randomBytes(random, 2);
    return frame;
}

MadeFile randomFile(QRandomGenerator &random)
{
    constexpr int majors[] = {3, 4, 3, 4, 0, 2, 255};
    constexpr int flags[] = {0, 0, 0x10, 0x20, 0x3F};
    MadeFile file;
    file.major = majors[random.bounded(7)];
    file.flags = flags[random.bounded(5)];
    for (int count = random.bounded(12); count > 0; --count)
        file.frames.push_back(randomFrame(random));
    const QByteArrayList tails{{},         zeros(1),    zeros(9),
                               zeros(10),  zeros(2048), "PRIV\x7f\x7f\x7f\x7f\0\0and more"_ba,
                               "nine byte"};
    file.behind = tails[random.bounded(int(tails.size()))];
    file.audio = randomBytes(random, random.bounded(20'000)) + "end";
    if (random.bounded(2))
        file.audio += apeTag();
    if (random.bounded(2))
        file.audio += id3v1();
    return file;
}

} // namespace

Q_DECLARE_METATYPE(MadeFile)

class AudioBytesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stayInFilesOfEveryKind_data();
    void stayInFilesOfEveryKind();
    void stayInGeneratedFiles();

private:
    void check(const MadeFile &made);

    TestFolder m_folder;
};

void AudioBytesTest::check(const MadeFile &made)
{
    const QByteArray before = made.bytes();
    const QByteArray audioHash = hash(made.audio);
    QCOMPARE(hash(audioOf(before)), audioHash);
    for (const Change &change : allChanges()) {
        std::vector<MadeFrame> frames = made.readable();
        change.expect(frames);
        const QByteArray expected = made.written(frames);
        const QString path = m_folder.write(u"a.mp3"_s, before);
        for (const char *round : {"first", "second"}) {
            const QByteArray where = QByteArray(change.name) + ", " + round + " write";
            QVERIFY2(change.write(path).has_value(), where.constData());
            const QByteArray after = m_folder.read(u"a.mp3"_s);
            QVERIFY2(hash(audioOf(after)) == audioHash, where.constData());
            QVERIFY2(after == expected, where.constData());
        }
    }
}

void AudioBytesTest::stayInFilesOfEveryKind_data()
{
    QTest::addColumn<MadeFile>("made");
    const auto row = [](const char *name, const MadeFile &made) { QTest::newRow(name) << made; };
    const MadeFrame title{"TIT2", "\0A title"_ba};
    const MadeFrame cues = object("Serato Markers2", "cues");
    const QByteArray overrun = "PRIV\x7f\x7f\x7f\x7f\0\0x"_ba;
    row("version 2.2", {.major = 2, .ahead = "TT2\0\0\2\0ATP1\0\0\2\0B"_ba + zeros(300)});
    row("version 2.2 with artwork",
        {.major = 2, .ahead = "PIC\0\x40\0\0JPG"_ba + QByteArray(0x4000, 'p')});
    row("version 2.3", {.major = 3, .frames = {title, cues}});
    row("version 2.4", {.major = 4, .frames = {title, cues}});
    row("no frames", {});
    row("padding alone", {.behind = zeros(5000)});
    row("padding", {.frames = {title, cues}, .behind = zeros(5000)});
    row("a footer", {.major = 4,
                     .flags = 0x10,
                     .frames = {cues},
                     .audio = "3DI\4\0\x10\0\0\0\x2a"
                              "a"_ba});
    row("two objects of one name", {.frames = {cues, title, object("Serato Markers2", "more")}});
    row("objects in both encodings",
        {.frames = {utf16Object("Serato Markers2", "wide"), cues,
                    utf16Object("Serato BeatGrid", "wide"), utf16Object("Serato Markers2", "w")}});
    row("objects without a name", {.frames = {object({}, "1"), object({}, "2")}});
    row("an object that is cut short", {.frames = {{"GEOB", "\0a\0b"_ba}, {"GEOB", {}}}});
    row("unknown frames", {.frames = {{"ZZZZ", "1"}, {"a b!", "2"}, {"1234", "3"}, cues}});
    row("an id with zero bytes", {.frames = {title, {"T\0\0\0"_ba, "x"}, cues}});
    row("odd flags", {.frames = {{"TIT2", "x", "\xff\xff"_ba},
                                 {"GEOB", cues.payload, "\x40\x03"_ba, cues.name},
                                 {"TXXX", userTextPayload(gainName, "1"), "\0\x80"_ba, gainName}}});
    row("ID3v1", {.frames = {title}, .audio = QByteArray(900, 'a') + id3v1()});
    row("APE", {.frames = {title}, .audio = QByteArray(900, 'a') + apeTag()});
    row("APE and ID3v1", {.frames = {title}, .audio = QByteArray(900, 'a') + apeTag() + id3v1()});
    row("artwork of five MB", {.frames = {title, {"APIC", QByteArray(5'000'000, 'p')}, cues}});
    row("artwork of five MB, version 2.4",
        {.major = 4, .frames = {{"APIC", QByteArray(5'000'000, 'p')}, cues}, .behind = zeros(99)});
    row("a first frame that overruns", {.ahead = overrun, .frames = {title, cues}});
    row("a later frame that overruns", {.frames = {title, cues}, .behind = overrun + zeros(40)});
    row("no audio", {.frames = {title}, .audio = {}});
    row("audio that looks like a tag",
        {.frames = {title}, .audio = TagBuilder().object("Serato Markers2").file()});
}

void AudioBytesTest::stayInFilesOfEveryKind()
{
    QFETCH(MadeFile, made);
    check(made);
}

void AudioBytesTest::stayInGeneratedFiles()
{
    for (quint32 seed = 1; seed <= 60; ++seed) {
        QRandomGenerator random(seed);
        check(randomFile(random));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(u"with the seed %1"_s.arg(seed)));
    }
}

QTEST_APPLESS_MAIN(AudioBytesTest)
#include "audio_bytes_test.moc"
