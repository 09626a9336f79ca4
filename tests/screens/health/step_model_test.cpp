#include "screens/health/step_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class StepModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesWhatARowShows()
    {
        StepModel model;
        const QAbstractItemModelTester tester(&model);
        model.setSteps({{u"Title"_s, u"Detail"_s, Screen::Missing}, {u"Next"_s, u"More"_s}});
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.index(0).data(StepModel::TitleRole), u"Title"_s);
        QCOMPARE(model.index(0).data(StepModel::DetailRole), u"Detail"_s);
        QCOMPARE(model.stepAt(0).jump, Screen::Missing);
    }

    void staysWhereNothingHasChanged()
    {
        StepModel model;
        model.setSteps({{u"Title"_s, u"Detail"_s}});
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.setSteps({{u"Title"_s, u"Detail"_s}});
        QCOMPARE(reset.count(), 0);
        model.setSteps({});
        QCOMPARE(reset.count(), 1);
    }
};

QTEST_GUILESS_MAIN(StepModelTest)
#include "step_model_test.moc"
