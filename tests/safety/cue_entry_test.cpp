#include "safety/cue_entry.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;
using Frame = CueEntry::Frame;
using SeratoGEOB::CueFrames;

namespace {

const QString markers2 = u"Serato Markers2"_s;
const QString markers1 = u"Serato Markers_"_s;
const QString beatGrid = u"Serato BeatGrid"_s;
const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);

/// An entry read from an object; the reader must come to its end.
std::optional<CueEntry> readEntry(const QByteArray &file)
{
    JsonReader json(file);
    CueEntry entry;
    if (!CueEntry::read(json, file, entry) || !json.end())
        return std::nullopt;
    return entry;
}

QByteArray objectWith(const QByteArray &frames)
{
    return R"({"capturedAt":"2026-11-20T12:00:00Z","fileSize":5)" + frames + "}";
}

QByteArray textOf(const CueEntry &entry)
{
    return entry.text().toByteArray();
}

} // namespace

class CueEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standsInTheFileAsItsFields();
    void tellsWhichFramesItHolds_data();
    void tellsWhichFramesItHolds();
    void givesPayloadsBackByteForByte();
    void readsWhatItWroteWithoutACopy();
    void bringsForeignTextIntoItsOwnForm();
    void leavesOutPayloadsThatDoNotDecode_data();
    void leavesOutPayloadsThatDoNotDecode();
    void refusesAnotherShape_data();
    void refusesAnotherShape();
    void keepsItsBytesAliveByItself();
    void comparesWhatItHolds();
};

void CueEntryTest::standsInTheFileAsItsFields()
{
    const CueEntry entry({{markers2, "cues"}, {markers1, "old"}, {beatGrid, "grid"}},
                         noon.addMSecs(999), 18446744073709551615ULL);
    QCOMPARE(textOf(entry), QByteArray("{\n"
                                       "    \"beatGrid\": \"Z3JpZA==\",\n"
                                       "    \"capturedAt\": \"2026-11-20T12:00:00Z\",\n"
                                       "    \"fileSize\": 18446744073709551615,\n"
                                       "    \"markers2\": \"Y3Vlcw==\",\n"
                                       "    \"markersLegacy\": \"b2xk\"\n"
                                       "  }"));
    QCOMPARE(entry.capturedAt(), noon);
    QCOMPARE(entry.fileSize(), 18446744073709551615ULL);
}

void CueEntryTest::tellsWhichFramesItHolds_data()
{
    QTest::addColumn<CueFrames>("frames");
    QTest::addColumn<bool>("hasMarkers");
    QTest::addColumn<bool>("hasGrid");
    QTest::newRow("none") << CueFrames{} << false << false;
    QTest::newRow("markers") << CueFrames{{markers2, "x"}} << true << false;
    QTest::newRow("older markers") << CueFrames{{markers1, "x"}} << true << false;
    QTest::newRow("both") << CueFrames{{markers1, "x"}, {markers2, "y"}} << true << false;
    QTest::newRow("grid") << CueFrames{{beatGrid, "x"}} << false << true;
    QTest::newRow("all") << CueFrames{{beatGrid, "x"}, {markers1, "y"}, {markers2, "z"}} << true
                         << true;
    QTest::newRow("an empty frame is there") << CueFrames{{beatGrid, ""}} << false << true;
    QTest::newRow("another frame") << CueFrames{{u"Serato Autotags"_s, "x"}} << false << false;
}

void CueEntryTest::tellsWhichFramesItHolds()
{
    QFETCH(CueFrames, frames);
    QFETCH(bool, hasMarkers);
    QFETCH(bool, hasGrid);
    const CueEntry made(frames, noon, 5);
    const auto read = readEntry(textOf(made));
    QVERIFY(read.has_value());
    QCOMPARE(*read, made);
    frames.remove(u"Serato Autotags"_s);
    for (const CueEntry &entry : {made, *read}) {
        QCOMPARE(entry.hasMarkers(), hasMarkers);
        QCOMPARE(entry.hasGrid(), hasGrid);
        QCOMPARE(entry.payloads(), frames);
        QCOMPARE(entry.base64(Frame::Markers2).has_value(), frames.contains(markers2));
        QCOMPARE(entry.base64(Frame::MarkersLegacy).has_value(), frames.contains(markers1));
        QCOMPARE(entry.base64(Frame::BeatGrid).has_value(), frames.contains(beatGrid));
    }
    QCOMPARE(textOf(made).contains("beatGrid"), frames.contains(beatGrid));
}

void CueEntryTest::givesPayloadsBackByteForByte()
{
    QByteArray all;
    for (int i = 0; i < 3000; ++i)
        all.append(char(i * 7));
    const CueFrames frames = {{markers2, all}, {beatGrid, all.first(100)}};
    const CueEntry entry(frames, noon, 5);
    QCOMPARE(entry.payloads(), frames);
    QVERIFY(!textOf(entry).contains("\\") && textOf(entry).count('\n') == 5);
}

void CueEntryTest::readsWhatItWroteWithoutACopy()
{
    const QByteArray file = textOf(CueEntry({{markers2, "cues"}, {beatGrid, ""}}, noon, 5));
    const auto entry = readEntry(file);
    QVERIFY(entry.has_value());
    QCOMPARE(entry->text().data(), file.constData());
    QCOMPARE(entry->base64(Frame::Markers2)->data(), file.constData() + file.indexOf("Y3Vlcw=="));
    QCOMPARE(entry->base64(Frame::BeatGrid)->size(), 0);
}

void CueEntryTest::bringsForeignTextIntoItsOwnForm()
{
    const auto entry = readEntry(objectWith(
        R"(, "markersLegacy": null, "unknown": [1], "markers2": "Y3V\u006ccw==", "beatGrid": "a\/8=")"));
    QVERIFY(entry.has_value());
    QCOMPARE(textOf(*entry), QByteArray("{\n"
                                        "    \"beatGrid\": \"a/8=\",\n"
                                        "    \"capturedAt\": \"2026-11-20T12:00:00Z\",\n"
                                        "    \"fileSize\": 5,\n"
                                        "    \"markers2\": \"Y3Vlcw==\"\n"
                                        "  }"));
    QCOMPARE(entry->payloads(), (CueFrames{{markers2, "cues"}, {beatGrid, "\x6b\xff"}}));
}

void CueEntryTest::leavesOutPayloadsThatDoNotDecode_data()
{
    QTest::addColumn<QByteArray>("base64");
    const auto row = [](const char *name, const QByteArray &base64) {
        QTest::newRow(name) << base64;
    };
    row("a foreign character", "Y3V*cw==");
    row("the other alphabet", "a-_8");
    row("a blank inside", "Y3Vl cw==");
    row("a line break inside", "Y3Vl\\ncw==");
    row("no padding", "Y3Vlcw");
    row("too little padding", "Y3Vlcw=");
    row("padding inside", "Y3==Vlcw");
    row("something behind the padding", "Y3Vlcw==AAAA");
    row("an escaped quotation mark", "Y3V\\\"cw==");
    row("beyond ASCII", "Y3V\xC3\xA9w==");
    row("one character", "Y");
}

void CueEntryTest::leavesOutPayloadsThatDoNotDecode()
{
    QFETCH(QByteArray, base64);
    const auto entry =
        readEntry(objectWith(R"(,"beatGrid":"Z3JpZA==","markers2":")" + base64 + '"'));
    QVERIFY(entry.has_value());
    QVERIFY(entry->hasMarkers());
    QCOMPARE(entry->payloads(), (CueFrames{{beatGrid, "grid"}}));
    const auto again = readEntry(textOf(*entry));
    QVERIFY(again.has_value());
    QVERIFY(again->hasMarkers());
    QCOMPARE(textOf(*again), textOf(*entry));
}

void CueEntryTest::refusesAnotherShape_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };
    row("no date", R"({"fileSize":5})");
    row("no size", R"({"capturedAt":"2026-11-20T12:00:00Z"})");
    row("a date with a fraction", R"({"capturedAt":"2026-11-20T12:00:00.0Z","fileSize":5})");
    row("a negative size", R"({"capturedAt":"2026-11-20T12:00:00Z","fileSize":-5})");
    row("a size as text", R"({"capturedAt":"2026-11-20T12:00:00Z","fileSize":"5"})");
    row("a frame as a number", objectWith(R"(,"markers2":5)"));
    row("a frame as a list", objectWith(R"(,"beatGrid":["Z3JpZA=="])"));
    row("a list", "[]");
    row("null", "null");
}

void CueEntryTest::refusesAnotherShape()
{
    QFETCH(QByteArray, text);
    QVERIFY(!readEntry(text).has_value());
}

void CueEntryTest::keepsItsBytesAliveByItself()
{
    std::optional<CueEntry> copy;
    {
        const QByteArray file = textOf(CueEntry({{markers2, QByteArray(5000, 'x')}}, noon, 5));
        const QByteArray own(file.constData(), file.size());
        copy = readEntry(own);
    }
    CueEntry moved = std::move(*copy);
    copy.reset();
    QCOMPARE(moved.payloads().value(markers2), QByteArray(5000, 'x'));
    QVERIFY(textOf(moved).endsWith("\n  }"));
}

void CueEntryTest::comparesWhatItHolds()
{
    const CueEntry entry({{markers2, "x"}}, noon, 5);
    QVERIFY(entry == CueEntry({{markers2, "x"}}, noon, 5));
    QVERIFY(!(entry == CueEntry({{markers1, "x"}}, noon, 5)));
    QVERIFY(!(entry == CueEntry({{markers2, "y"}}, noon, 5)));
    QVERIFY(!(entry == CueEntry({{markers2, "x"}}, noon.addSecs(1), 5)));
    QVERIFY(!(entry == CueEntry({{markers2, "x"}}, noon, 6)));
}

QTEST_GUILESS_MAIN(CueEntryTest)
#include "cue_entry_test.moc"
