#include "screens/health/bar_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class BarModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesLabelsCountsAndTheMost()
    {
        BarModel model;
        const QAbstractItemModelTester tester(&model);
        QCOMPARE(model.most(), 0);
        model.setBars({{u"House"_s, 3}, {u"Pop"_s, 7}, {u"Jazz"_s, 0}});
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(model.index(1).data(BarModel::LabelRole), u"Pop"_s);
        QCOMPARE(model.index(1).data(BarModel::CountRole), 7);
        QCOMPARE(model.most(), 7);
    }

    void staysWhereNothingHasChanged()
    {
        BarModel model;
        model.setBars({{u"House"_s, 3}});
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.setBars({{u"House"_s, 3}});
        QCOMPARE(reset.count(), 0);
        model.setBars({{u"House"_s, 4}});
        QCOMPARE(reset.count(), 1);
    }
};

QTEST_GUILESS_MAIN(BarModelTest)
#include "bar_model_test.moc"
