#include "cli/completions.h"

#include "cli/command_table.h"
#include "support/test_folder.h"

#include <QProcess>
#include <QTest>

#include <algorithm>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class CompletionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bashCompletesTheLastWord_data();
    void bashCompletesTheLastWord();
    void zshTakesTheScript();
    void zshKnowsEveryCommandAndOption();

private:
    /// What a shell prints for a script.
    static QByteArray output(const QString &shell, const QString &folder, const QString &script);
};

QByteArray CompletionsTest::output(const QString &shell, const QString &folder,
                                   const QString &script)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(shell, {u"-c"_s, script});
    if (!process.waitForFinished() || process.exitCode() != 0)
        return "the shell failed: " + process.readAll();
    return process.readAll();
}

void CompletionsTest::bashCompletesTheLastWord_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("a command") << QStringList{u"sco"_s} << QByteArray("score");
    QTest::newRow("several") << QStringList{u"sc"_s} << QByteArray("scan score");
    QTest::newRow("behind a global option")
        << QStringList{u"--json"_s, u"sco"_s} << QByteArray("score");
    QTest::newRow("behind a library")
        << QStringList{u"--library"_s, u"folder"_s, u"sco"_s} << QByteArray("score");
    QTest::newRow("a library") << QStringList{u"--library"_s, u"fo"_s} << QByteArray("folder");
    QTest::newRow("a global option") << QStringList{u"--j"_s} << QByteArray("--json");
    QTest::newRow("an option of the command")
        << QStringList{u"scan"_s, u"--no"_s} << QByteArray("--no-tags");
    QTest::newRow("the first of two words") << QStringList{u"sig"_s} << QByteArray("signal");
    QTest::newRow("the second") << QStringList{u"signal"_s, u"l"_s}
                                << QByteArray("lanes landing leave");
    QTest::newRow("the second behind an option")
        << QStringList{u"signal"_s, u"--json"_s, u"co"_s} << QByteArray("contribute");
    QTest::newRow("an option of two words")
        << QStringList{u"signal"_s, u"landing"_s, u"--wi"_s} << QByteArray("--window");
    QTest::newRow("none of its sister")
        << QStringList{u"signal"_s, u"landing"_s, u"--opt"_s} << QByteArray();
    QTest::newRow("none of another command") << QStringList{u"score"_s, u"--no"_s} << QByteArray();
    QTest::newRow("a file") << QStringList{u"probe"_s, u"so"_s} << QByteArray("song.mp3");
    QTest::newRow("no file for a track's path") << QStringList{u"drop"_s, u"so"_s} << QByteArray();
}

void CompletionsTest::bashCompletesTheLastWord()
{
    QFETCH(const QStringList, words);
    const TestFolder folder;
    folder.write(u"song.mp3"_s);
    folder.makeFolder(u"folder"_s);
    const QString line = words.join(u"' '"_s);
    const QString script =
        cli::bashCompletion() +
        u"COMP_WORDS=(tarnwick-cli '%1'); COMP_CWORD=%2; _tarnwick_cli; printf %s \"${COMPREPLY[*]}\""_s
            .arg(line, QString::number(words.size()));
    QTEST(output(u"bash"_s, folder.path(), script), "expected");
}

void CompletionsTest::zshTakesTheScript()
{
    const TestFolder folder;
    folder.write(u"_tarnwick-cli"_s, cli::zshCompletion().toUtf8());
    QCOMPARE(output(u"zsh"_s, folder.path(), u"zsh -n _tarnwick-cli"_s), QByteArray());
    // Loaded as a shell loads it, it is known for the program.
    const QString script = u"fpath=($PWD $fpath); autoload -U compinit; compinit -D -u; "
                           "print -n $_comps[tarnwick-cli]"_s;
    QCOMPARE(output(u"zsh"_s, folder.path(), script), QByteArray("_tarnwick-cli"));
}

void CompletionsTest::zshKnowsEveryCommandAndOption()
{
    const QString script = cli::zshCompletion();
    for (const cli::CommandInfo &command : cli::commands()) {
        QVERIFY2(script.contains(u"    '%1:"_s.arg(command.name.section(u' ', -1))),
                 qPrintable(command.name));
        for (const cli::OptionInfo &option : command.options)
            QVERIFY2(script.contains(u"'*--%1["_s.arg(option.name)), qPrintable(option.name));
    }
}

QTEST_GUILESS_MAIN(CompletionsTest)
#include "completions_test.moc"
