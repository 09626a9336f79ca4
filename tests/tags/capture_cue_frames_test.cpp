// Taking copies of cue frames, which reads the tag alone.

#include "platform/fault_gate.h"
#include "support/tag_builder.h"
#include "support/test_folder.h"
#include "tags/geob_files.h"

#include <QTest>

#include <cerrno>

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
constexpr qsizetype capturedBelow = 8'000'000;

QByteArray payloadOf(const QString &descriptor, const QByteArray &data)
{
    return objectPayload(descriptor.toLatin1(), data);
}

} // namespace

class CaptureCueFramesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void capturesWholePayloadsOfCueFrames();
    void capturesASingleFrame();
    void capturesTheLaterOfTwoFrames();
    void capturesNothing_data();
    void capturesNothing();
    void capturesNothingFromWhatIsNoRegularFile();
    void capturesNothingWhereACallOfTheSystemFails();
    void readsNoBodyForNothing_data();
    void readsNoBodyForNothing();
    void capturesFromTagsBelowEightMillionBytes();

private:
    QString writeFile(const QByteArray &content) { return m_folder.write(u"a.mp3"_s, content); }
    QString writeFile(const TagBuilder &builder) { return writeFile(builder.file()); }

    TestFolder m_folder;
};

void CaptureCueFramesTest::capturesWholePayloadsOfCueFrames()
{
    const QString path = writeFile(TagBuilder()
                                       .frame("TIT2", "x")
                                       .object("Serato Overview", "picture")
                                       .object("Serato BeatGrid", "grid")
                                       .object("Serato Markers_", "old cues")
                                       .object("Serato Autotags", "gain")
                                       .object("Serato Markers2", "cues")
                                       .padding(100));
    const CueFrames expected{{markers2, payloadOf(markers2, "cues")},
                             {markers1, payloadOf(markers1, "old cues")},
                             {beatGrid, payloadOf(beatGrid, "grid")}};
    QCOMPARE(SeratoGEOB::captureCueFrames(path), expected);
}

void CaptureCueFramesTest::capturesASingleFrame()
{
    const QString path = writeFile(TagBuilder(4).object("Serato BeatGrid", "grid"));
    QCOMPARE(SeratoGEOB::captureCueFrames(path),
             (CueFrames{{beatGrid, payloadOf(beatGrid, "grid")}}));
}

void CaptureCueFramesTest::capturesTheLaterOfTwoFrames()
{
    const QString path = writeFile(
        TagBuilder().object("Serato Markers2", "first").object("Serato Markers2", "second"));
    QCOMPARE(SeratoGEOB::captureCueFrames(path),
             (CueFrames{{markers2, payloadOf(markers2, "second")}}));
}

void CaptureCueFramesTest::capturesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    const auto cues = [] { return TagBuilder().object("Serato Markers2", "cues"); };
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("nine bytes") << QByteArray("ID3\3\0\0\0\0\0", 9);
    QTest::newRow("no tag") << "x" + cues().file();
    QTest::newRow("size 0") << TagBuilder().audio(cues().file()).file();
    QTest::newRow("no frames") << TagBuilder().padding(100).file();
    QTest::newRow("no cue frames") << TagBuilder().object("Serato Autotags", "gain").file();
    QTest::newRow("descriptions in UTF-16")
        << TagBuilder().frame("GEOB", utf16ObjectPayload("Serato Markers2", "cues")).file();
    QTest::newRow("cues in another frame")
        << TagBuilder().frame("PRIV", objectPayload("Serato Markers2", "cues")).file();
    QTest::newRow("extended header") << cues().flags(0x40).file();
    QTest::newRow("unsynchronised") << cues().flags(0x80).file();
    QTest::newRow("a tag that is cut short") << cues().padding(10).audio({}).file().chopped(1);
    QTest::newRow("a size far past the end") << cues().statedSize(7'000'000).file();
}

void CaptureCueFramesTest::capturesNothing()
{
    QFETCH(QByteArray, content);
    QVERIFY(SeratoGEOB::captureCueFrames(writeFile(content)).isEmpty());
}

void CaptureCueFramesTest::capturesNothingFromWhatIsNoRegularFile()
{
    const QString pipe = m_folder.path(u"pipe.mp3"_s);
    QCOMPARE(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    QVERIFY(SeratoGEOB::captureCueFrames(pipe).isEmpty());
    QVERIFY(QFile::remove(pipe));
    QVERIFY(SeratoGEOB::captureCueFrames(m_folder.path()).isEmpty());
    QVERIFY(SeratoGEOB::captureCueFrames(m_folder.path(u"missing.mp3"_s)).isEmpty());
    QVERIFY(SeratoGEOB::captureCueFrames({}).isEmpty());
}

void CaptureCueFramesTest::capturesNothingWhereACallOfTheSystemFails()
{
    const QString path = writeFile(TagBuilder().object("Serato Markers2", "cues"));
    int calls = 0;
    int failing = 0;
    const platform::ScopedFaults faults(
        [&](platform::FileOperation, const QString &) { return ++calls == failing ? EIO : 0; });
    QVERIFY(!SeratoGEOB::captureCueFrames(path).isEmpty());
    const int needed = calls;
    QVERIFY(needed >= 3);
    for (failing = 1; failing <= needed; ++failing) {
        calls = 0;
        QVERIFY(SeratoGEOB::captureCueFrames(path).isEmpty());
    }
}

void CaptureCueFramesTest::readsNoBodyForNothing_data()
{
    QTest::addColumn<TagBuilder>("builder");
    const auto cues = [] { return TagBuilder().object("Serato Markers2", "cues"); };
    QTest::newRow("extended header") << cues().flags(0x40);
    QTest::newRow("unsynchronised") << cues().flags(0x80);
    QTest::newRow("size 0") << cues().statedSize(0);
    QTest::newRow("eight million bytes") << cues().statedSize(capturedBelow);
    QTest::newRow("a size past the end") << cues().statedSize(capturedBelow - 1);
}

void CaptureCueFramesTest::readsNoBodyForNothing()
{
    QFETCH(TagBuilder, builder);
    const QString path = writeFile(builder);
    int reads = 0;
    const platform::ScopedFaults faults([&](platform::FileOperation operation, const QString &) {
        reads += operation == platform::FileOperation::Read;
        return 0;
    });
    QVERIFY(SeratoGEOB::captureCueFrames(path).isEmpty());
    QCOMPARE(reads, 1);
}

void CaptureCueFramesTest::capturesFromTagsBelowEightMillionBytes()
{
    TagBuilder builder;
    builder.object("Serato Markers2", "cues");
    const qsizetype frames = builder.tag().size() - 10;
    QString path = writeFile(TagBuilder(builder).padding(capturedBelow - 1 - frames));
    QCOMPARE(SeratoGEOB::captureCueFrames(path).size(), 1);
    path = writeFile(TagBuilder(builder).padding(capturedBelow - frames));
    QVERIFY(SeratoGEOB::captureCueFrames(path).isEmpty());
}

QTEST_APPLESS_MAIN(CaptureCueFramesTest)
#include "capture_cue_frames_test.moc"
