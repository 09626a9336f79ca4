#include "repair/undo_plan.h"

#include "support/scoped_environment.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"
#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class UndoPlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheFirstTrackOfAPath()
    {
        const auto result = scanOf({onDisk().path(u"a/song.mp3"_s), onDisk().path(u"song.mp3"_s),
                                    onDisk().path(u"song.mp3"_s)});
        QCOMPARE(UndoPlan::trackAtPath(*result, u"song.mp3"_s), &result->tracks[1]);
        QCOMPARE(UndoPlan::trackAtPath(*result, u"/song.mp3"_s), nullptr);
    }

    void findsTheFirstTrackOfAName()
    {
        const auto result =
            scanOf({onDisk().path(u"song.mp3/other.mp3"_s), onDisk().path(u"a/mysong.mp3"_s),
                    onDisk().path(u"a/song.mp3"_s), onDisk().path(u"b/song.mp3"_s)});
        QCOMPARE(UndoPlan::trackNamed(*result, u"song.mp3"_s), &result->tracks[2]);
        QCOMPARE(UndoPlan::trackNamed(*result, u"none.mp3"_s), nullptr);
    }

    void readsTheGenreBefore_data()
    {
        QTest::addColumn<std::optional<QString>>("before");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << std::optional<QString>() << QString();
        QTest::newRow("dash") << std::optional(u"—"_s) << QString();
        QTest::newRow("hyphen") << std::optional(u"-"_s) << u"-"_s;
        QTest::newRow("genre") << std::optional(u"House"_s) << u"House"_s;
    }
    void readsTheGenreBefore()
    {
        QFETCH(const std::optional<QString>, before);
        ChangeEntry entry;
        entry.before = before;
        QTEST(UndoPlan::genreBefore(entry), "expected");
    }

    void takesTheRecordOfASnapshot()
    {
        const TestFolder folder;
        const ScopedVariable data("XDG_DATA_HOME", folder.path().toUtf8());
        const QByteArray bytes = trackRecord({textRecord("pfil", u"a.mp3"), record("zzzz", "x")});
        folder.write(u"Tarnwick/Snapshots/snap-1/database V2"_s, databaseVersion() + bytes);
        for (const QString &path : {u"a.mp3"_s, u"/a.mp3"_s}) {
            const auto found = UndoPlan::recordInSnapshot(u"snap-1"_s, path);
            QVERIFY(found);
            QCOMPARE(found->bytes(), bytes);
        }
        QVERIFY(!UndoPlan::recordInSnapshot(u"snap-1"_s, u"b.mp3"_s));
        QVERIFY(!UndoPlan::recordInSnapshot(u"snap-2"_s, u"a.mp3"_s));
    }

    /// The log lies in a file that anybody may have written.
    void looksForSnapshotsInTheirFolderAlone()
    {
        const TestFolder folder;
        const ScopedVariable data("XDG_DATA_HOME", folder.path().toUtf8());
        folder.write(u"Tarnwick/elsewhere/database V2"_s,
                     databaseVersion() + trackRecord({textRecord("pfil", u"a.mp3")}));
        folder.makeFolder(u"Tarnwick/Snapshots"_s);
        QVERIFY(!UndoPlan::recordInSnapshot(u"../elsewhere"_s, u"a.mp3"_s));
    }

    void makesATrackOfARecordWithoutALookIntoItsFile()
    {
        const TestFolder folder;
        const QString path = folder.write(u"a.mp3"_s, "music").sliced(1);
        const QByteArray bytes = trackRecord({textRecord("pfil", path), textRecord("tsng", u"Song"),
                                              numberRecord("tsiz", 77), numberRecord("utkn", 3)});
        const ScannedTrack track = UndoPlan::unscannedTrack(DocumentRecord::fromBytes(bytes));
        QCOMPARE(track.track.title, u"Song"_s);
        QCOMPARE(track.onDiskSizeBytes, track.track.fileSizeBytes);
        QVERIFY(track.existsOnDisk);
        QVERIFY(!track.hasMarkers && !track.hasBeatGrid && !track.hasGain && !track.hasReplayGain);
        QVERIFY(!track.tagsRead && !track.autogain);
        QVERIFY(QFile::remove(u'/' + path));
        QVERIFY(!UndoPlan::unscannedTrack(DocumentRecord::fromBytes(bytes)).existsOnDisk);
    }
};

QTEST_GUILESS_MAIN(UndoPlanTest)
#include "undo_plan_test.moc"
