#include "analysis/crate_tracks.h"

#include "support/crate_maker.h"
#include "support/track_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

ScannedTrack track(const QString &path, const QString &title = {})
{
    return onDisk({}, title).path(path);
}

QStringList pathsIn(const std::vector<ScannedTrack> &tracks)
{
    QStringList paths;
    for (const ScannedTrack &scanned : tracks)
        paths << scanned.track.relativePath;
    return paths;
}

} // namespace

class CrateTracksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noTracksGiveAnEmptyMap() { QVERIFY(trackMapOf({}).isEmpty()); }

    void tracksAreFoundByTheirPathWithoutOneLeadingSlash_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("key");
        QTest::newRow("none") << u"a/b.mp3"_s << u"a/b.mp3"_s;
        QTest::newRow("one") << u"/a/b.mp3"_s << u"a/b.mp3"_s;
        QTest::newRow("two") << u"//a/b.mp3"_s << u"/a/b.mp3"_s;
        QTest::newRow("upper case stays") << u"A/B.mp3"_s << u"A/B.mp3"_s;
        QTest::newRow("empty") << QString() << QString();
    }
    void tracksAreFoundByTheirPathWithoutOneLeadingSlash()
    {
        QFETCH(const QString, path);
        QFETCH(const QString, key);
        const std::vector<ScannedTrack> tracks = {track(path)};
        const TrackMap map = trackMapOf(tracks);
        QCOMPARE(map.keys(), QList<QString>{key});
        QCOMPARE(map.value(key), &tracks[0]);
    }

    void ofTracksWithOnePathTheLastStands()
    {
        const std::vector<ScannedTrack> tracks = {track(u"a"_s, u"first"_s), track(u"b"_s),
                                                  track(u"/a"_s, u"last"_s)};
        const TrackMap map = trackMapOf(tracks);
        QCOMPARE(map.size(), 2);
        QCOMPARE(map.value(u"a"_s)->track.title, u"last"_s);
    }

    void missingTracksAreInTheMap()
    {
        const std::vector<ScannedTrack> tracks = {lost().path(u"a"_s)};
        QCOMPARE(trackMapOf(tracks).size(), 1);
    }

    void setOfCrates_data()
    {
        QTest::addColumn<QSet<QString>>("names");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("no crate") << QSet<QString>() << QStringList();
        QTest::newRow("unknown name") << QSet<QString>{u"Nowhere"_s} << QStringList();
        QTest::newRow("other letter case") << QSet<QString>{u"late"_s} << QStringList();
        QTest::newRow("one, in its own order")
            << QSet<QString>{u"Late"_s} << QStringList{u"c"_s, u"a"_s};
        QTest::newRow("in the order of the crates, what they share at its first place")
            << QSet<QString>{u"Late"_s, u"Early"_s} << QStringList{u"a"_s, u"b"_s, u"c"_s};
        QTest::newRow("with an unknown name")
            << QSet<QString>{u"Late"_s, u"Nowhere"_s} << QStringList{u"c"_s, u"a"_s};
        QTest::newRow("a repeated path") << QSet<QString>{u"Twice"_s} << QStringList{u"b"_s};
        QTest::newRow("two crates of one name")
            << QSet<QString>{u"Same"_s} << QStringList{u"a"_s, u"c"_s};
        QTest::newRow("nothing but paths without a track")
            << QSet<QString>{u"Gone"_s} << QStringList();
        QTest::newRow("a path as the database has it, with a slash")
            << QSet<QString>{u"Slash"_s} << QStringList{u"/d"_s};
    }
    void setOfCrates()
    {
        QFETCH(const QSet<QString>, names);
        const std::vector<ScannedTrack> tracks = {track(u"b"_s), track(u"a"_s), track(u"c"_s),
                                                  track(u"/d"_s)};
        const QList<LoadedCrate> crates = {
            crate(u"Early"_s, {u"a"_s, u"b"_s}),        crate(u"Gone"_s, {u"x"_s, u"y"_s}),
            crate(u"Late"_s, {u"c"_s, u"x"_s, u"a"_s}), crate(u"Same"_s, {u"a"_s}),
            crate(u"Same"_s, {u"c"_s, u"a"_s}),         crate(u"Slash"_s, {u"d"_s}),
            crate(u"Twice"_s, {u"b"_s, u"b"_s}),
        };
        QTEST(pathsIn(tracksInCrates(names, crates, trackMapOf(tracks))), "expected");
    }

    void setHoldsWhatTheScanFound()
    {
        const std::vector<ScannedTrack> tracks = {
            onDisk(u"Adele"_s, u"Hello"_s).path(u"a"_s).tagsRead().grid()};
        QCOMPARE(tracksInCrates({u"A"_s}, {crate(u"A"_s, {u"a"_s})}, trackMapOf(tracks)), tracks);
    }
};

QTEST_GUILESS_MAIN(CrateTracksTest)
#include "crate_tracks_test.moc"
