#include "repair/repair_engine.h"

#include "platform/fault_gate.h"
#include "platform/running_programs.h"
#include "support/library_builder.h"
#include "support/running_program.h"
#include "support/test_files.h"

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using Kind = RepairEngine::RepairError::Kind;

class RepairEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhatWentWrong_data();
    void saysWhatWentWrong();
    void writesWhatTheEditChanged();
    void leavesTheFileWhereTheEditFindsNothing();
    void readsTheFileAfreshEachTime();
    void refusesWhileSeratoRuns();
    void failsWithTheReadersWordsWithoutADatabase();
    void failsWithTheCauseWhereTheDatabaseCannotBeWritten();

private:
    static bool rename(SeratoDocument &document)
    {
        return document.setText(u"music/a.mp3"_s, "tgen"_tag, u"House"_s);
    }
    static QByteArray database(const QByteArray &genre)
    {
        return databaseVersion() + trackRecord({textRecord("pfil", u"music/a.mp3"), genre});
    }

    platform::ScopedOwnPrograms m_programs;
};

void RepairEngineTest::saysWhatWentWrong_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("message");
    QTest::newRow("Serato runs") << Kind::SeratoRunning
                                 << u"Serato is running — close it before making changes."_s;
    QTest::newRow("not found") << Kind::NotFound << u"That track is no longer in the database."_s;
    QTest::newRow("not read") << Kind::ReadFailed << u"disk on fire"_s;
    QTest::newRow("not written") << Kind::WriteFailed << u"Write failed: disk on fire"_s;
}

void RepairEngineTest::saysWhatWentWrong()
{
    QFETCH(const Kind, kind);
    QTEST((RepairEngine::RepairError{kind, u"disk on fire"_s}).message(), "message");
}

void RepairEngineTest::writesWhatTheEditChanged()
{
    LibraryBuilder library;
    library.addRecord(trackRecord({textRecord("pfil", u"music/a.mp3")}));
    const auto location = library.write();
    QVERIFY(RepairEngine::mutate(location, rename));
    QCOMPARE(contentOf(location.databasePath()), database(textRecord("tgen", u"House")));
}

void RepairEngineTest::leavesTheFileWhereTheEditFindsNothing()
{
    LibraryBuilder library;
    library.addRecord(trackRecord({textRecord("pfil", u"music/a.mp3")}));
    const auto location = library.write();
    const auto outcome = RepairEngine::mutate(location, [](SeratoDocument &document) {
        rename(document);
        return false;
    });
    QVERIFY(!outcome);
    QCOMPARE(outcome.error(), (RepairEngine::RepairError{Kind::NotFound}));
    QCOMPARE(contentOf(location.databasePath()), database({}));
}

void RepairEngineTest::readsTheFileAfreshEachTime()
{
    LibraryBuilder library;
    library.addRecord(trackRecord({textRecord("pfil", u"music/a.mp3")}));
    const auto location = library.write();
    QVERIFY(RepairEngine::mutate(location, rename));
    const QByteArray other = trackRecord({textRecord("pfil", u"music/b.mp3")});
    put(location.databasePath(), databaseVersion() + other);
    QVERIFY(!RepairEngine::mutate(location, rename));
    QCOMPARE(contentOf(location.databasePath()), databaseVersion() + other);
}

void RepairEngineTest::refusesWhileSeratoRuns()
{
    LibraryBuilder library;
    library.addRecord(trackRecord({textRecord("pfil", u"music/a.mp3")}));
    const auto location = library.write();
    const RunningProgram serato(u"Serato DJ Pro"_s);
    bool edited = false;
    const auto outcome = RepairEngine::mutate(location, [&](SeratoDocument &) {
        edited = true;
        return true;
    });
    QVERIFY(!outcome);
    QCOMPARE(outcome.error(), (RepairEngine::RepairError{Kind::SeratoRunning}));
    QVERIFY(!edited);
}

void RepairEngineTest::failsWithTheReadersWordsWithoutADatabase()
{
    const TestFolder folder;
    const SeratoLibrary::Location location{u"Test"_s, QUrl::fromLocalFile(folder.path())};
    const auto outcome = RepairEngine::mutate(location, rename);
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().kind, Kind::ReadFailed);
    QCOMPARE(outcome.error().message(),
             u"The file “database V2” couldn't be opened: No such file or directory."_s);
}

void RepairEngineTest::failsWithTheCauseWhereTheDatabaseCannotBeWritten()
{
    LibraryBuilder library;
    library.addRecord(trackRecord({textRecord("pfil", u"music/a.mp3")}));
    const auto location = library.write();
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
        return operation == platform::FileOperation::Write ? ENOSPC : 0;
    });
    const auto outcome = RepairEngine::mutate(location, rename);
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().kind, Kind::WriteFailed);
    QVERIFY2(outcome.error().message().startsWith(u"Write failed: "_s) &&
                 outcome.error().message().contains(u"No space left on device"_s),
             qPrintable(outcome.error().message()));
    QCOMPARE(contentOf(location.databasePath()), database({}));
}

QTEST_GUILESS_MAIN(RepairEngineTest)
#include "repair_engine_test.moc"
