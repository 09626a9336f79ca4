#include "screens/fix_queue/fix_queue_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using FixQueueFigures::Filter;
using FixQueueFigures::Issue;
using FixQueueFigures::Kind;

namespace {

/// So many tagged tracks of an artist, the last of them of another genre.
void addTagged(std::vector<ScannedTrack> &tracks, const QString &artist, int count)
{
    for (int i = 0; i < count; ++i)
        tracks.push_back(
            onDisk(artist, QString::number(i)).genre(i + 1 < count ? u"House"_s : u"Pop"_s));
}

} // namespace

class FixQueueFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsEveryIssueMostSeriousFirst()
    {
        std::vector<ScannedTrack> tracks = {
            onDisk(u""_s, u"Open"_s),
            onDisk(u"Sure"_s, u"Bare"_s),
            onDisk(u"Two"_s, u"Copies"_s).genre(u"Pop"_s).bytes(1'000'000),
            onDisk(u"Two"_s, u"Copies"_s).genre(u"Pop"_s).bytes(2'000'000),
            lost(u""_s, u"Gone"_s),
            onDisk(u"Sure"_s, u"Tagged"_s).genre(u"House"_s),
            onDisk(u"Half"_s, u"Both"_s).flaggedMissing(),
        };
        const Derived derived(scanOf(tracks));
        QStringList rows;
        for (const Issue &issue : FixQueueFigures::issuesOf(derived)) {
            const auto texts = FixQueueFigures::textsOf(issue, derived);
            rows << u"%1 %2 %3 | %4 | %5 → %6 | %7"_s.arg(
                QString::number(issue.severity), FixQueueFigures::typeLabel(issue.kind),
                issue.safe ? u"safe"_s : u"risky"_s, texts.track, texts.problem, texts.plan,
                infoOf(FixQueueFigures::jumpOf(issue)).rawValue);
            QCOMPARE(FixQueueFigures::isFixable(issue, derived), issue.safe);
        }
        const QStringList expected = {
            u"100 Missing risky | Gone | File not found on disk → Relink to its real location | missing"_s,
            u"100 Missing risky | Half — Both | File not found on disk → Relink to its real location | missing"_s,
            u"60 Duplicate safe | Two — Copies | 2 copies · 1 MB → Keep best, hold the rest 30 days | duplicates"_s,
            u"30 Tag safe | Sure — Bare | No genre → Set to House (100%) | trackID"_s,
            u"20 Tag risky | Open | No genre → Needs a genre — your call | trackID"_s,
            u"20 Tag risky | Half — Both | No genre → Needs a genre — your call | trackID"_s,
        };
        QCOMPARE(rows, expected);
    }

    void aSuggestionIsSafeFromNinetyFivePerCentOn_data()
    {
        QTest::addColumn<int>("tagged");
        QTest::addColumn<bool>("safe");
        QTest::newRow("19 of 20, 95 %") << 20 << true;
        QTest::newRow("18 of 19, 94 %") << 19 << false;
    }
    void aSuggestionIsSafeFromNinetyFivePerCentOn()
    {
        QFETCH(const int, tagged);
        std::vector<ScannedTrack> tracks = {onDisk(u"Artist"_s, u"Bare"_s)};
        addTagged(tracks, u"Artist"_s, tagged);
        const auto issues = FixQueueFigures::issuesOf(Derived(scanOf(tracks)));
        QCOMPARE(issues.size(), 1u);
        QTEST(issues.front().safe, "safe");
    }

    void aFilterKeepsItsIssues_data()
    {
        QTest::addColumn<int>("filter");
        QTest::addColumn<int>("kept");
        QTest::newRow("all") << int(Filter::All) << 0b1111;
        QTest::newRow("missing") << int(Filter::Missing) << 0b1000;
        QTest::newRow("duplicates") << int(Filter::Dupes) << 0b0100;
        QTest::newRow("tags") << int(Filter::Tags) << 0b0011;
        QTest::newRow("safe") << int(Filter::Safe) << 0b0110;
    }
    void aFilterKeepsItsIssues()
    {
        QFETCH(const int, filter);
        const std::vector<Issue> issues = {{Kind::Missing, 100, false, 0},
                                           {Kind::Duplicate, 60, true, 0},
                                           {Kind::Tag, 30, true, 0},
                                           {Kind::Tag, 20, false, 0}};
        int kept = 0;
        for (const Issue &issue : issues)
            kept = kept << 1 | (FixQueueFigures::passes(issue, Filter(filter)) ? 1 : 0);
        QTEST(kept, "kept");
        QCOMPARE(FixQueueFigures::safeCount(issues), 2);
    }

    void filtersHaveTheirPillsAndNames()
    {
        QStringList texts;
        for (const auto &info : FixQueueFigures::filters())
            texts << info.name + u'=' + info.label;
        QCOMPARE(texts, (QStringList{u"all=All"_s, u"missing=Missing"_s, u"dupes=Duplicates"_s,
                                     u"tags=Tags"_s, u"safe=Safe to automate"_s}));
    }

    void kindsHaveTheirStoredNames()
    {
        QCOMPARE(FixQueueFigures::rawValue(Kind::Missing), u"missing"_s);
        QCOMPARE(FixQueueFigures::rawValue(Kind::Duplicate), u"duplicate"_s);
        QCOMPARE(FixQueueFigures::rawValue(Kind::Tag), u"tag"_s);
    }

    void aGroupWithoutMembersCannotBeFixed()
    {
        Derived derived(scanOf({}));
        derived.duplicateGroups.push_back({});
        const auto issues = FixQueueFigures::issuesOf(derived);
        QCOMPARE(issues.size(), 1u);
        QVERIFY(issues.front().safe);
        QVERIFY(!FixQueueFigures::isFixable(issues.front(), derived));
        QCOMPARE(FixQueueFigures::textsOf(issues.front(), derived).track, QString());
    }
};

QTEST_GUILESS_MAIN(FixQueueFiguresTest)
#include "fix_queue_figures_test.moc"
