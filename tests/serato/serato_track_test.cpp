#include "serato/serato_track.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

SeratoTrack trackOf(const QString &artist, const QString &title)
{
    SeratoTrack track;
    track.artist = artist;
    track.title = title;
    return track;
}

} // namespace

class SeratoTrackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void paths_data();
    void paths();
    void fileUrlKeepsAwkwardCharacters();
    void artistAndTitleForDisplay_data();
    void artistAndTitleForDisplay();
    void presenceOfTexts_data();
    void presenceOfTexts();
    void presenceOfATempo_data();
    void presenceOfATempo();
    void trackWithNothingButAPathHasNothing();
    void bitrate_data();
    void bitrate();
};

void SeratoTrackTest::paths_data()
{
    QTest::addColumn<QString>("relativePath");
    QTest::addColumn<QString>("absolutePath");
    QTest::addColumn<QString>("fileName");
    QTest::newRow("without a leading slash")
        << u"Users/x/a.mp3"_s << u"/Users/x/a.mp3"_s << u"a.mp3"_s;
    QTest::newRow("with a leading slash")
        << u"/Users/x/a.mp3"_s << u"/Users/x/a.mp3"_s << u"a.mp3"_s;
    QTest::newRow("two leading slashes") << u"//x/a.mp3"_s << u"//x/a.mp3"_s << u"a.mp3"_s;
    QTest::newRow("empty") << QString() << u"/"_s << u"/"_s;
    QTest::newRow("below a volume, no mapping")
        << u"Music/b.mp3"_s << u"/Music/b.mp3"_s << u"b.mp3"_s;
}

void SeratoTrackTest::paths()
{
    QFETCH(const QString, relativePath);
    SeratoTrack track;
    track.relativePath = relativePath;
    QTEST(track.absolutePath(), "absolutePath");
    QTEST(track.fileName(), "fileName");
}

void SeratoTrackTest::fileUrlKeepsAwkwardCharacters()
{
    SeratoTrack track;
    track.relativePath = u"Users/x/50% #1? Grün.mp3"_s;
    QVERIFY(track.fileUrl().isLocalFile());
    QCOMPARE(track.fileUrl().toLocalFile(), u"/Users/x/50% #1? Grün.mp3"_s);
}

void SeratoTrackTest::artistAndTitleForDisplay_data()
{
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("displayArtist");
    QTest::addColumn<QString>("displayTitle");
    QTest::addColumn<bool>("hasArtist");
    QTest::addColumn<bool>("hasTitle");
    const QString none;
    QTest::newRow("both") << u"X"_s << u"T"_s << u"X"_s << u"T"_s << true << true;
    QTest::newRow("neither") << none << none << none << none << false << false;
    QTest::newRow("title alone") << none << u"T"_s << none << u"T"_s << false << true;
    QTest::newRow("artist alone") << u"X"_s << none << u"X"_s << none << true << false;
    QTest::newRow("two separators, the first counts")
        << none << u"A - B - C"_s << u"A"_s << u"B - C"_s << true << true;
    QTest::newRow("artist wins over the separator")
        << u"X"_s << u"A - B"_s << u"X"_s << u"A - B"_s << true << true;
    QTest::newRow("hyphen without blanks") << none << u"A-B"_s << none << u"A-B"_s << false << true;
    QTest::newRow("artist of one blank")
        << u" "_s << u"A - B"_s << u" "_s << u"A - B"_s << false << true;
    QTest::newRow("separator at the start") << none << u" - B"_s << none << u"B"_s << false << true;
    QTest::newRow("separator at the end, the title as it stands counts")
        << none << u"A - "_s << u"A"_s << none << true << true;
    QTest::newRow("blank ahead of the separator")
        << none << u"  - B"_s << u" "_s << u"B"_s << false << true;
    QTest::newRow("a dash is no hyphen")
        << none << u"A – B"_s << none << u"A – B"_s << false << true;
}

void SeratoTrackTest::artistAndTitleForDisplay()
{
    QFETCH(const QString, artist);
    QFETCH(const QString, title);
    const SeratoTrack track = trackOf(artist, title);
    QTEST(track.displayArtist(), "displayArtist");
    QTEST(track.displayTitle(), "displayTitle");
    QTEST(track.hasArtist(), "hasArtist");
    QTEST(track.hasTitle(), "hasTitle");
}

void SeratoTrackTest::presenceOfTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("present");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("blanks and tabs") << u" \t "_s << false;
    QTest::newRow("no-break space") << u"\u00A0"_s << false;
    QTest::newRow("a line break is something") << u"\n"_s << true;
    QTest::newRow("a placeholder counts") << u"Unknown"_s << true;
    QTest::newRow("text between blanks") << u" x "_s << true;
}

void SeratoTrackTest::presenceOfTexts()
{
    QFETCH(const QString, text);
    QFETCH(const bool, present);
    SeratoTrack track = trackOf(text, text);
    track.genre = text;
    track.key = text;
    track.bpm = text;
    QCOMPARE(track.hasTitle(), present);
    QCOMPARE(track.hasArtist(), present);
    QCOMPARE(track.hasGenre(), present);
    QCOMPARE(track.hasKey(), present);
    QCOMPARE(track.hasBpm(), present);
}

void SeratoTrackTest::presenceOfATempo_data()
{
    QTest::addColumn<QString>("bpm");
    QTest::addColumn<bool>("present");
    QTest::newRow("0") << u"0"_s << false;
    QTest::newRow("120.00") << u"120.00"_s << true;
    QTest::newRow("0.00") << u"0.00"_s << true;
    QTest::newRow("blank and zero") << u" 0"_s << true;
    QTest::newRow("nan") << u"nan"_s << true;
    QTest::newRow("letters") << u"abc"_s << true;
}

void SeratoTrackTest::presenceOfATempo()
{
    QFETCH(const QString, bpm);
    SeratoTrack track;
    track.bpm = bpm;
    QTEST(track.hasBpm(), "present");
}

void SeratoTrackTest::trackWithNothingButAPathHasNothing()
{
    SeratoTrack track;
    track.relativePath = u"Users/x/a.mp3"_s;
    QCOMPARE(track.displayTitle(), QString());
    QCOMPARE(track.displayArtist(), QString());
    QVERIFY(!track.hasTitle() && !track.hasArtist() && !track.hasGenre() && !track.hasKey());
    QVERIFY(!track.hasBpm());
    QCOMPARE(track.bitrateKbps(), 0);
}

void SeratoTrackTest::bitrate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("kbps");
    QTest::newRow("320.0kbps") << u"320.0kbps"_s << 320;
    QTest::newRow("128 kbps") << u"128 kbps"_s << 128;
    QTest::newRow("VBR") << u"VBR"_s << 0;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("number alone") << u"256"_s << 256;
    QTest::newRow("truncated toward zero") << u"191.9kbps"_s << 191;
    QTest::newRow("point at the end") << u"192.kbps"_s << 192;
    QTest::newRow("point at the start") << u".9kbps"_s << 0;
    QTest::newRow("point alone") << u".kbps"_s << 0;
    QTest::newRow("two points") << u"1.2.3kbps"_s << 0;
    QTest::newRow("comma ends the number") << u"320,5kbps"_s << 320;
    QTest::newRow("sign is no number character") << u"-320kbps"_s << 0;
    QTest::newRow("blank ahead") << u" 320kbps"_s << 0;
    QTest::newRow("e is no number character") << u"1e3"_s << 1;
    QTest::newRow("hexadecimal is not read") << u"0x10"_s << 0;
    QTest::newRow("Arabic digits don't parse") << u"\u0663\u0662\u0660"_s << 0;
    QTest::newRow("a fraction character doesn't parse") << u"320½kbps"_s << 0;
    QTest::newRow("digit beyond 16 bits doesn't parse") << u"320\U0001D7CEkbps"_s << 0;
    QTest::newRow("letter beyond 16 bits ends the number") << u"320\U0001F600"_s << 320;
    QTest::newRow("past 32 bits") << u"99999999999kbps"_s << std::numeric_limits<int>::max();
    QTest::newRow("past a double") << QString(400, u'9') << std::numeric_limits<int>::max();
}

void SeratoTrackTest::bitrate()
{
    QFETCH(const QString, text);
    SeratoTrack track;
    track.bitrateText = text;
    QTEST(track.bitrateKbps(), "kbps");
}

QTEST_GUILESS_MAIN(SeratoTrackTest)
#include "serato_track_test.moc"
