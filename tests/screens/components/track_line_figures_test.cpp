#include "screens/components/track_line_figures.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

SeratoTrack named(const QString &artist, const QString &title)
{
    SeratoTrack track;
    track.relativePath = u"Music/dawn.mp3"_s;
    track.artist = artist;
    track.title = title;
    return track;
}

SeratoTrack known(const QString &bitrate, const QString &bpm, const QString &key)
{
    SeratoTrack track = named({}, {});
    track.bitrateText = bitrate;
    track.bpm = bpm;
    track.key = key;
    return track;
}

} // namespace

class TrackLineFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstLineNamesTheTrack_data();
    void theFirstLineNamesTheTrack();
    void theSecondLineSaysWhatIsKnown_data();
    void theSecondLineSaysWhatIsKnown();
};

void TrackLineFiguresTest::theFirstLineNamesTheTrack_data()
{
    QTest::addColumn<SeratoTrack>("track");
    QTest::addColumn<QString>("line");
    QTest::newRow("artist and title") << named(u"Ash"_s, u"Dawn"_s) << u"Ash — Dawn"_s;
    QTest::newRow("title alone") << named({}, u"Dawn"_s) << u"Dawn"_s;
    QTest::newRow("artist in the title") << named({}, u"Ash - Dawn"_s) << u"Ash — Dawn"_s;
    QTest::newRow("what looks like a place of a text stays")
        << named(u"%2"_s, u"%1 %2"_s) << u"%2 — %1 %2"_s;
}

void TrackLineFiguresTest::theFirstLineNamesTheTrack()
{
    QFETCH(SeratoTrack, track);
    QTEST(TrackLineText::first(track), "line");
}

void TrackLineFiguresTest::theSecondLineSaysWhatIsKnown_data()
{
    QTest::addColumn<SeratoTrack>("track");
    QTest::addColumn<QString>("line");
    QTest::newRow("file name alone") << known({}, {}, {}) << u"dawn.mp3"_s;
    QTest::newRow("everything") << known(u"320.0kbps"_s, u"124.00"_s, u"8A"_s)
                                << u"320kbps · 124.00 BPM · 8A · dawn.mp3"_s;
    QTest::newRow("no bitrate") << known({}, {}, u"8A"_s) << u"8A · dawn.mp3"_s;
    QTest::newRow("no key") << known(u"128"_s, u"90"_s, u" "_s) << u"128kbps · 90 BPM · dawn.mp3"_s;
    QTest::newRow("a tempo of 0 is none") << known(u"0"_s, u"0"_s, {}) << u"dawn.mp3"_s;
}

void TrackLineFiguresTest::theSecondLineSaysWhatIsKnown()
{
    QFETCH(SeratoTrack, track);
    QTEST(TrackLineText::second(track), "line");
}

} // namespace tarnwick

QTEST_APPLESS_MAIN(tarnwick::TrackLineFiguresTest)
#include "track_line_figures_test.moc"
