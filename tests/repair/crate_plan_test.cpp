#include "repair/crate_plan.h"

#include "support/crate_maker.h"
#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

VersionMember cut(const QString &path)
{
    return {onDisk().path(path), u"Original"_s};
}

CrateHygiene::Overlap overlap(const LoadedCrate &a, const LoadedCrate &b)
{
    return {.id = {}, .a = a, .b = b};
}

CrateHygiene::GenreVariant variant(const QString &canon, const QStringList &spellings)
{
    return {.id = {}, .canon = canon, .variants = spellings};
}

QStringList pathsIn(const std::vector<SeratoTrack> &tracks)
{
    QStringList paths;
    for (const SeratoTrack &track : tracks)
        paths << track.relativePath;
    return paths;
}

} // namespace

class CratePlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allCutsButTheKeeperAreArchivedInTheirOrder()
    {
        const VersionGroup group{{}, u"Song"_s, {cut(u"a"_s), cut(u"/b"_s), cut(u"c"_s)}};
        QCOMPARE(CratePlan::cutsToArchive(group, group.members[0].id()),
                 QStringList({u"/b"_s, u"c"_s}));
        QCOMPARE(CratePlan::cutsToArchive(group, group.members[1].id()),
                 QStringList({u"a"_s, u"c"_s}));
    }

    void aKeeperOfNoGroupKeepsNone()
    {
        const VersionGroup group{{}, u"Song"_s, {cut(u"a"_s), cut(u"b"_s)}};
        QCOMPARE(CratePlan::cutsToArchive(group, QUuid()), QStringList({u"a"_s, u"b"_s}));
    }

    void aKeeperAloneLeavesNothingToArchive()
    {
        const VersionGroup group{{}, u"Song"_s, {cut(u"a"_s)}};
        QVERIFY(CratePlan::cutsToArchive(group, group.members[0].id()).isEmpty());
    }

    void theLargerCrateStaysAndTheFirstOfOneSize_data()
    {
        QTest::addColumn<LoadedCrate>("a");
        QTest::addColumn<LoadedCrate>("b");
        QTest::addColumn<QString>("kept");
        const auto numbers = crateOfNumbers;
        QTest::newRow("a is larger") << numbers(u"a"_s, 0, 3) << numbers(u"b"_s, 0, 2) << u"a"_s;
        QTest::newRow("b is larger") << numbers(u"a"_s, 0, 2) << numbers(u"b"_s, 0, 3) << u"b"_s;
        QTest::newRow("one size") << numbers(u"a"_s, 0, 3) << numbers(u"b"_s, 0, 3) << u"a"_s;
        QTest::newRow("repeated entries count")
            << numbers(u"a"_s, 0, 2) << crate(u"b"_s, {u"0"_s, u"0"_s, u"0"_s}) << u"b"_s;
        QTest::newRow("one name") << numbers(u"a"_s, 0, 2) << numbers(u"a"_s, 0, 3) << u"a"_s;
    }
    void theLargerCrateStaysAndTheFirstOfOneSize()
    {
        QFETCH(const LoadedCrate, a);
        QFETCH(const LoadedCrate, b);
        const CratePlan::Merge merge = CratePlan::mergeOf(overlap(a, b));
        QTEST(merge.keep.name, "kept");
        QCOMPARE(merge.keep, merge.keep.count() == a.count() ? a : b);
        QCOMPARE(merge.fold, merge.keep == a ? b : a);
    }

    void speaksOfOneAndOfSeveral_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const VersionGroup song{{}, u"Adele — Hello"_s, {}};
        const auto genre = variant(u"House"_s, {});
        const auto row = [](const QString &text, const QString &expected) {
            QTest::newRow(qUtf8Printable(expected)) << text << expected;
        };
        row(CratePlan::archiveReason(song, 2), u"Before: archive 2 cuts of Adele — Hello"_s);
        row(CratePlan::archiveReason(song, 1), u"Before: archive 1 cuts of Adele — Hello"_s);
        row(CratePlan::archived(song, 0).detail,
            u"Filed 0 alternate cuts into the Archive crate (kept in library)"_s);
        row(CratePlan::archived(song, 1).detail,
            u"Filed 1 alternate cut into the Archive crate (kept in library)"_s);
        row(CratePlan::archived(song, 2).detail,
            u"Filed 2 alternate cuts into the Archive crate (kept in library)"_s);
        row(CratePlan::archiveSummary(song, 0), u"Archived 0 cuts of Adele — Hello"_s);
        row(CratePlan::archiveSummary(song, 1), u"Archived 1 cut of Adele — Hello"_s);
        row(CratePlan::archiveSummary(song, 12), u"Archived 12 cuts of Adele — Hello"_s);
        row(CratePlan::orphansReason(1), u"Before: file 1 orphans → Unsorted"_s);
        row(CratePlan::orphansReason(7), u"Before: file 7 orphans → Unsorted"_s);
        row(CratePlan::orphansFiled(1).detail, u"Filed 1 orphan track into the Unsorted crate"_s);
        row(CratePlan::orphansFiled(0).detail, u"Filed 0 orphan tracks into the Unsorted crate"_s);
        row(CratePlan::orphansSummary(1), u"Filed 1 orphans into Unsorted"_s);
        row(CratePlan::orphansSummary(2), u"Filed 2 orphans into Unsorted"_s);
        row(CratePlan::unifySummary(genre, 0), u"Unified 0 tracks to House"_s);
        row(CratePlan::unifySummary(genre, 1), u"Unified 1 track to House"_s);
        row(CratePlan::unifySummary(genre, 2), u"Unified 2 tracks to House"_s);
    }
    void speaksOfOneAndOfSeveral()
    {
        QFETCH(const QString, text);
        QTEST(text, "expected");
    }

    void takesNamesAsTheyStand()
    {
        const VersionGroup song{{}, u"%1 — %2"_s, {cut(u"a"_s)}};
        QCOMPARE(CratePlan::archiveReason(song, 3), u"Before: archive 3 cuts of %1 — %2"_s);
        QCOMPARE(CratePlan::archiveSummary(song, 3), u"Archived 3 cuts of %1 — %2"_s);
        const auto merge = CratePlan::mergeOf(
            overlap(crateOfNumbers(u"A%%1%2"_s, 0, 3), crateOfNumbers(u"%1"_s, 0, 2)));
        QCOMPARE(CratePlan::mergeReason(merge), u"Before: merge %1 → A%%1%2"_s);
        QCOMPARE(CratePlan::mergeHoldingReason(merge), u"Merged into A%%1%2"_s);
        QCOMPARE(CratePlan::merged(merge, u"held"_s).detail,
                 u"Merged 2 tracks into A%%1%2; folded crate held 30 days"_s);
        QCOMPARE(CratePlan::mergeSummary(merge), u"Merged %1 into A%%1%2"_s);
        QCOMPARE(CratePlan::unifyReason(variant(u"%1"_s, {})), u"Before: unify genre → %1"_s);
        QCOMPARE(CratePlan::unifySummary(variant(u"%1"_s, {}), 2), u"Unified 2 tracks to %1"_s);
    }

    void aFoldedCrateOfOneTrackIsSpokenOfLikeAnyOther()
    {
        const auto merge =
            CratePlan::mergeOf(overlap(crateOfNumbers(u"a"_s, 0, 3), crateOfNumbers(u"b"_s, 0, 1)));
        QCOMPARE(CratePlan::merged(merge, u"held"_s).detail,
                 u"Merged 1 tracks into a; folded crate held 30 days"_s);
    }

    void otherSpellingsOfTheVariantAreUnified_data()
    {
        QTest::addColumn<QString>("genre");
        QTest::addColumn<bool>("changes");
        QTest::newRow("another spelling") << u"house"_s << true;
        QTest::newRow("another spelling by a blank") << u"House "_s << true;
        QTest::newRow("the canon") << u"House"_s << false;
        QTest::newRow("a spelling that came up since") << u"HOUSE"_s << false;
        QTest::newRow("another genre") << u"Techno"_s << false;
        QTest::newRow("no genre") << QString() << false;
        QTest::newRow("blank, even where it is listed") << u" "_s << false;
    }
    void otherSpellingsOfTheVariantAreUnified()
    {
        QFETCH(const QString, genre);
        QFETCH(const bool, changes);
        const auto house = variant(u"House"_s, {u" "_s, u"House"_s, u"House "_s, u"house"_s});
        QCOMPARE(!CratePlan::tracksToUnify({lost().genre(genre)}, house).empty(), changes);
    }

    void tracksAreUnifiedInLibraryOrderOnDiskOrNot()
    {
        const std::vector<ScannedTrack> tracks = {lost().path(u"b"_s).genre(u"house"_s),
                                                  onDisk().path(u"c"_s).genre(u"House"_s),
                                                  onDisk().path(u"a"_s).genre(u"house"_s)};
        QCOMPARE(pathsIn(CratePlan::tracksToUnify(tracks,
                                                  variant(u"House"_s, {u"House"_s, u"house"_s}))),
                 QStringList({u"b"_s, u"a"_s}));
    }
};

QTEST_GUILESS_MAIN(CratePlanTest)
#include "crate_plan_test.moc"
