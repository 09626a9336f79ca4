#include "demo_library_run.h"

#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

/// Whether the chunks of a RIFF or FORM file follow one another up to its end, one of them audio.
bool chunksFillFile(const QByteArray &file, bool bigEndian)
{
    const auto size = [&](qsizetype at) {
        const char *bytes = file.constData() + at;
        return bigEndian ? qFromBigEndian<quint32>(bytes) : qFromLittleEndian<quint32>(bytes);
    };
    bool audio = false;
    qsizetype at = 12;
    while (at + 8 <= file.size()) {
        audio |= file.mid(at, 4) == (bigEndian ? "SSND" : "data");
        at += 8 + size(at + 4) + size(at + 4) % 2;
    }
    return audio && at == file.size() && size(4) + 8 == file.size();
}

} // namespace

/// The audio files that the program writes are such as a player would take.
class DemoLibraryAudioTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QList<QByteArray> files(const QString &library, const QStringList &endings) const
    {
        QList<QByteArray> found;
        QDirIterator entries(m_folder.filePath(library), endings, QDir::Files,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            found.append(raw::fileBytes(entries.next()));
        }
        return found;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QStringList common{u"--tracks"_s, u"300"_s, u"--seed"_s, u"2"_s, u"--out"_s};
        QCOMPARE(demoLibrary(common + QStringList{m_folder.filePath(u"life"_s)}).status, 0);
        QCOMPARE(demoLibrary(common + QStringList{m_folder.filePath(u"small"_s), u"--small-tags"_s})
                     .status,
                 0);
    }

    void mpegFramesChainFromTheTagToTheEnd_data()
    {
        QTest::addColumn<QString>("library");
        QTest::newRow("tags as in life") << u"life"_s;
        QTest::newRow("small tags") << u"small"_s;
    }

    void mpegFramesChainFromTheTagToTheEnd()
    {
        QFETCH(QString, library);
        const auto all = files(library, {u"*.mp3"_s});
        QVERIFY(all.size() > 200);
        for (const QByteArray &file : all) {
            QVERIFY(raw::mpegFrames(file, raw::tagSize(file)) >= 2);
        }
    }

    void id3FramesFillTheTagUpToItsPadding_data() { mpegFramesChainFromTheTagToTheEnd_data(); }

    void id3FramesFillTheTagUpToItsPadding()
    {
        QFETCH(QString, library);
        QMap<char, int> versions;
        for (const QByteArray &file : files(library, {u"*.mp3"_s})) {
            if (const qsizetype size = raw::tagSize(file); size > 0) {
                QVERIFY(raw::framesFillTag(file.left(size)));
                ++versions[file[3]];
            } else {
                ++versions['\0'];
            }
        }
        QCOMPARE(versions.keys(), QList<char>({'\0', '\3', '\4'}));
    }

    void smallTagsFitFourKilobytes()
    {
        int full = 0;
        for (const QByteArray &file : files(u"small"_s, {u"*.mp3"_s})) {
            QVERIFY(raw::tagSize(file) <= 4096);
            QVERIFY(!file.contains("APIC"));
            full += raw::tagSize(file) == 4096;
        }
        QVERIFY(full > 150);
    }

    void artworkIsThereOtherwise()
    {
        int pictures = 0;
        for (const QByteArray &file : files(u"life"_s, {u"*.mp3"_s})) {
            const bool picture = file.contains("APIC") && file.contains("\x89PNG");
            pictures += picture;
            QVERIFY(!picture || raw::tagSize(file) > 20'000);
            QVERIFY(raw::tagSize(file) < 420'000);
        }
        QVERIFY(pictures > 0);
    }

    void allFormsOfGainOccur()
    {
        QByteArray all;
        for (const QByteArray &file : files(u"small"_s, {u"*.mp3"_s})) {
            all += file.left(raw::tagSize(file));
        }
        for (const char *text :
             {"REPLAYGAIN_TRACK_GAIN", "replaygain_track_gain", "Serato Autotags",
              "Serato Markers2", "Serato Markers_", "Serato BeatGrid"}) {
            QVERIFY2(all.contains(text), text);
        }
    }

    void wavAndAiffChunksFillTheFile()
    {
        const auto wavs = files(u"life"_s, {u"*.wav"_s});
        QVERIFY(!wavs.isEmpty());
        for (const QByteArray &file : wavs) {
            QVERIFY(file.startsWith("RIFF"));
            QVERIFY(chunksFillFile(file, false));
        }
        const auto aiffs = files(u"life"_s, {u"*.aif"_s, u"*.aiff"_s});
        QVERIFY(!aiffs.isEmpty());
        for (const QByteArray &file : aiffs) {
            QVERIFY(file.startsWith("FORM"));
            QVERIFY(chunksFillFile(file, true));
        }
    }
};

QTEST_GUILESS_MAIN(DemoLibraryAudioTest)
#include "demo_library_audio_test.moc"
