#include "platform/running_programs.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

class RunningProgramsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsAProgramByItsExactName_data();
    void findsAProgramByItsExactName();
    void findsNothingAfterItsEnd();
};

namespace {

/// A program of this name, running until the guard goes.
class RunningProgram
{
public:
    explicit RunningProgram(const QString &name)
    {
        const QString program = m_folder.filePath(name);
        QFile::copy(u"/bin/sleep"_s, program);
        m_process.start(program, {u"60"_s});
        m_process.waitForStarted();
    }
    ~RunningProgram()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

} // namespace

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
    QTest::qWait(10);
    QTEST(isAnyProgramRunning(names), "found");
}

void RunningProgramsTest::findsNothingAfterItsEnd()
{
    {
        const RunningProgram program(u"Tarnwick Brief"_s);
        QTRY_VERIFY(isAnyProgramRunning({u"Tarnwick Brief"_s}));
    }
    QVERIFY(!isAnyProgramRunning({u"Tarnwick Brief"_s}));
}

QTEST_GUILESS_MAIN(RunningProgramsTest)
#include "running_programs_test.moc"
