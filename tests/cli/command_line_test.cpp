#include "cli/command_line.h"

#include "cli/command_table.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesOptionsOnEitherSideOfTheCommand_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("ahead") << QStringList{u"--json"_s, u"--library"_s, u"x"_s, u"--no-tags"_s,
                                              u"scan"_s};
        QTest::newRow("behind") << QStringList{u"scan"_s, u"--no-tags"_s, u"--library=x"_s,
                                               u"--json"_s};
    }
    void takesOptionsOnEitherSideOfTheCommand()
    {
        QFETCH(QStringList, arguments);
        const auto line = cli::parseCommandLine(arguments);
        QVERIFY(line);
        QVERIFY(line->json);
        QCOMPARE(line->library, u"x"_s);
        QCOMPARE(line->command->name, u"scan"_s);
        QVERIFY(line->has(u"no-tags"_s));
    }

    void endsTheOptionsAtTwoHyphens()
    {
        const auto line = cli::parseCommandLine({u"probe"_s, u"--"_s, u"--json"_s});
        QVERIFY(line);
        QVERIFY(!line->json);
        QCOMPARE(line->arguments, QStringList{u"--json"_s});
    }

    void complainsInOneLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("nothing") << QStringList{}
                                 << u"no command given (see 'tarnwick-cli --help')"_s;
        QTest::newRow("unknown command")
            << QStringList{u"sing"_s} << u"unknown command 'sing' (see 'tarnwick-cli --help')"_s;
        QTest::newRow("unknown option") << QStringList{u"scan"_s, u"--loud"_s}
                                        << u"Unknown option 'loud'. (see 'tarnwick-cli --help')"_s;
        QTest::newRow("option of another command")
            << QStringList{u"score"_s, u"--no-tags"_s}
            << u"'score' has no option '--no-tags' (see 'tarnwick-cli score --help')"_s;
        QTest::newRow("too many arguments")
            << QStringList{u"scan"_s, u"a"_s} << u"too many arguments: usage: tarnwick-cli scan"_s;
        QTest::newRow("argument missing")
            << QStringList{u"probe"_s}
            << u"an argument is missing: usage: tarnwick-cli probe FILE"_s;
        QTest::newRow("value missing") << QStringList{u"scan"_s, u"--library"_s}
                                       << u"Missing value after '--library'. (see 'tarnwick-cli "
                                          "--help')"_s;
    }
    void complainsInOneLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const auto line = cli::parseCommandLine(arguments);
        QVERIFY(!line);
        QCOMPARE(line.error().message, message);
    }

    void asksForNothingMoreThanHelp()
    {
        const auto line = cli::parseCommandLine({u"probe"_s, u"--help"_s});
        QVERIFY(line);
        QVERIFY(line->help);
        QCOMPARE(line->command->name, u"probe"_s);
    }

    void listsEveryCommandInTheHelp()
    {
        const QString help = cli::programHelp();
        for (const cli::CommandInfo &command : cli::commands()) {
            QVERIFY2(help.contains(command.name), qPrintable(command.name));
            QVERIFY2(cli::commandHelp(command).contains(command.summary), qPrintable(command.name));
        }
    }

    void meansTheSameByAnOptionWhereverItIsTaken()
    {
        QHash<QString, QString> valueNames;
        for (const cli::CommandInfo &command : cli::commands()) {
            for (const cli::OptionInfo &option : command.options) {
                const bool takesValue = !option.valueName.isEmpty();
                const QString known = valueNames.value(option.name, option.valueName);
                QCOMPARE(takesValue, !known.isEmpty());
                valueNames.insert(option.name, option.valueName);
            }
        }
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "command_line_test.moc"
