#include "screens/shell/location_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

SeratoLibrary::Location location(bool isOnline, bool hasDatabase)
{
    return {u"Stick"_s, QUrl::fromLocalFile(u"/Volumes/Stick/_Serato_"_s), isOnline, hasDatabase};
}

} // namespace

class LocationModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void canScanWhatIsOnlineWithADatabase_data()
    {
        QTest::addColumn<bool>("online");
        QTest::addColumn<bool>("database");
        QTest::addColumn<bool>("canScan");
        QTest::newRow("online with a database") << true << true << true;
        QTest::newRow("online without") << true << false << false;
        QTest::newRow("offline with") << false << true << false;
        QTest::newRow("offline without") << false << false << false;
    }

    void canScanWhatIsOnlineWithADatabase()
    {
        QFETCH(bool, online);
        QFETCH(bool, database);
        LocationModel model;
        const QAbstractItemModelTester tester(&model);
        model.setLocations({location(online, database)});
        QCOMPARE(model.index(0).data(LocationModel::VolumeRole), u"Stick"_s);
        QCOMPARE(model.index(0).data(LocationModel::FolderRole), u"/Volumes/Stick/_Serato_"_s);
        QCOMPARE(model.index(0).data(LocationModel::OnlineRole), online);
        QTEST(model.index(0).data(LocationModel::CanScanRole).toBool(), "canScan");
    }

    void keepsItsRowsWhereNothingHasChanged()
    {
        LocationModel model;
        const QAbstractItemModelTester tester(&model);
        model.setLocations({location(true, true)});
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.setLocations({location(true, true)});
        QCOMPARE(reset.count(), 0);
        model.setLocations({});
        QCOMPARE(reset.count(), 1);
        QCOMPARE(model.rowCount(), 0);
    }
};

QTEST_GUILESS_MAIN(LocationModelTest)
#include "location_model_test.moc"
