#include "analysis/loudness.h"

#include "support/track_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

class LoudnessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyAnalysedTracksOnDiskCount()
    {
        const ScannedTrack loud = onDisk(u"A"_s).autogain(-6.0);
        const ScannedTrack soft = onDisk(u"B"_s).autogain(3.0);
        const std::vector<ScannedTrack> tracks = {loud, lost(u"C"_s).autogain(50.0),
                                                  onDisk(u"D"_s).gain(), soft};
        QCOMPARE(tracksWithGain(tracks), (std::vector{loud, soft}));
        QCOMPARE(averageAutogain(tracks), -1.5);
    }

    void withoutAnyTheAverageIsZero()
    {
        QVERIFY(tracksWithGain({onDisk(u"A"_s)}).empty());
        QCOMPARE(averageAutogain({onDisk(u"A"_s)}), 0.0);
        QCOMPARE(averageAutogain({}), 0.0);
    }
};

QTEST_APPLESS_MAIN(LoudnessTest)
#include "loudness_test.moc"
