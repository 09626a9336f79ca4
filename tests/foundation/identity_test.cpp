#include "foundation/identity.h"

#include <QSet>
#include <QTest>

#include <thread>
#include <vector>

using namespace tarnwick;

class IdentityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesARandomFormIdentity();
    void neverRepeatsAlsoAcrossThreads();
};

void IdentityTest::givesARandomFormIdentity()
{
    for (int i = 0; i < 1000; ++i) {
        const QUuid id = freshIdentity();
        QCOMPARE(id.version(), QUuid::Random);
        QCOMPARE(id.variant(), QUuid::DCE);
    }
}

void IdentityTest::neverRepeatsAlsoAcrossThreads()
{
    constexpr int each = 20'000;
    std::vector<QUuid> drawn[2];
    const auto draw = [](std::vector<QUuid> &into) {
        for (int i = 0; i < each; ++i)
            into.push_back(freshIdentity());
    };
    std::thread other([&] { draw(drawn[0]); });
    draw(drawn[1]);
    other.join();
    QSet<QUuid> distinct(drawn[0].begin(), drawn[0].end());
    distinct.unite(QSet<QUuid>(drawn[1].begin(), drawn[1].end()));
    QCOMPARE(distinct.size(), 2 * each);
}

QTEST_GUILESS_MAIN(IdentityTest)
#include "identity_test.moc"
