#include "analysis/crate_hygiene.h"

#include "foundation/text.h"
#include "support/crate_maker.h"
#include "support/random_library.h"
#include "support/track_builder.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

/// What a hygiene amounts to, as lines that compare.
QStringList lines(const CrateHygiene &hygiene)
{
    QStringList lines;
    for (const CrateHygiene::Overlap &overlap : hygiene.overlaps) {
        lines << u"%1 and %2: %3, %4%"_s.arg(overlap.a.name, overlap.b.name)
                     .arg(overlap.shared)
                     .arg(overlap.percent);
    }
    QStringList orphans(hygiene.orphanPaths.begin(), hygiene.orphanPaths.end());
    orphans.sort();
    lines << u"%1 orphans: "_s.arg(hygiene.orphanCount) + orphans.join(u',');
    for (const CrateHygiene::GenreVariant &variant : hygiene.genreVariants) {
        lines << u"%1 of '%2': '%3'"_s.arg(QString::number(variant.trackCount), variant.canon,
                                           variant.variants.join(u"','"_s));
    }
    return lines;
}

QStringList overlaps(const QList<LoadedCrate> &crates)
{
    return lines(CrateHygiene(crates, {})).sliced(0, int(CrateHygiene(crates, {}).overlaps.size()));
}

QStringList variants(const std::vector<ScannedTrack> &tracks)
{
    return lines(CrateHygiene({}, tracks)).sliced(1);
}

/// `count` tracks of one genre, none of them on disk.
std::vector<ScannedTrack> ofGenre(const QString &genre, int count)
{
    return std::vector<ScannedTrack>(size_t(count), lost().genre(genre));
}

std::vector<ScannedTrack> joined(const std::vector<std::vector<ScannedTrack>> &parts)
{
    std::vector<ScannedTrack> tracks;
    for (const std::vector<ScannedTrack> &part : parts)
        tracks.insert(tracks.end(), part.begin(), part.end());
    return tracks;
}

/// The rules word by word.
CrateHygiene slowHygiene(const QList<LoadedCrate> &crates, const std::vector<ScannedTrack> &tracks)
{
    CrateHygiene hygiene;
    QSet<QString> listed;
    for (int i = 0; i < crates.size(); ++i) {
        listed += crates[i].pathSet();
        for (int j = i + 1; j < crates.size(); ++j) {
            const int shared = int((crates[i].pathSet() & crates[j].pathSet()).size());
            const int base = std::min(crates[i].count(), crates[j].count());
            if (shared == 0 || int(double(shared) / base * 100) < 60)
                continue;
            hygiene.overlaps.push_back(
                {{}, crates[i], crates[j], shared, int(double(shared) / base * 100)});
        }
    }
    std::stable_sort(hygiene.overlaps.begin(), hygiene.overlaps.end(),
                     [](const auto &a, const auto &b) { return a.percent > b.percent; });
    std::map<QString, std::map<QString, int>> counts;
    QStringList keys;
    std::map<QString, QStringList> met;
    for (const ScannedTrack &scanned : tracks) {
        const QString path = scanned.track.relativePath;
        if (scanned.existsOnDisk)
            hygiene.orphanPaths << (path.startsWith(u'/') ? path.sliced(1) : path);
        if (!scanned.track.hasGenre())
            continue;
        const QString lowered = lowerCased(scanned.track.genre);
        const QString key = trimmedBlanks(lowered).toString();
        if (counts[key].empty())
            keys << key;
        if (++counts[key][scanned.track.genre] == 1)
            met[key] << scanned.track.genre;
    }
    hygiene.orphanPaths -= listed;
    hygiene.orphanCount = int(hygiene.orphanPaths.size());
    for (const QString &key : keys) {
        CrateHygiene::GenreVariant variant;
        for (const QString &spelling : met[key]) {
            if (variant.canon.isEmpty() || counts[key][spelling] > counts[key][variant.canon])
                variant.canon = spelling;
        }
        for (const auto &[spelling, count] : counts[key]) {
            variant.variants << spelling;
            variant.trackCount += count;
        }
        if (variant.variants.size() > 1)
            hygiene.genreVariants.push_back(variant);
    }
    std::stable_sort(hygiene.genreVariants.begin(), hygiene.genreVariants.end(),
                     [](const auto &a, const auto &b) { return a.trackCount > b.trackCount; });
    return hygiene;
}

} // namespace

class CrateHygieneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingGivesNothing()
    {
        QCOMPARE(lines(CrateHygiene({}, {})), QStringList{u"0 orphans: "_s});
    }

    void overlapOfTwoCrates_data()
    {
        QTest::addColumn<LoadedCrate>("a");
        QTest::addColumn<LoadedCrate>("b");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char *name, const LoadedCrate &a, const LoadedCrate &b,
                            const QStringList &expected) {
            QTest::newRow(name) << a << b << expected;
        };
        const auto numbers = crateOfNumbers;
        row("the same", numbers(u"A"_s, 0, 3), numbers(u"B"_s, 0, 3), {u"A and B: 3, 100%"_s});
        row("3 of 5", numbers(u"A"_s, 0, 5), numbers(u"B"_s, 2, 10), {u"A and B: 3, 60%"_s});
        row("2 of 5", numbers(u"A"_s, 0, 5), numbers(u"B"_s, 3, 11), {});
        row("2 of 3 is cut off", numbers(u"A"_s, 0, 3), numbers(u"B"_s, 1, 4),
            {u"A and B: 2, 66%"_s});
        row("59.9 per cent is cut off", numbers(u"A"_s, 0, 1000), numbers(u"B"_s, 401, 1401), {});
        row("a small crate inside a large one", numbers(u"A"_s, 0, 1000), numbers(u"B"_s, 5, 15),
            {u"A and B: 10, 100%"_s});
        row("nothing in common", numbers(u"A"_s, 0, 5), numbers(u"B"_s, 5, 9), {});
        row("an empty one", numbers(u"A"_s, 0, 0), numbers(u"B"_s, 0, 3), {});
        row("two empty ones", numbers(u"A"_s, 0, 0), numbers(u"B"_s, 0, 0), {});
        row("of one name", numbers(u"A"_s, 0, 3), numbers(u"A"_s, 0, 3), {u"A and A: 3, 100%"_s});
        row("a repeated path enlarges the smaller crate",
            crate(u"A"_s, {u"1"_s, u"1"_s, u"1"_s, u"2"_s}), numbers(u"B"_s, 1, 9), {});
        row("two of three entries, one repeated", crate(u"A"_s, {u"1"_s, u"1"_s, u"2"_s}),
            numbers(u"B"_s, 1, 9), {u"A and B: 2, 66%"_s});
    }

    void overlapOfTwoCrates()
    {
        QFETCH(LoadedCrate, a);
        QFETCH(LoadedCrate, b);
        QTEST(overlaps({a, b}), "expected");
    }

    void highestPercentFirstElseInTheOrderOfThePairs()
    {
        QCOMPARE(overlaps({crateOfNumbers(u"A"_s, 0, 4), crateOfNumbers(u"B"_s, 1, 5),
                           crateOfNumbers(u"C"_s, 0, 4), crateOfNumbers(u"D"_s, 50, 51),
                           crateOfNumbers(u"E"_s, 50, 51)}),
                 (QStringList{u"A and C: 4, 100%"_s, u"D and E: 1, 100%"_s, u"A and B: 3, 75%"_s,
                              u"B and C: 3, 75%"_s}));
    }

    void anOverlapHoldsBothCrates()
    {
        const LoadedCrate a = crateOfNumbers(u"A"_s, 0, 3);
        const LoadedCrate b = crateOfNumbers(u"B"_s, 0, 4);
        const CrateHygiene hygiene({a, b}, {});
        QCOMPARE(hygiene.overlaps.at(0).a, a);
        QCOMPARE(hygiene.overlaps.at(0).b, b);
    }

    void orphans_data()
    {
        QTest::addColumn<ScannedTrack>("track");
        QTest::addColumn<QString>("expected");
        QTest::newRow("in a crate") << ScannedTrack(onDisk().path(u"a"_s)) << u"0 orphans: "_s;
        QTest::newRow("in a crate, with a slash in the database")
            << ScannedTrack(onDisk().path(u"/a"_s)) << u"0 orphans: "_s;
        QTest::newRow("with two slashes: one goes")
            << ScannedTrack(onDisk().path(u"//a"_s)) << u"1 orphans: /a"_s;
        QTest::newRow("in no crate") << ScannedTrack(onDisk().path(u"b"_s)) << u"1 orphans: b"_s;
        QTest::newRow("in no crate, with a slash")
            << ScannedTrack(onDisk().path(u"/b"_s)) << u"1 orphans: b"_s;
        QTest::newRow("other letter case")
            << ScannedTrack(onDisk().path(u"A"_s)) << u"1 orphans: A"_s;
        QTest::newRow("lost, in a crate") << ScannedTrack(lost().path(u"a"_s)) << u"0 orphans: "_s;
        QTest::newRow("lost, in no crate") << ScannedTrack(lost().path(u"b"_s)) << u"0 orphans: "_s;
        QTest::newRow("flagged missing but on disk")
            << ScannedTrack(onDisk().path(u"b"_s).flaggedMissing()) << u"1 orphans: b"_s;
    }

    void orphans()
    {
        QFETCH(ScannedTrack, track);
        QTEST(lines(CrateHygiene({crate(u"A"_s, {u"a"_s})}, {track})).first(), "expected");
    }

    void twoRecordsOfOnePathAreOneOrphan()
    {
        QCOMPARE(CrateHygiene({}, {onDisk().path(u"a"_s), onDisk().path(u"/a"_s)}).orphanCount, 1);
    }

    void withoutCratesEveryTrackOnDiskIsAnOrphan()
    {
        QCOMPARE(lines(CrateHygiene({}, {onDisk().path(u"b"_s), onDisk().path(u"a"_s)})),
                 QStringList{u"2 orphans: a,b"_s});
    }

    void spellingsByCaseAndTrailingBlank()
    {
        QCOMPARE(variants(joined(
                     {ofGenre(u"house"_s, 3), ofGenre(u"House"_s, 5), ofGenre(u"House "_s, 1)})),
                 QStringList{u"9 of 'House': 'House','House ','house'"_s});
    }

    void whatMakesNoVariant_data()
    {
        QTest::addColumn<QString>("other");
        QTest::newRow("the same spelling") << u"House"_s;
        QTest::newRow("another word") << u"House Music"_s;
        QTest::newRow("a hyphen") << u"-House"_s;
        QTest::newRow("a line break, which is no blank") << u"House\n"_s;
        QTest::newRow("blank") << u" \t"_s;
    }

    void whatMakesNoVariant()
    {
        QFETCH(QString, other);
        QVERIFY(variants({lost().genre(u"House"_s), lost().genre(other)}).isEmpty());
    }

    void ofEqualCountsTheFirstMetIsTheCanon()
    {
        QCOMPARE(variants(joined({ofGenre(u"soul"_s, 1), ofGenre(u"Soul"_s, 2),
                                  ofGenre(u"soul"_s, 1), ofGenre(u"\tSOUL"_s, 2)})),
                 QStringList{u"6 of 'soul': '\tSOUL','Soul','soul'"_s});
    }

    void mostTracksFirstElseInTheOrderMet()
    {
        QCOMPARE(
            variants(joined({ofGenre(u"Soul"_s, 1), ofGenre(u"Funk"_s, 1), ofGenre(u"Pop"_s, 2),
                             ofGenre(u"pop"_s, 1), ofGenre(u"funk"_s, 1), ofGenre(u"soul"_s, 1)})),
            (QStringList{u"3 of 'Pop': 'Pop','pop'"_s, u"2 of 'Soul': 'Soul','soul'"_s,
                         u"2 of 'Funk': 'Funk','funk'"_s}));
    }

    void identitiesAreFresh()
    {
        const QList<LoadedCrate> crates = {crateOfNumbers(u"A"_s, 0, 3),
                                           crateOfNumbers(u"B"_s, 0, 3)};
        const std::vector<ScannedTrack> tracks = {lost().genre(u"a"_s), lost().genre(u"A"_s)};
        const CrateHygiene first(crates, tracks);
        const CrateHygiene second(crates, tracks);
        QVERIFY(first.overlaps.at(0).id != second.overlaps.at(0).id);
        QVERIFY(first.genreVariants.at(0).id != second.genreVariants.at(0).id);
    }

    void agreesWithTheRulesWordByWord()
    {
        qsizetype seen = 0;
        for (unsigned seed = 0; seed < 30; ++seed) {
            RandomLibrary random(seed);
            const std::vector<ScannedTrack> tracks = random.tracks(60);
            QList<LoadedCrate> crates;
            for (int left = random.below(12); left > 0; --left) {
                QStringList paths;
                for (int entries = random.below(8); entries > 0; --entries)
                    paths << u"music/%1.mp3"_s.arg(random.below(12));
                crates << crate(QString::number(left), paths);
            }
            QCOMPARE(lines(CrateHygiene(crates, tracks)), lines(slowHygiene(crates, tracks)));
            seen += lines(slowHygiene(crates, tracks)).size();
        }
        QVERIFY(seen > 100);
    }
};

QTEST_APPLESS_MAIN(CrateHygieneTest)
#include "crate_hygiene_test.moc"
