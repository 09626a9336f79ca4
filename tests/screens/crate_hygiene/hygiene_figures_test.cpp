#include "screens/crate_hygiene/hygiene_figures.h"

#include "support/crate_maker.h"
#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class HygieneFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoCratesTellWhatTheyShare()
    {
        const CrateHygiene hygiene(
            {crateOfNumbers(u"Big"_s, 0, 8), crateOfNumbers(u"Small"_s, 5, 9)}, {});
        const CrateHygiene::Overlap &overlap = hygiene.overlaps.at(0);
        QCOMPARE(HygieneFigures::percent(overlap), u"75%"_s);
        QCOMPARE(HygieneFigures::crates(overlap), u"Big  ·  Small"_s);
        QCOMPARE(HygieneFigures::shared(overlap), u"3 shared tracks · 8 / 4"_s);
    }

    void aNameThatLooksLikeAPlaceholderStands()
    {
        const CrateHygiene::Overlap overlap{
            .id = {}, .a = crate(u"%2"_s, {u"x"_s}), .b = crate(u"%1"_s, {u"x"_s})};
        QCOMPARE(HygieneFigures::crates(overlap), u"%2  ·  %1"_s);
    }

    void tracksInNoCrate_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("title");
        QTest::newRow("none") << 0 << u"Every track lives in a crate"_s;
        QTest::newRow("one") << 1 << u"1 tracks aren't in any crate"_s;
        QTest::newRow("some") << 7 << u"7 tracks aren't in any crate"_s;
    }
    void tracksInNoCrate()
    {
        QFETCH(const int, count);
        QTEST(HygieneFigures::orphansTitle(count), "title");
    }

    void theButtonTellsHowManyAreFiled() { QCOMPARE(HygieneFigures::fileTitle(7), u"File 7"_s); }

    void orphansComeInOrder()
    {
        const CrateHygiene hygiene({}, {onDisk().path(u"c"_s), onDisk().path(u"/a"_s),
                                        onDisk().path(u"B"_s), lost().path(u"d"_s)});
        QCOMPARE(HygieneFigures::orphanPaths(hygiene), QStringList({u"B"_s, u"a"_s, u"c"_s}));
    }

    void aGenreTellsItsSpellings()
    {
        const CrateHygiene hygiene(
            {}, {onDisk().genre(u"House"_s), onDisk().genre(u"house"_s), lost().genre(u"House"_s)});
        const CrateHygiene::GenreVariant &variant = hygiene.genreVariants.at(0);
        QCOMPARE(HygieneFigures::spellings(variant), u"House  ·  house"_s);
        QCOMPARE(HygieneFigures::plan(variant), u"3 tracks → standardise on “House”"_s);
        QCOMPARE(HygieneFigures::unifyTitle(variant), u"Unify to House"_s);
    }
};

QTEST_APPLESS_MAIN(HygieneFiguresTest)
#include "hygiene_figures_test.moc"
