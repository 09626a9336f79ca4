#include "screens/versions/version_figures.h"

#include "support/track_builder.h"

#include <QTest>

#include <limits>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

VersionGroup groupOf(const QList<quint64> &plays)
{
    VersionGroup group;
    for (const quint64 count : plays)
        group.members.push_back({onDisk().plays(count), u"Original"_s});
    return group;
}

} // namespace

class VersionFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSongTellsItsCuts()
    {
        QCOMPARE(VersionFigures::cuts(groupOf({0, 0})), u"2 cuts"_s);
        QCOMPARE(VersionFigures::cuts(groupOf({0, 0, 0})), u"3 cuts"_s);
    }

    void aCutTellsItsPlays_data()
    {
        QTest::addColumn<quint64>("plays");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << quint64(0) << u"0 plays"_s;
        QTest::newRow("one") << quint64(1) << u"1 play"_s;
        QTest::newRow("two") << quint64(2) << u"2 plays"_s;
        QTest::newRow("as many as there can be")
            << std::numeric_limits<quint64>::max() << u"18446744073709551615 plays"_s;
    }
    void aCutTellsItsPlays()
    {
        QFETCH(const quint64, plays);
        QTEST(VersionFigures::plays(plays), "text");
    }

    void theMostPlayedCutIsSuggestedOfEqualOnesTheFirst_data()
    {
        QTest::addColumn<QList<quint64>>("plays");
        QTest::addColumn<size_t>("suggested");
        QTest::newRow("first") << QList<quint64>{9, 3} << size_t(0);
        QTest::newRow("equal") << QList<quint64>{4, 4, 1} << size_t(0);
        QTest::newRow("never played") << QList<quint64>{0, 0} << size_t(0);
        QTest::newRow("in no order") << QList<quint64>{1, 7, 7} << size_t(1);
    }
    void theMostPlayedCutIsSuggestedOfEqualOnesTheFirst()
    {
        QFETCH(const QList<quint64>, plays);
        QFETCH(const size_t, suggested);
        const VersionGroup group = groupOf(plays);
        QCOMPARE(VersionFigures::suggestedKeeper(group), group.members[suggested].id());
    }

    void nothingIsSuggestedWithoutCuts() { QVERIFY(VersionFigures::suggestedKeeper({}).isNull()); }
};

QTEST_APPLESS_MAIN(VersionFiguresTest)
#include "version_figures_test.moc"
