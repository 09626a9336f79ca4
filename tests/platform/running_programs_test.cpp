#include "platform/running_programs.h"

#include "support/running_program.h"

#include <QTest>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class RunningProgramsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsAProgramByItsExactName_data();
    void findsAProgramByItsExactName();
    void findsNothingAfterItsEnd();
};

void RunningProgramsTest::findsAProgramByItsExactName_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("found");
    QTest::newRow("its name") << QStringList{u"Tarnwick Twin"_s} << true;
    QTest::newRow("its name among others") << QStringList{u"other"_s, u"Tarnwick Twin"_s} << true;
    QTest::newRow("other letter case") << QStringList{u"tarnwick twin"_s} << false;
    QTest::newRow("a part") << QStringList{u"Tarnwick"_s} << false;
    QTest::newRow("more than it") << QStringList{u"Tarnwick Twins"_s} << false;
    QTest::newRow("no names") << QStringList() << false;
    QTest::newRow("an empty name") << QStringList{QString()} << false;
}

void RunningProgramsTest::findsAProgramByItsExactName()
{
    QFETCH(QStringList, names);
    const RunningProgram program(u"Tarnwick Twin"_s);
    QTEST(isAnyProgramRunning(names), "found");
}

void RunningProgramsTest::findsNothingAfterItsEnd()
{
    {
        const RunningProgram program(u"Tarnwick Brief"_s);
        QVERIFY(isAnyProgramRunning({u"Tarnwick Brief"_s}));
    }
    QVERIFY(!isAnyProgramRunning({u"Tarnwick Brief"_s}));
}

QTEST_GUILESS_MAIN(RunningProgramsTest)
#include "running_programs_test.moc"
