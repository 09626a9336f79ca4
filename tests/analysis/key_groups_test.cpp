#include "analysis/key_groups.h"

#include <QTest>

using namespace tarnwick;

class KeyGroupsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesOutWhatStandsAlone()
    {
        KeyGroups keys;
        keys.add(u"alone", 0);
        keys.add(u"pair", 1);
        keys.add(u"pair", 2);
        const auto groups = keys.groups();
        QCOMPARE(groups.size(), size_t(1));
        QCOMPARE(groups[0].key, u"pair");
        QCOMPARE(std::vector(groups[0].entries.begin(), groups[0].entries.end()),
                 (std::vector{1, 2}));
    }

    void keepsTheOrderInWhichKeysAndEntriesCame()
    {
        KeyGroups keys(1);
        const std::pair<const char16_t *, int> added[] = {{u"b", 9}, {u"x", 8}, {u"a", 7},
                                                          {u"a", 1}, {u"b", 2}, {u"b", 3}};
        for (const auto &[key, entry] : added)
            keys.add(key, entry);
        const auto groups = keys.groups();
        QCOMPARE(groups.size(), size_t(2));
        QCOMPARE(groups[0].key, u"b");
        QCOMPARE(std::vector(groups[0].entries.begin(), groups[0].entries.end()),
                 (std::vector{9, 2, 3}));
        QCOMPARE(groups[1].key, u"a");
        QCOMPARE(std::vector(groups[1].entries.begin(), groups[1].entries.end()),
                 (std::vector{7, 1}));
    }

    void nothingAddedGivesNothing() { QVERIFY(KeyGroups().groups().empty()); }
};

QTEST_APPLESS_MAIN(KeyGroupsTest)
#include "key_groups_test.moc"
