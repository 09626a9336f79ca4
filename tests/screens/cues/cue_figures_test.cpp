#include "screens/cues/cue_figures.h"

#include "foundation/dates.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class CueFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLossTellsWhatHasGoneAndFromWhenTheCopyIs()
    {
        const QDateTime captured(QDate(2026, 11, 20), QTime(14, 5), Qt::UTC);
        CueVault::Loss loss;
        loss.lostMarkers = loss.lostGrid = true;
        loss.capturedAt = captured;
        QCOMPARE(CueFigures::lossLine(loss),
                 QString(u"Lost: Hot cues and beat grid · captured "_s + dateForPeople(captured)));
    }
};

QTEST_APPLESS_MAIN(CueFiguresTest)
#include "cue_figures_test.moc"
