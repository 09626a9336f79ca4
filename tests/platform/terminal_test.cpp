#include "platform/terminal.h"

#include "support/scoped_environment.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;

class TerminalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsAFileFromATerminal()
    {
        std::FILE *file = std::tmpfile();
        QVERIFY(file);
        QVERIFY(!platform::isTerminal(file));
        std::fclose(file);
    }

    void asksForUtf8WhereTheEnvironmentDoesNot_data()
    {
        QTest::addColumn<QByteArray>("given");
        QTest::newRow("C") << QByteArray("C");
        QTest::newRow("UTF-8 already") << QByteArray("C.UTF-8");
    }
    void asksForUtf8WhereTheEnvironmentDoesNot()
    {
        QFETCH(QByteArray, given);
        const ScopedVariable all("LC_ALL", given);
        platform::preferUtf8Locale();
        QCOMPARE(qgetenv("LC_ALL"), QByteArray("C.UTF-8"));
    }

    void setsTheCharacterTypeAloneWhereNothingOutweighsIt()
    {
        const ScopedVariable all("LC_ALL");
        const ScopedVariable language("LANG", "C");
        const ScopedVariable type("LC_CTYPE");
        platform::preferUtf8Locale();
        QVERIFY(!qEnvironmentVariableIsSet("LC_ALL"));
        QCOMPARE(qgetenv("LC_CTYPE"), QByteArray("C.UTF-8"));
    }
};

QTEST_GUILESS_MAIN(TerminalTest)
#include "terminal_test.moc"
