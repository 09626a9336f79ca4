#include "repair/relink_candidates.h"

#include "platform/volumes.h"
#include "support/scoped_environment.h"
#include "support/test_folder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

SeratoTrack trackAt(const QString &path, quint64 size = 0)
{
    SeratoTrack track;
    track.relativePath = path;
    track.fileSizeBytes = size;
    return track;
}

QString described(const RepairEngine::Candidate &candidate)
{
    return u"%1 %2"_s.arg(candidate.confidence).arg(candidate.reason);
}

} // namespace

class RelinkCandidatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scoresByNameAndSize_data();
    void scoresByNameAndSize();
    void neverOffersTheTracksOwnPath();
    void listsAPathOnce();
    void passesOverWhatIsGone();
    void keepsTheBestAndTheOrderOfEqualOnes();
    void namesTheDrive();
    void searchesTheHomeFolderAndTheVolumes();
    void findsNothingForATrackWithoutAName();
};

void RelinkCandidatesTest::scoresByNameAndSize_data()
{
    constexpr quint64 size = 100'000;
    QTest::addColumn<QString>("name");
    QTest::addColumn<quint64>("wanted");
    QTest::addColumn<QString>("expected");
    QTest::newRow("name and size") << u"song.mp3"_s << size << u"100 same filename · same size"_s;
    QTest::newRow("name, 65,535 bytes less")
        << u"song.mp3"_s << size + 65'535 << u"93 same filename · size within 64KB"_s;
    QTest::newRow("name, 65,535 bytes more")
        << u"song.mp3"_s << size - 65'535 << u"93 same filename · size within 64KB"_s;
    QTest::newRow("name, 65,536 bytes off")
        << u"song.mp3"_s << size + 65'536 << u"85 same filename"_s;
    QTest::newRow("name, size unknown") << u"song.mp3"_s << quint64(0) << u"85 same filename"_s;
    QTest::newRow("size alone") << u"song (1).mp3"_s << size << u"75 same size"_s;
    QTest::newRow("size nearly") << u"song (1).mp3"_s << size + 1 << u"68 size within 64KB"_s;
    QTest::newRow("neither") << u"song (1).mp3"_s << size * 2 << u"60 name match"_s;
    QTest::newRow("another case of the name") << u"Song.mp3"_s << size * 2 << u"60 name match"_s;
}

void RelinkCandidatesTest::scoresByNameAndSize()
{
    QFETCH(const QString, name);
    QFETCH(const quint64, wanted);
    const TestFolder folder;
    const QString file = folder.write(name, QByteArray(100'000, 'x'));
    const auto candidates =
        RepairEngine::rankedCandidates(trackAt(u"old/song.mp3"_s, wanted), {file}, 6);
    QCOMPARE(candidates.size(), 1);
    QTEST(described(candidates.first()), "expected");
    QCOMPARE(candidates.first().url, QUrl::fromLocalFile(file));
}

void RelinkCandidatesTest::neverOffersTheTracksOwnPath()
{
    const TestFolder folder;
    const QString file = folder.write(u"song.mp3"_s);
    QVERIFY(RepairEngine::rankedCandidates(trackAt(file.sliced(1)), {file}, 6).isEmpty());
    QVERIFY(RepairEngine::rankedCandidates(trackAt(file), {file}, 6).isEmpty());
}

void RelinkCandidatesTest::listsAPathOnce()
{
    const TestFolder folder;
    const QString file = folder.write(u"song.mp3"_s);
    QCOMPARE(RepairEngine::rankedCandidates(trackAt(u"old/song.mp3"_s), {file, file}, 6).size(), 1);
}

void RelinkCandidatesTest::passesOverWhatIsGone()
{
    const TestFolder folder;
    const QString gone = folder.path(u"song.mp3"_s);
    QVERIFY(RepairEngine::rankedCandidates(trackAt(u"old/song.mp3"_s), {gone}, 6).isEmpty());
}

void RelinkCandidatesTest::keepsTheBestAndTheOrderOfEqualOnes()
{
    const TestFolder folder;
    QStringList found;
    for (int i = 0; i < 8; ++i)
        found << folder.write(u"%1/song (copy).mp3"_s.arg(i));
    found << folder.write(u"last/song.mp3"_s);
    const auto six = RepairEngine::rankedCandidates(trackAt(u"old/song.mp3"_s), found, 6);
    QStringList paths;
    for (const auto &candidate : six)
        paths << candidate.url.toLocalFile();
    QCOMPARE(paths, QStringList{found[8]} + found.first(5));
    QVERIFY(RepairEngine::rankedCandidates(trackAt(u"old/song.mp3"_s), found, 0).isEmpty());
    QCOMPARE(RepairEngine::rankedCandidates(trackAt(u"old/song.mp3"_s), found, 99).size(), 9);
}

void RelinkCandidatesTest::namesTheDrive()
{
    const TestFolder folder;
    const platform::ScopedVolumeFolders volumes({folder.path(u"volumes"_s)});
    RepairEngine::Candidate candidate;
    candidate.url = QUrl::fromLocalFile(folder.path(u"volumes/GIG USB/Music/song.mp3"_s));
    QCOMPARE(candidate.drive(), u"GIG USB"_s);
    candidate.url = QUrl::fromLocalFile(folder.path(u"home/song.mp3"_s));
#ifdef Q_OS_MACOS
    QCOMPARE(candidate.drive(), u"Macintosh HD"_s);
#else
    QCOMPARE(candidate.drive(), u"System disk"_s);
#endif
}

void RelinkCandidatesTest::searchesTheHomeFolderAndTheVolumes()
{
    const TestFolder folder;
    const platform::ScopedVolumeFolders volumes({folder.makeFolder(u"volumes"_s)});
    const ScopedVariable home("HOME", folder.makeFolder(u"home"_s).toUtf8());
    const ScopedVariable data("XDG_DATA_HOME", folder.makeFolder(u"home/data"_s).toUtf8());
    const QByteArray music(1000, 'm');
    folder.write(u"home/Music/Moved/Song.mp3"_s, music);
    folder.write(u"home/Music/Moved/song.MP3"_s, "other");
    folder.write(u"home/Music/Moved/song.txt"_s, music);
    folder.write(u"home/Music/Moved/tune.mp3"_s, music);
    folder.write(u"home/.hidden/Song.mp3"_s, music);
    folder.write(u"home/data/Tarnwick/Holding/held-1-1/Song.mp3"_s, music);
    folder.write(u"volumes/USB/A Song (Remix).aiff"_s, music);
    const QString old = folder.path(u"home/Music/Old/Song.mp3"_s);
    QStringList found;
    for (const auto &candidate : RepairEngine::relinkCandidates(trackAt(old.sliced(1), 1000)))
        found << described(candidate) + u" "_s +
                     candidate.url.toLocalFile().sliced(folder.path().size() + 1);
    QCOMPARE(found, (QStringList{u"100 same filename · same size home/Music/Moved/Song.mp3"_s,
                                 u"75 same size volumes/USB/A Song (Remix).aiff"_s,
                                 u"68 size within 64KB home/Music/Moved/song.MP3"_s}));
}

void RelinkCandidatesTest::findsNothingForATrackWithoutAName()
{
    QVERIFY(RepairEngine::rankedCandidates(trackAt({}), {}, 6).isEmpty());
    QVERIFY(RepairEngine::relinkCandidates(trackAt({})).isEmpty());
}

QTEST_GUILESS_MAIN(RelinkCandidatesTest)
#include "relink_candidates_test.moc"
