#include "signal/lanes.h"

#include "serato/serato_history.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

ScannedTrack track(const QString &path, const QString &genre, const QString &bpm = {},
                   bool existsOnDisk = true)
{
    ScannedTrack scanned;
    scanned.track.relativePath = path;
    scanned.track.title = path;
    scanned.track.genre = genre;
    scanned.track.bpm = bpm;
    scanned.existsOnDisk = existsOnDisk;
    return scanned;
}

} // namespace

class LanesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void putsATrackIntoItsLane_data()
    {
        QTest::addColumn<QString>("genre");
        QTest::addColumn<QString>("bpm");
        QTest::addColumn<QString>("lane");
        const auto row = [](const char *name, const QString &genre, const QString &bpm,
                            const QString &lane) { QTest::newRow(name) << genre << bpm << lane; };
        row("a genre counts ahead of a tempo", u"House"_s, u"125"_s, u"House"_s);
        row("a genre as it stands", u" Deep  house "_s, u""_s, u" Deep  house "_s);
        row("no genre", u""_s, u"125"_s, u"120–130 BPM"_s);
        row("a genre of blanks", u" \t"_s, u"125"_s, u"120–130 BPM"_s);
        row("just below 100", u""_s, u"99.99"_s, u"< 100 BPM"_s);
        row("100", u""_s, u"100"_s, u"100–120 BPM"_s);
        row("just below 120", u""_s, u"119.99"_s, u"100–120 BPM"_s);
        row("120", u""_s, u"120.00"_s, u"120–130 BPM"_s);
        row("just below 130", u""_s, u"129.99"_s, u"120–130 BPM"_s);
        row("130", u""_s, u"130"_s, u"130+ BPM"_s);
        row("far above", u""_s, u"1e3"_s, u"130+ BPM"_s);
        row("hardly any", u""_s, u"0.01"_s, u"< 100 BPM"_s);
        row("with a sign", u""_s, u"+125"_s, u"120–130 BPM"_s);
        row("no tempo", u""_s, u""_s, u"Unknown"_s);
        row("zero", u""_s, u"0"_s, u"Unknown"_s);
        row("below zero", u""_s, u"-125"_s, u"Unknown"_s);
        row("no number", u""_s, u"fast"_s, u"Unknown"_s);
        row("a number with more behind", u""_s, u"125 BPM"_s, u"Unknown"_s);
        row("a blank ahead", u""_s, u" 125"_s, u"Unknown"_s);
        row("a comma", u""_s, u"125,5"_s, u"Unknown"_s);
        row("not a number", u""_s, u"nan"_s, u"Unknown"_s);
        row("infinite", u""_s, u"inf"_s, u"Unknown"_s);
    }
    void putsATrackIntoItsLane()
    {
        QFETCH(QString, genre);
        QFETCH(QString, bpm);
        QTEST(laneOf(track(u"a.mp3"_s, genre, bpm).track), "lane");
    }

    void listsNothingButAllForAnEmptyLibrary() { QCOMPARE(lanesOf({}), QStringList{u"All"_s}); }

    void listsEachLaneOnceInOrderBehindAll()
    {
        const ScannedTrack tracks[] = {track(u"1"_s, u"house"_s),     track(u"2"_s, u"Zouk"_s),
                                       track(u"3"_s, u""_s, u"99"_s), track(u"4"_s, u"Ambient"_s),
                                       track(u"5"_s, u"Zouk"_s),      track(u"6"_s, u"Électro"_s),
                                       track(u"7"_s, u""_s)};
        // By code unit: capitals ahead of small letters, accents behind both.
        QCOMPARE(lanesOf(tracks), (QStringList{u"All"_s, u"< 100 BPM"_s, u"Ambient"_s, u"Unknown"_s,
                                               u"Zouk"_s, u"house"_s, u"Électro"_s}));
    }

    void listsALaneThatIsCalledAllToo()
    {
        const ScannedTrack tracks[] = {track(u"1"_s, u"All"_s), track(u"2"_s, u"Acid"_s)};
        QCOMPARE(lanesOf(tracks), (QStringList{u"All"_s, u"Acid"_s, u"All"_s}));
    }

    void listsNoLaneOfAMissingFileButMapsIt()
    {
        const ScannedTrack tracks[] = {track(u"a.mp3"_s, u"House"_s),
                                       track(u"gone.mp3"_s, u"Techno"_s, {}, false)};
        QCOMPARE(lanesOf(tracks), (QStringList{u"All"_s, u"House"_s}));
        const QHash<QString, QString> expected = {{u"/a.mp3"_s, u"House"_s},
                                                  {u"/gone.mp3"_s, u"Techno"_s}};
        QCOMPARE(laneMapOf(tracks), expected);
    }

    void countsSeratosMissingFlagForNothing()
    {
        ScannedTrack flagged = track(u"a.mp3"_s, u"House"_s);
        flagged.track.flaggedMissing = true;
        QCOMPARE(lanesOf({&flagged, 1}), (QStringList{u"All"_s, u"House"_s}));
        QCOMPARE(ownedKeysOf({&flagged, 1}).size(), 1);
    }

    void mapsTheLaterOfTwoTracksAtOnePath()
    {
        const ScannedTrack tracks[] = {track(u"a.mp3"_s, u"House"_s),
                                       track(u"/a.mp3"_s, u"Techno"_s)};
        const QHash<QString, QString> expected = {{u"/a.mp3"_s, u"Techno"_s}};
        QCOMPARE(laneMapOf(tracks), expected);
    }

    void ownsWhatIsOnDiskByArtistAndTitle()
    {
        ScannedTrack plain = track(u"a.mp3"_s, {});
        plain.track.artist = u"Daft Punk"_s;
        plain.track.title = u"One More Time"_s;
        ScannedTrack joined = track(u"b.mp3"_s, {});
        joined.track.title = u"Artist - Title"_s;
        ScannedTrack gone = track(u"c.mp3"_s, {}, {}, false);
        gone.track.title = u"Gone"_s;
        const ScannedTrack tracks[] = {plain, joined, gone, plain};
        const QSet<QString> expected = {u"3b875567370c54066fe0"_s,
                                        SeratoHistory::trackKey(u"Artist"_s, u"Title"_s)};
        QCOMPARE(ownedKeysOf(tracks), expected);
    }

    void ownsATrackWithoutATitleByWhatIsShownForIt()
    {
        ScannedTrack untitled = track(u"Music/My song.mp3"_s, {});
        untitled.track.title.clear();
        const QSet<QString> expected = {
            SeratoHistory::trackKey(untitled.track.displayArtist(), untitled.track.displayTitle())};
        QCOMPARE(ownedKeysOf({&untitled, 1}), expected);
    }
};

QTEST_GUILESS_MAIN(LanesTest)
#include "lanes_test.moc"
