#include "platform/data_folder.h"

#include <QTest>

using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

class DataFolderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void liesWhereTheSystemKeepsData_data();
    void liesWhereTheSystemKeepsData();
};

void DataFolderTest::liesWhereTheSystemKeepsData_data()
{
    QTest::addColumn<QByteArray>("configured");
    QTest::addColumn<QString>("folder");
    QTest::newRow("not configured") << QByteArray() << u"/home/dj/.local/share/Tarnwick"_s;
    QTest::newRow("empty") << QByteArray("") << u"/home/dj/.local/share/Tarnwick"_s;
    QTest::newRow("configured") << QByteArray("/data") << u"/data/Tarnwick"_s;
    QTest::newRow("with a slash behind") << QByteArray("/data/") << u"/data/Tarnwick"_s;
    QTest::newRow("relative, so no good")
        << QByteArray("data") << u"/home/dj/.local/share/Tarnwick"_s;
}

void DataFolderTest::liesWhereTheSystemKeepsData()
{
    QFETCH(QByteArray, configured);
    QFETCH(QString, folder);
    qputenv("HOME", "/home/dj");
    configured.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", configured);
    QCOMPARE(dataFolder(), folder);
}

QTEST_GUILESS_MAIN(DataFolderTest)
#include "data_folder_test.moc"
