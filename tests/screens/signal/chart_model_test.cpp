#include "screens/signal/chart_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

LandingTrack track(const QString &key)
{
    return {.trackKey = key, .title = u"Title "_s + key, .djs = 5, .plays = 9};
}

QStringList column(const ChartModel &model, int role)
{
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row)
        cells += model.index(row, 0).data(role).toString();
    return cells;
}

} // namespace

class ChartModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsTheRowsInTheirOrder()
    {
        ChartModel model;
        const QAbstractItemModelTester tester(&model);
        LandingTrack first = track(u"b"_s);
        first.artist = u"Ash"_s;
        first.lanes = u"House,Techno"_s;
        model.setRows({first, track(u"a"_s)}, {}, {});
        QCOMPARE(column(model, ChartModel::KeyRole), QStringList({u"b"_s, u"a"_s}));
        QCOMPARE(column(model, ChartModel::RankRole), QStringList({u"1"_s, u"2"_s}));
        QCOMPARE(column(model, ChartModel::LineRole),
                 QStringList({u"Ash — Title b"_s, u"Title a"_s}));
        QCOMPARE(column(model, ChartModel::LanesRole), QStringList({u"House · Techno"_s, {}}));
        QCOMPARE(column(model, ChartModel::DjsRole), QStringList({u"5 DJs"_s, u"5 DJs"_s}));
        QCOMPARE(column(model, ChartModel::PlaysRole), QStringList({u"9 plays"_s, u"9 plays"_s}));
        QCOMPARE(column(model, ChartModel::ActsRole), QStringList({u"false"_s, u"false"_s}));
    }

    void marksWhatIsOwnedAndWasNeverPlayed()
    {
        ChartModel model;
        const QAbstractItemModelTester tester(&model);
        const QList<LandingTrack> rows = {track(u"owned"_s), track(u"both"_s), track(u"played"_s),
                                          track(u"neither"_s)};
        model.setRows(rows, {u"owned"_s, u"both"_s}, {u"both"_s, u"played"_s});
        QCOMPARE(column(model, ChartModel::MarkedRole),
                 QStringList({u"true"_s, u"false"_s, u"false"_s, u"false"_s}));
        model.setRows(rows, {}, {});
        QCOMPARE(column(model, ChartModel::MarkedRole),
                 QStringList({u"false"_s, u"false"_s, u"false"_s, u"false"_s}));
    }

    void ranksByThePlaceAmongTheRowsShown()
    {
        ChartModel model;
        const QAbstractItemModelTester tester(&model);
        model.setRows({track(u"a"_s), track(u"b"_s), track(u"c"_s)}, {}, {});
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        model.setRows({track(u"c"_s)}, {}, {});
        QCOMPARE(column(model, ChartModel::RankRole), QStringList({u"1"_s}));
        model.setRows({track(u"b"_s), track(u"c"_s)}, {}, {});
        QCOMPARE(column(model, ChartModel::RankRole), QStringList({u"1"_s, u"2"_s}));
        // A row that stays is the same row.
        QCOMPARE(resets.size(), 0);
    }

    void takesAKeyThatCameTwice()
    {
        ChartModel model;
        const QAbstractItemModelTester tester(&model);
        const QList<LandingTrack> twice = {track(u"a"_s), track(u"a"_s), track(u"b"_s)};
        model.setRows(twice, {}, {});
        QCOMPARE(column(model, ChartModel::RankRole), QStringList({u"1"_s, u"2"_s, u"3"_s}));
        model.setRows({track(u"b"_s), track(u"a"_s)}, {}, {});
        model.setRows(twice, {}, {});
        QCOMPARE(column(model, ChartModel::KeyRole), QStringList({u"a"_s, u"a"_s, u"b"_s}));
        model.setRows({}, {}, {});
        QCOMPARE(model.rowCount(), 0);
    }
};

QTEST_APPLESS_MAIN(ChartModelTest)
#include "chart_model_test.moc"
