#include "analysis/crate_paths.h"

#include "support/crate_maker.h"
#include "support/random_library.h"

#include <QTest>

#include <tuple>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

using Pairs = std::vector<std::tuple<int, int, int>>;

Pairs pairs(const QList<LoadedCrate> &crates)
{
    Pairs pairs;
    for (const CratePaths::Shared &shared : CratePaths(crates).sharedByPair())
        pairs.emplace_back(shared.a, shared.b, shared.count);
    return pairs;
}

/// One intersection of two sets for each pair.
Pairs slowPairs(const QList<LoadedCrate> &crates)
{
    Pairs pairs;
    for (int a = 0; a < crates.size(); ++a) {
        for (int b = a + 1; b < crates.size(); ++b) {
            const int shared = int((crates[a].pathSet() & crates[b].pathSet()).size());
            if (shared > 0)
                pairs.emplace_back(a, b, shared);
        }
    }
    return pairs;
}

} // namespace

class CratePathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noCratesShareNothing()
    {
        QVERIFY(pairs({}).empty());
        QVERIFY(!CratePaths({}).contains(u""));
    }

    void containsExactlyThePathsListed()
    {
        const CratePaths paths({crate(u"A"_s, {u"x/a.mp3"_s}), crate(u"B"_s, {u"b.mp3"_s})});
        QVERIFY(paths.contains(u"x/a.mp3"));
        QVERIFY(paths.contains(u"b.mp3"));
        QVERIFY(!paths.contains(u"/b.mp3"));
        QVERIFY(!paths.contains(u"B.mp3"));
    }

    void aRepeatedPathCountsOnce()
    {
        QCOMPARE(pairs({crate(u"A"_s, {u"x"_s, u"x"_s, u"y"_s}), crate(u"B"_s, {u"x"_s, u"x"_s})}),
                 (Pairs{{0, 1, 1}}));
    }

    void everyPairOnceInOrder()
    {
        const QStringList one = {u"x"_s};
        QCOMPARE(pairs({crate(u"A"_s, one), crate(u"B"_s, {}), crate(u"C"_s, one),
                        crate(u"D"_s, {u"y"_s, u"x"_s}), crate(u"E"_s, {u"y"_s})}),
                 (Pairs{{0, 2, 1}, {0, 3, 1}, {2, 3, 1}, {3, 4, 1}}));
    }

    void agreesWithSetsPairByPair()
    {
        RandomLibrary random(3);
        for (int round = 0; round < 40; ++round) {
            QList<LoadedCrate> crates;
            for (int left = random.below(15); left > 0; --left) {
                QStringList paths;
                for (int entries = random.below(20); entries > 0; --entries)
                    paths << QString::number(random.below(30));
                crates << crate(QString::number(left), paths);
            }
            QCOMPARE(pairs(crates), slowPairs(crates));
        }
    }
};

QTEST_APPLESS_MAIN(CratePathsTest)
#include "crate_paths_test.moc"
