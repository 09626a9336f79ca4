#include "platform/running_programs.h"

#include "support/running_program.h"
#include "support/test_folder.h"

#include <QFile>
#include <QProcess>
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
    void findsNoProgramForAnEmptyName();
    void findsNothingAfterItsEnd();
    void canCountOwnProgramsOnly();
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
}

void RunningProgramsTest::findsAProgramByItsExactName()
{
    QFETCH(QStringList, names);
    const RunningProgram program(u"Tarnwick Twin"_s);
    QTEST(isAnyProgramRunning(names), "found");
}

void RunningProgramsTest::findsNoProgramForAnEmptyName()
{
#ifndef Q_OS_LINUX
    QSKIP("a program can't shed its name");
#endif
    // As nameless as one that ends while it is looked at.
    QProcess nameless;
    nameless.start(u"/bin/sh"_s,
                   {u"-c"_s, u"printf '\\0' >/proc/$$/comm; cat /proc/$$/comm; read -r line"_s});
    QVERIFY(nameless.waitForReadyRead());
    QCOMPARE(nameless.readAllStandardOutput(), "\n");
    QVERIFY(!isAnyProgramRunning({QString(), u"Tarnwick Absent"_s}));
    nameless.closeWriteChannel();
    QVERIFY(nameless.waitForFinished());
}

void RunningProgramsTest::findsNothingAfterItsEnd()
{
    {
        const RunningProgram program(u"Tarnwick Brief"_s);
        QVERIFY(isAnyProgramRunning({u"Tarnwick Brief"_s}));
    }
    QVERIFY(!isAnyProgramRunning({u"Tarnwick Brief"_s}));
}

void RunningProgramsTest::canCountOwnProgramsOnly()
{
    // A process between this one and the program, which ends with its input.
    const TestFolder folder;
    const QString name = u"Tarnwick (far)"_s;
    QVERIFY(QFile::copy(u"/bin/sleep"_s, folder.path(name)));
    QProcess parent;
    parent.start(u"/bin/sh"_s,
                 {u"-c"_s, u"\"$0\" 60 & read -r line; kill $!"_s, folder.path(name)});
    QVERIFY(parent.waitForStarted());
    QTRY_VERIFY(isAnyProgramRunning({name}));
    {
        const ScopedOwnPrograms guard;
        QVERIFY(!isAnyProgramRunning({name}));
        const RunningProgram program(u"Tarnwick ) near"_s);
        QVERIFY(isAnyProgramRunning({name, u"Tarnwick ) near"_s}));
    }
    QVERIFY(isAnyProgramRunning({name}));
    parent.closeWriteChannel();
    QVERIFY(parent.waitForFinished());
}

QTEST_GUILESS_MAIN(RunningProgramsTest)
#include "running_programs_test.moc"
