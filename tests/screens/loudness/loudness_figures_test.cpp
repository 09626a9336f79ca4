#include "screens/loudness/loudness_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using LoudnessFigures::Standing;

class LoudnessFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standsTheFurthestFirst()
    {
        // The mean is 0.
        const Derived derived(
            scanOf({gain(u"a"_s, 1), gain(u"b"_s, -4), gain(u"c"_s, -1), gain(u"d"_s, 4),
                    onDisk({}, u"none"_s), lost({}, u"gone"_s).autogain(9)}));
        const auto tracks = LoudnessFigures::tracks(derived);
        QCOMPARE(titles(derived, tracks), (QStringList{u"b"_s, u"d"_s, u"a"_s, u"c"_s}));
        QCOMPARE(tracks[0].deviation, 4.0);
        QCOMPARE(tracks[3].deviation, 1.0);
        QCOMPARE(titles(derived, LoudnessFigures::tracksInLibraryOrder(derived)),
                 (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
    }

    void countsAsAnOutlierFromOneAndAHalfOn()
    {
        const Derived derived(scanOf({gain(u"up"_s, 1.5), gain(u"down"_s, -1.5),
                                      gain(u"near"_s, 1.49), gain(u"nearly"_s, -1.49)}));
        const auto tracks = LoudnessFigures::tracks(derived);
        QCOMPARE(titles(derived, LoudnessFigures::outliers(tracks)),
                 (QStringList{u"up"_s, u"down"_s}));
        QVERIFY(LoudnessFigures::isOutlier(1.5));
        QVERIFY(LoudnessFigures::isOutlier(-1.5));
        QVERIFY(!LoudnessFigures::isOutlier(1.49));
    }

    void levelsEveryOutlierAlsoOneThatIsTagged()
    {
        ScannedTrack tagged = gain(u"tagged"_s, -3);
        tagged.hasReplayGain = true;
        const Derived derived(scanOf({onDisk(), gain(u"plain"_s, 3), tagged}));
        const auto items = LoudnessFigures::levelling(
            derived, LoudnessFigures::outliers(LoudnessFigures::tracks(derived)));
        QCOMPARE(items.size(), 2u);
        QCOMPARE(items[0].gain, 3.0);
        QCOMPARE(items[1].track.track.title, u"tagged"_s);
        QCOMPARE(items[1].gain, -3.0);
        QVERIFY(LoudnessFigures::levelling(derived, {{0, 9}}).empty());
    }

    void writesDecibelsWithOneDecimal_data()
    {
        QTest::addColumn<double>("deviation");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0.0 << u"+0.0 dB"_s;
        QTest::newRow("louder") << 1.5 << u"+1.5 dB"_s;
        QTest::newRow("softer") << -12.34 << u"-12.3 dB"_s;
        QTest::newRow("hardly softer") << -0.04 << u"-0.0 dB"_s;
        QTest::newRow("below the limit") << 1.49 << u"+1.5 dB"_s;
        QTest::newRow("a half goes to the even digit") << 0.25 << u"+0.2 dB"_s;
    }
    void writesDecibelsWithOneDecimal()
    {
        QFETCH(const double, deviation);
        QTEST(LoudnessFigures::deviationText(deviation), "text");
    }

    void namesTheGainOnItsButton()
    {
        QCOMPARE(LoudnessFigures::levelTitle(2.04), u"Level +2.0"_s);
        QCOMPARE(LoudnessFigures::levelTitle(-10.3), u"Level -10.3"_s);
    }

    void writesTheAverageWithoutAPlus()
    {
        QCOMPARE(LoudnessFigures::averageText(Derived(scanOf({gain(u"a"_s, 2), gain(u"b"_s, 1)}))),
                 u"1.5 dB"_s);
        QCOMPARE(LoudnessFigures::averageText(Derived(scanOf({gain(u"a"_s, -2.25)}))),
                 u"-2.2 dB"_s);
        QCOMPARE(LoudnessFigures::averageText(Derived(scanOf({}))), u"0.0 dB"_s);
    }

private:
    static ScannedTrack gain(const QString &title, double decibels)
    {
        return onDisk({}, title).gain().autogain(decibels);
    }
    static QStringList titles(const Derived &derived, const std::vector<Standing> &tracks)
    {
        QStringList all;
        for (const Standing &one : tracks)
            all << derived.result().tracks[one.index].track.title;
        return all;
    }
};

QTEST_GUILESS_MAIN(LoudnessFiguresTest)
#include "loudness_figures_test.moc"
