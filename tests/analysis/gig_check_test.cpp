#include "analysis/gig_check.h"

#include "support/track_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

using Verdict = GigCheck::Verdict;

namespace {

/// Ready to be played: nothing to find.
TrackBuilder flawless(const QString &title = u"x"_s)
{
    return onDisk(u"A"_s, title).key(u"Am"_s).bitrate(u"320"_s).tagsRead().grid().markers();
}

/// The findings of both tiers, as "title: count".
QStringList findings(const GigCheck &check)
{
    QStringList findings;
    for (const GigCheck::Check &found : check.blockers + check.polish)
        findings << u"%1: %2"_s.arg(found.title).arg(found.count);
    return findings;
}

QStringList findings(const std::vector<ScannedTrack> &tracks)
{
    return findings(GigCheck(tracks));
}

} // namespace

class GigCheckTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptySetIsReady()
    {
        const GigCheck check(std::vector<ScannedTrack>{});
        QCOMPARE(check.totalTracks(), 0);
        QVERIFY(check.blockers.isEmpty());
        QVERIFY(check.polish.isEmpty());
        QCOMPARE(check.verdict(), Verdict::Ready);
    }

    void textsOfTheVerdicts()
    {
        QCOMPARE(GigCheck::rawValue(Verdict::Ready), u"Ready"_s);
        QCOMPARE(GigCheck::rawValue(Verdict::GoodEnough), u"Good enough"_s);
        QCOMPARE(GigCheck::rawValue(Verdict::NotYet), u"Not yet"_s);
    }

    void everyCheckWithItsTierAndItsJump()
    {
        const ScannedTrack bad = onDisk(u"A"_s, u"x"_s).flaggedMissing().tagsRead().bitrate(u"1"_s);
        const GigCheck check({bad, bad});
        const std::tuple<QString, bool, Screen> expected[] = {
            {u"Missing files"_s, true, Screen::Missing},
            {u"No beat grid"_s, true, Screen::Cues},
            {u"No key"_s, false, Screen::TrackId},
            {u"Under 256 kbps"_s, false, Screen::Duplicates},
            {u"No hot cues"_s, false, Screen::Cues},
            {u"In-set duplicates"_s, false, Screen::Duplicates},
        };
        QCOMPARE(check.blockers.size(), 2);
        const QList<GigCheck::Check> all = check.blockers + check.polish;
        QCOMPARE(all.size(), qsizetype(std::size(expected)));
        for (qsizetype i = 0; i < all.size(); ++i) {
            QCOMPARE(std::tuple(all[i].title, all[i].blocker, all[i].jump), expected[i]);
            QVERIFY(!all[i].id.isNull());
        }
        QCOMPARE(check.blockerCount(), 4);
        QCOMPARE(check.polishCount(), 7);
    }

    void whatOneTrackIsFoundFor_data()
    {
        QTest::addColumn<ScannedTrack>("track");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char *name, const TrackBuilder &track,
                            const QStringList &expected) {
            QTest::newRow(name) << ScannedTrack(track) << expected;
        };
        row("nothing", flawless(), {});
        row("lost, with no key", lost(u"A"_s, u"x"_s).tagsRead().bitrate(u"96"_s),
            {u"Missing files: 1"_s});
        row("flagged but on disk, with no key", flawless().flaggedMissing().key(u""_s),
            {u"Missing files: 1"_s, u"No key: 1"_s});
        row("blank key", flawless().key(u" \t"_s), {u"No key: 1"_s});
        row("bit rate 256", flawless().bitrate(u"256"_s), {});
        row("bit rate 255", flawless().bitrate(u"255.9kbps"_s), {u"Under 256 kbps: 1"_s});
        row("bit rate 1", flawless().bitrate(u"1"_s), {u"Under 256 kbps: 1"_s});
        row("bit rate 0", flawless().bitrate(u"0"_s), {});
        row("bit rate unknown", flawless().bitrate(u"VBR"_s), {});
        row("tags not read", onDisk(u"A"_s, u"x"_s).key(u"Am"_s), {});
        row("tags read, nothing in them", onDisk(u"A"_s, u"x"_s).key(u"Am"_s).tagsRead(),
            {u"No beat grid: 1"_s, u"No hot cues: 1"_s});
        row("tags read, a grid alone", onDisk(u"A"_s, u"x"_s).key(u"Am"_s).tagsRead().grid(),
            {u"No hot cues: 1"_s});
        row("tags read, cues alone", onDisk(u"A"_s, u"x"_s).key(u"Am"_s).tagsRead().markers(),
            {u"No beat grid: 1"_s});
    }

    void whatOneTrackIsFoundFor()
    {
        QFETCH(ScannedTrack, track);
        QTEST(findings({track}), "expected");
    }

    void inSetDuplicates_data()
    {
        QTest::addColumn<ScannedTrack>("other");
        QTest::addColumn<QStringList>("expected");
        const QStringList surplus = {u"In-set duplicates: 1"_s};
        const auto row = [](const char *name, const QString &artist, const QString &title,
                            const QStringList &expected) {
            ScannedTrack scanned = flawless();
            scanned.track.artist = artist;
            scanned.track.title = title;
            QTest::newRow(name) << scanned << expected;
        };
        row("other letter case", u"a"_s, u"X"_s, surplus);
        row("all in the title", u""_s, u"A - x"_s, surplus);
        row("other title", u"A"_s, u"y"_s, {});
        row("other artist", u"B"_s, u"x"_s, {});
        row("blanks count", u"A"_s, u"x "_s, {});
    }

    void inSetDuplicates()
    {
        QFETCH(ScannedTrack, other);
        QTEST(findings({flawless(), other}), "expected");
    }

    /// As everywhere, the bar that joins artist and title may stand in either of them.
    void aBarMayStandInEither()
    {
        ScannedTrack one = flawless();
        one.track.artist = u"a|b"_s;
        one.track.title = u"c"_s;
        ScannedTrack other = flawless();
        other.track.artist = u"A"_s;
        other.track.title = u"B|C"_s;
        QCOMPARE(findings({one, other}), QStringList{u"In-set duplicates: 1"_s});
    }

    void aLostCopyIsNoDuplicate()
    {
        QCOMPARE(findings({flawless(), lost(u"A"_s, u"x"_s)}), QStringList{u"Missing files: 1"_s});
    }

    void threeCopiesAreTwoTooMany()
    {
        QCOMPARE(findings({flawless(), flawless(), flawless(u"y"_s), flawless(), flawless(u"y"_s)}),
                 QStringList{u"In-set duplicates: 3"_s});
    }

    void untitledTracksAreCopiesOfOneAnother()
    {
        QCOMPARE(findings({flawless(u""_s), flawless(u""_s)}),
                 QStringList{u"In-set duplicates: 1"_s});
    }

    void verdicts()
    {
        QCOMPARE(GigCheck({flawless()}).verdict(), Verdict::Ready);
        QCOMPARE(GigCheck({flawless().key(u""_s)}).verdict(), Verdict::GoodEnough);
        QCOMPARE(GigCheck({flawless(), lost()}).verdict(), Verdict::NotYet);
        QCOMPARE(GigCheck({flawless().key(u""_s).flaggedMissing()}).verdict(), Verdict::NotYet);
    }

    void holdsTheTracksAsGiven()
    {
        const std::vector<ScannedTrack> tracks = {flawless(), lost()};
        QCOMPARE(GigCheck(tracks).tracks(), tracks);
        QCOMPARE(GigCheck(tracks).totalTracks(), 2);
        const auto shared = std::make_shared<const std::vector<ScannedTrack>>(tracks);
        QCOMPARE(&GigCheck(shared).tracks(), shared.get());
        QCOMPARE(findings(GigCheck(shared)), findings(tracks));
    }

    void identitiesAreFresh()
    {
        const std::vector<ScannedTrack> tracks = {lost()};
        QVERIFY(GigCheck(tracks).blockers.at(0).id != GigCheck(tracks).blockers.at(0).id);
    }
};

QTEST_APPLESS_MAIN(GigCheckTest)
#include "gig_check_test.moc"
