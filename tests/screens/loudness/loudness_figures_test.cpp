#include "screens/loudness/loudness_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

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
        QCOMPARE(titles(LoudnessFigures::tracks(derived)),
                 (QStringList{u"b"_s, u"d"_s, u"a"_s, u"c"_s}));
    }

    void countsAsAnOutlierFromOneAndAHalfOn()
    {
        const Derived derived(scanOf({gain(u"up"_s, 1.5), gain(u"down"_s, -1.5),
                                      gain(u"near"_s, 1.49), gain(u"nearly"_s, -1.49)}));
        const auto tracks = LoudnessFigures::tracks(derived);
        const auto outliers = LoudnessFigures::outliers(derived, tracks);
        QCOMPARE(titles(outliers), (QStringList{u"up"_s, u"down"_s}));
        QVERIFY(LoudnessFigures::isOutlier(derived, tracks[0]));
        QVERIFY(!LoudnessFigures::isOutlier(derived, tracks[3]));
    }

    void levelsEveryOutlierAlsoOneThatIsTagged()
    {
        ScannedTrack tagged = gain(u"tagged"_s, -3);
        tagged.hasReplayGain = true;
        const Derived derived(scanOf({gain(u"plain"_s, 3), tagged}));
        const auto items = LoudnessFigures::levelling(
            derived, LoudnessFigures::outliers(derived, LoudnessFigures::tracks(derived)));
        QCOMPARE(items.size(), 2u);
        QCOMPARE(items[0].gain, 3.0);
        QCOMPARE(items[1].track.track.title, u"tagged"_s);
        QCOMPARE(items[1].gain, -3.0);
        QVERIFY(LoudnessFigures::levelling(derived, {onDisk()}).empty());
    }

private:
    static ScannedTrack gain(const QString &title, double decibels)
    {
        return onDisk({}, title).gain().autogain(decibels);
    }
    static QStringList titles(const std::vector<ScannedTrack> &tracks)
    {
        QStringList all;
        for (const ScannedTrack &scanned : tracks)
            all << scanned.track.title;
        return all;
    }
};

QTEST_GUILESS_MAIN(LoudnessFiguresTest)
#include "loudness_figures_test.moc"
