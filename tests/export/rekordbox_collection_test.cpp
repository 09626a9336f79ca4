#include "export/rekordbox_collection.h"

#include <QTest>

#include <functional>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

using Change = std::function<void(SeratoTrack &)>;

/// A track that has nothing but a path.
SeratoTrack bareTrack()
{
    SeratoTrack track;
    track.relativePath = u"a.mp3"_s;
    return track;
}

QByteArray elementOf(const SeratoTrack &track)
{
    RekordboxCollection collection;
    collection.addTrack(track, 7);
    return collection.text().toByteArray();
}

/// The element of a bare track with one attribute more, and with another end.
QByteArray element(const QByteArray &attribute = {}, const QByteArray &end = "/>\n")
{
    const QByteArray start = R"(    <TRACK TrackID="7" Name="" Artist="" Kind=" File")";
    return start + attribute + R"( Location="file://localhost/a.mp3")" + end;
}

QByteArray elementWithTempo(const QByteArray &tempo)
{
    return element(" AverageBpm=\"" + tempo + '"', ">\n"
                                                   "      <TEMPO Inizio=\"0.000\" Bpm=\"" +
                                                       tempo +
                                                       "\" Metro=\"4/4\" Battito=\"1\"/>\n"
                                                       "    </TRACK>\n");
}

} // namespace

Q_DECLARE_METATYPE(Change)

class RekordboxCollectionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesATrackWithEveryAttribute();
    void writesWhatATrackHas_data();
    void writesWhatATrackHas();
    void takesAFiniteTempoAboveNoughtAlone_data();
    void takesAFiniteTempoAboveNoughtAlone();
    void writesAPlaylist();
    void writesADocumentWithNothingInIt();
};

void RekordboxCollectionTest::writesATrackWithEveryAttribute()
{
    SeratoTrack track;
    track.title = u"Sol & Luna"_s;
    track.artist = u"Ana \"Ñ\" <live>"_s;
    track.album = u"It's on"_s;
    track.genre = u"Drum & Bass"_s;
    track.fileType = u"mp3"_s;
    track.lengthText = u"04:23"_s;
    track.bpm = u"174.5"_s;
    track.key = u"F#m"_s;
    track.bitrateText = u"320.0kbps"_s;
    track.relativePath = u"Users/x/Sol & Luna.mp3"_s;
    QCOMPARE(
        elementOf(track),
        QByteArray("    <TRACK TrackID=\"7\""
                   " Name=\"Sol &amp; Luna\""
                   " Artist=\"Ana &quot;Ñ&quot; &lt;live&gt;\""
                   " Album=\"It&apos;s on\""
                   " Genre=\"Drum &amp; Bass\""
                   " Kind=\"MP3 File\""
                   " TotalTime=\"263\""
                   " AverageBpm=\"174.50\""
                   " Tonality=\"F#m\""
                   " BitRate=\"320\""
                   " Location=\"file://localhost/Users/x/Sol%20%26%20Luna.mp3\">\n"
                   "      <TEMPO Inizio=\"0.000\" Bpm=\"174.50\" Metro=\"4/4\" Battito=\"1\"/>\n"
                   "    </TRACK>\n"));
}

void RekordboxCollectionTest::writesWhatATrackHas_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const Change &change, const QByteArray &expected) {
        QTest::newRow(name) << change << expected;
    };
    row(
        "a path alone", [](SeratoTrack &) {}, element());
    row(
        "blank album", [](SeratoTrack &t) { t.album = u" "_s; },
        element().replace(" Kind", " Album=\" \" Kind"));
    row(
        "genre", [](SeratoTrack &t) { t.genre = u"R&B"_s; },
        element().replace(" Kind", " Genre=\"R&amp;B\" Kind"));
    row(
        "file type with an umlaut", [](SeratoTrack &t) { t.fileType = u"äif"_s; },
        element().replace("\" File", "\"ÄIF File"));
    row(
        "key", [](SeratoTrack &t) { t.key = u"8A"_s; }, element(" Tonality=\"8A\""));
    row(
        "length with a fraction", [](SeratoTrack &t) { t.lengthText = u"04:23.17"_s; }, element());
    row(
        "length below nought", [](SeratoTrack &t) { t.lengthText = u"-1:05"_s; }, element());
    row(
        "one second", [](SeratoTrack &t) { t.lengthText = u"0:01"_s; },
        element(" TotalTime=\"1\""));
    row(
        "no bit rate", [](SeratoTrack &t) { t.bitrateText = u"VBR"_s; }, element());
    row(
        "bit rate below one", [](SeratoTrack &t) { t.bitrateText = u"0.9"_s; }, element());
    row(
        "bit rate", [](SeratoTrack &t) { t.bitrateText = u"128 kbps"_s; },
        element(" BitRate=\"128\""));
    row(
        "artist in the title", [](SeratoTrack &t) { t.title = u"A - B - C"_s; },
        element().replace("Name=\"\" Artist=\"\"", "Name=\"B - C\" Artist=\"A\""));
    row(
        "leading slash", [](SeratoTrack &t) { t.relativePath = u"/a.mp3"_s; }, element());
    row(
        "no path", [](SeratoTrack &t) { t.relativePath.clear(); },
        element().replace("/a.mp3", "/"));
    row(
        "line break in the title", [](SeratoTrack &t) { t.title = u"a\nb"_s; },
        element().replace("Name=\"\"", "Name=\"a\nb\""));
    row(
        "emoji", [](SeratoTrack &t) { t.title = u"🎧"_s; },
        element().replace("Name=\"\"", "Name=\"🎧\""));
}

void RekordboxCollectionTest::writesWhatATrackHas()
{
    QFETCH(Change, change);
    SeratoTrack track = bareTrack();
    change(track);
    QTEST(elementOf(track), "expected");
}

void RekordboxCollectionTest::takesAFiniteTempoAboveNoughtAlone_data()
{
    QTest::addColumn<QString>("bpm");
    QTest::addColumn<QByteArray>("expected");
    for (const char *none :
         {"", "0", "0.00", "-1", "fast", "128 bpm", " 128", "nan", "inf", "1e999"})
        QTest::addRow("no tempo: '%s'", none) << QString::fromUtf8(none) << element();
    QTest::newRow("whole") << u"128"_s << elementWithTempo("128.00");
    QTest::newRow("rounded") << u"99.999"_s << elementWithTempo("100.00");
    QTest::newRow("above nought by little") << u"0.001"_s << elementWithTempo("0.00");
    QTest::newRow("exponent") << u"1e2"_s << elementWithTempo("100.00");
    QTest::newRow("sign") << u"+5"_s << elementWithTempo("5.00");
    QTest::newRow("hexadecimal") << u"0x10"_s << elementWithTempo("16.00");
}

void RekordboxCollectionTest::takesAFiniteTempoAboveNoughtAlone()
{
    QFETCH(QString, bpm);
    SeratoTrack track = bareTrack();
    track.bpm = bpm;
    QTEST(elementOf(track), "expected");
}

void RekordboxCollectionTest::writesAPlaylist()
{
    RekordboxCollection collection;
    collection.addPlaylist(u"Rock & \"Roll\""_s, {3, 1, 3});
    QCOMPARE(collection.text().toByteArray(),
             QByteArray("      <NODE Name=\"Rock &amp; &quot;Roll&quot;\" Type=\"1\" KeyType=\"0\""
                        " Entries=\"3\">\n"
                        "        <TRACK Key=\"3\"/>\n"
                        "        <TRACK Key=\"1\"/>\n"
                        "        <TRACK Key=\"3\"/>\n"
                        "      </NODE>\n"));
}

void RekordboxCollectionTest::writesADocumentWithNothingInIt()
{
    RekordboxCollection collection;
    collection.begin(0);
    collection.beginPlaylists(0);
    collection.end();
    QCOMPARE(collection.text().toByteArray(),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<DJ_PLAYLISTS Version=\"1.0.0\">\n"
                        "  <PRODUCT Name=\"Tarnwick\" Version=\"0.1\" Company=\"Tarnwick\"/>\n"
                        "  <COLLECTION Entries=\"0\">\n"
                        "  </COLLECTION>\n"
                        "  <PLAYLISTS>\n"
                        "    <NODE Type=\"0\" Name=\"ROOT\" Count=\"0\">\n"
                        "    </NODE>\n"
                        "  </PLAYLISTS>\n"
                        "</DJ_PLAYLISTS>\n"));
}

QTEST_APPLESS_MAIN(RekordboxCollectionTest)
#include "rekordbox_collection_test.moc"
