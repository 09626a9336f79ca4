#include "demo_library_run.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The program's manners: repeatable, careful with what is there, clear about wrong usage.
class DemoLibraryCommandTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_home;

    Run write(const QString &seed, const QStringList &more = {}) const
    {
        return demoLibrary(QStringList{u"--tracks"_s, u"60"_s, u"--seed"_s, seed, u"--out"_s,
                                       m_home, u"--today"_s, u"2026-03-01"_s} +
                           more);
    }

private Q_SLOTS:
    void init()
    {
        static int number = 0;
        m_home = m_folder.filePath(u"home %1"_s.arg(++number));
    }

    void theSameSeedGivesTheSameBytes()
    {
        QCOMPARE(write(u"5"_s).status, 0);
        const auto first = contents(m_home);
        QVERIFY(first.size() > 60);
        QVERIFY(QDir().rename(m_home, m_home + u" before"_s));
        QCOMPARE(write(u"5"_s).status, 0);
        QCOMPARE(contents(m_home), first);
    }

    void anotherSeedGivesAnotherLibrary()
    {
        QCOMPARE(write(u"5"_s).status, 0);
        const auto first = contents(m_home);
        QVERIFY(QDir().rename(m_home, m_home + u" before"_s));
        QCOMPARE(write(u"6"_s).status, 0);
        QVERIFY(contents(m_home) != first);
    }

    void theDayMovesTheSessionsAlone()
    {
        QCOMPARE(write(u"5"_s).status, 0);
        const auto first = contents(m_home);
        QVERIFY(QDir().rename(m_home, m_home + u" before"_s));
        QCOMPARE(write(u"5"_s, {u"--today"_s, u"2026-04-01"_s}).status, 0);
        const auto second = contents(m_home);
        QCOMPARE(second.keys(), first.keys());
        for (const QString &name : first.keys()) {
            QCOMPARE(first[name] != second[name], name.endsWith(u".session"_s));
        }
    }

    void aPresentLibraryIsRefusedAndLeftAlone()
    {
        QVERIFY(QDir().mkpath(m_home + u"/Music/_Serato_"_s));
        const Run run = write(u"5"_s);
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains("_Serato_ is there already"), run.errors.constData());
        QVERIFY(contents(m_home).isEmpty());
    }

    void aPresentAudioFileIsRefusedAndLeftAlone()
    {
        QCOMPARE(write(u"5"_s).status, 0);
        QVERIFY(QDir(m_home + u"/Music/_Serato_"_s).removeRecursively());
        const auto before = contents(m_home);
        const Run run = write(u"5"_s);
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains(" is there already"), run.errors.constData());
        QCOMPARE(contents(m_home), before);
    }

    void forceSetsThePresentLibraryAside()
    {
        QCOMPARE(write(u"5"_s).status, 0);
        const auto first = contents(m_home + u"/Music/_Serato_"_s);
        QCOMPARE(write(u"6"_s, {u"--force"_s}).status, 0);
        QCOMPARE(contents(m_home + u"/Music/_Serato_ set aside 1"_s), first);
        QCOMPARE(write(u"5"_s, {u"--force"_s}).status, 0);
        QVERIFY(QFileInfo(m_home + u"/Music/_Serato_ set aside 2"_s).isDir());
        QCOMPARE(contents(m_home + u"/Music/_Serato_"_s), first);
    }

    void anEmptyLibraryHasItsVersionAlone()
    {
        const QString file = m_folder.filePath(u"empty.json"_s);
        QCOMPARE(demoLibrary({u"--empty"_s, u"--out"_s, m_home, u"--expect"_s, file}).status, 0);
        QCOMPARE(contents(m_home).keys(), QStringList{u"Music/_Serato_/database V2"_s});
        const auto database =
            raw::records(raw::fileBytes(m_home + u"/Music/_Serato_/database V2"_s));
        QVERIFY(database.whole);
        QCOMPARE(database.list.size(), 1);
        QCOMPARE(database.list.first().tag, QByteArray("vrsn"));
        const QJsonObject expected = QJsonDocument::fromJson(raw::fileBytes(file)).object();
        QCOMPARE(expected[u"total"_s].toInt(-1), 0);
        QCOMPARE(expected[u"score"_s].toInt(), 100);
        QCOMPARE(expected[u"dimensions"_s].toArray(), QJsonArray({100, 100, 100, 100, 100, 100}));
    }

    void smallLibrariesWork_data()
    {
        QTest::addColumn<int>("tracks");
        for (const int tracks : {1, 2, 7, 8, 19, 20}) {
            QTest::addRow("%d tracks", tracks) << tracks;
        }
    }

    void smallLibrariesWork()
    {
        QFETCH(int, tracks);
        const Run run = write(u"5"_s, {u"--tracks"_s, QString::number(tracks)});
        QCOMPARE(run.status, 0);
        const auto database =
            raw::records(raw::fileBytes(m_home + u"/Music/_Serato_/database V2"_s));
        QVERIFY(database.whole);
        QCOMPARE(database.list.size(), tracks + 2);
    }

    void wrongUsageIsToldAndWritesNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("message");
        const auto row = [](const char *name, const QStringList &arguments, const char *message) {
            QTest::newRow(name) << arguments << QByteArray(message);
        };
        row("no arguments", {}, "--out is missing");
        row("no number of tracks", {u"--out"_s, u"x"_s}, "--tracks or --empty is missing");
        row("no folder", {u"--tracks"_s, u"3"_s}, "--out is missing");
        row("unknown option", {u"--trakcs"_s}, "unknown option --trakcs");
        row("value missing", {u"--tracks"_s}, "--tracks needs a value");
        row("not a number", {u"--tracks"_s, u"many"_s}, "--tracks can't be \"many\"");
        row("negative", {u"--tracks"_s, u"-1"_s}, "--tracks can't be \"-1\"");
        row("no date", {u"--today"_s, u"2026-13-01"_s}, "--today can't be \"2026-13-01\"");
        row("empty and tracks", {u"--out"_s, u"x"_s, u"--empty"_s, u"--tracks"_s, u"3"_s},
            "contradict");
    }

    void wrongUsageIsToldAndWritesNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, message);
        const Run run = demoLibrary(arguments);
        QCOMPARE(run.status, 2);
        QVERIFY(run.output.isEmpty());
        QVERIFY2(run.errors.contains(message), run.errors.constData());
    }

    void helpNamesEveryOption()
    {
        const Run run = demoLibrary({u"--help"_s});
        QCOMPARE(run.status, 0);
        for (const char *option : {"--tracks", "--seed", "--out", "--small-tags", "--expect",
                                   "--today", "--empty", "--force"}) {
            QVERIFY2(run.output.contains(option), option);
        }
    }

    void aFileInTheWayIsAnErrorOfStatusOne()
    {
        QFile file(m_home);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const Run run = write(u"5"_s);
        QCOMPARE(run.status, 1);
        QVERIFY(!run.errors.isEmpty());
        QVERIFY(run.output.isEmpty());
    }
};

QTEST_GUILESS_MAIN(DemoLibraryCommandTest)
#include "demo_library_command_test.moc"
