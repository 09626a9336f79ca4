#include "repair/duplicate_plan.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class DuplicatePlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void losersAreAllButTheKeeperInOrder()
    {
        const DuplicateGroup group = groupOf({u"One"_s, u"Two"_s, u"Three"_s});
        const auto losers = DuplicatePlan::losers(group, group.members[1].id());
        QCOMPARE(losers, (std::vector{group.members[0], group.members[2]}));
    }

    void everyMemberLosesToAnUnknownKeeper()
    {
        const DuplicateGroup group = groupOf({u"One"_s, u"Two"_s});
        QCOMPARE(DuplicatePlan::losers(group, freshIdentity()), group.members);
    }

    void holdsUnderTheTitleOfTheFirstMember()
    {
        QCOMPARE(DuplicatePlan::holdingReason(groupOf({u"One"_s, u"Two"_s})),
                 u"Duplicate of One"_s);
        QCOMPARE(DuplicatePlan::holdingReason({}), u"Duplicate of kept track"_s);
    }

    void countsInItsTexts()
    {
        QCOMPARE(DuplicatePlan::reason(groupOf({u"One"_s, u"Two"_s, u"Three"_s}), 2),
                 u"Before: keep 1, hold 2 of 3"_s);
        QCOMPARE(DuplicatePlan::summary(1, 8'400'000),
                 u"Kept 1, moved 1 to holding — 8.4 MB reclaimable"_s);
    }

private:
    static DuplicateGroup groupOf(const QStringList &titles)
    {
        DuplicateGroup group;
        for (const QString &title : titles)
            group.members.push_back(onDisk(u"Artist"_s, title));
        return group;
    }
};

QTEST_GUILESS_MAIN(DuplicatePlanTest)
#include "duplicate_plan_test.moc"
