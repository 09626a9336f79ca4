#include "platform/environment.h"

#include <QTest>

#include <pwd.h>
#include <unistd.h>

using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

class EnvironmentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsAVariableThatIsSet();
    void findsTheHomeFolder_data();
    void findsTheHomeFolder();
    void asksTheUserDatabaseWithoutTheVariable();
};

void EnvironmentTest::tellsAVariableThatIsSet()
{
    qputenv("TARNWICK_TEST_VARIABLE", "a b é");
    QCOMPARE(environmentVariable("TARNWICK_TEST_VARIABLE"), std::optional(u"a b é"_s));
    qputenv("TARNWICK_TEST_VARIABLE", "");
    QCOMPARE(environmentVariable("TARNWICK_TEST_VARIABLE"), std::optional(QString()));
    qunsetenv("TARNWICK_TEST_VARIABLE");
    QCOMPARE(environmentVariable("TARNWICK_TEST_VARIABLE"), std::optional<QString>());
}

void EnvironmentTest::findsTheHomeFolder_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("folder");
    QTest::newRow("plain") << QByteArray("/home/dj") << u"/home/dj"_s;
    QTest::newRow("with slashes behind") << QByteArray("/home/dj//") << u"/home/dj"_s;
    QTest::newRow("the root") << QByteArray("/") << u"/"_s;
}

void EnvironmentTest::findsTheHomeFolder()
{
    QFETCH(QByteArray, value);
    qputenv("HOME", value);
    QTEST(homeFolder(), "folder");
}

void EnvironmentTest::asksTheUserDatabaseWithoutTheVariable()
{
    const QString known = QString::fromLocal8Bit(::getpwuid(::getuid())->pw_dir);
    qunsetenv("HOME");
    QCOMPARE(homeFolder(), known);
    qputenv("HOME", "");
    QCOMPARE(homeFolder(), known);
}

QTEST_GUILESS_MAIN(EnvironmentTest)
#include "environment_test.moc"
