#include "screens/score/dimension_model.h"

#include "screens/components/tint.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

QList<Dimension> dimensionsOf(std::initializer_list<int> scores)
{
    QList<Dimension> dimensions;
    for (const int score : scores)
        dimensions.append({Dimension::Kind(dimensions.size()), score, u"Detail"_s, u"Jump"_s});
    return dimensions;
}

} // namespace

class DimensionModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesWhatARowShows()
    {
        DimensionModel model;
        const QAbstractItemModelTester tester(&model);
        model.setDimensions(dimensionsOf({80, 79, 54}));
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(model.index(0).data(DimensionModel::NameRole), u"Files & links"_s);
        QCOMPARE(model.index(0).data(DimensionModel::DetailRole), u"Detail"_s);
        QCOMPARE(model.index(0).data(DimensionModel::ScoreRole), 80);
        QCOMPARE(model.index(0).data(DimensionModel::TintRole), int(Tint::Good));
        QCOMPARE(model.index(1).data(DimensionModel::TintRole), int(Tint::Warn));
        QCOMPARE(model.index(2).data(DimensionModel::TintRole), int(Tint::Accent));
    }

    void keepsItsRowsWhileTheirNumberStays()
    {
        DimensionModel model;
        const QAbstractItemModelTester tester(&model);
        model.setDimensions(dimensionsOf({1, 2}));
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        model.setDimensions(dimensionsOf({3, 4}));
        QCOMPARE(reset.count(), 0);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(model.index(1).data(DimensionModel::ScoreRole), 4);
    }
};

QTEST_GUILESS_MAIN(DimensionModelTest)
#include "dimension_model_test.moc"
