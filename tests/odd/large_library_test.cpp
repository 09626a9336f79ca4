#include "safety/store_file.h"
#include "serato/crate_writer.h"
#include "support/command_fixture.h"
#include "support/memory_folder.h"
#include "support/sqlite_reader.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr int trackCount = 100'000;
constexpr int copies = 20'000;   // the first ones, two of each song
constexpr int onDisk = 80'000;   // the first ones
constexpr int inCrates = 99'000; // the first ones
constexpr int logEntries = 10'000;

QString nameOf(int number)
{
    return u"Music/%1/Track %2.mp3"_s.arg(number % 100).arg(number);
}

QByteArray fieldsOf(int number)
{
    const int song = number < copies ? number / 2 : number;
    const QString genre = number % 10 ? u"House"_s : QString();
    return textRecord("tsng", u"Song %1"_s.arg(song)) +
           textRecord("tart", u"Artist %1"_s.arg(song % 500)) + textRecord("tgen", genre) +
           record("zzzz", QByteArray::number(number));
}

QByteArray trackOf(const QString &path, const QByteArray &fields)
{
    return record("otrk", textRecord("pfil", path) + fields);
}

QByteArray crateOf(const QStringList &paths)
{
    QByteArray bytes = crateVersion();
    for (const QString &path : paths)
        bytes += crateEntry(path);
    return bytes;
}

/// Paths that lead nowhere, from one number to ahead of another.
QStringList numbered(int first, int end)
{
    QStringList paths;
    for (int number = first; number < end; ++number)
        paths << u"crates/%1.mp3"_s.arg(number);
    return paths;
}

ChangeEntry logged(int number, const QString &path)
{
    const QDateTime date = QDateTime({2026, 11, 1}, {12, 0}, Qt::UTC).addSecs(number);
    return {.id = u"chg-%1-%2"_s.arg(number).arg(date.toSecsSinceEpoch()),
            .kind = ChangeEntry::Kind::Relink,
            .date = date,
            .target = u"Track %1"_s.arg(number),
            .detail = u"Relinked “%1”"_s.arg(number),
            .before = u"Music/was %1.mp3"_s.arg(number),
            .after = path,
            .reversibleUntil = QDateTime({2999, 1, 1}, {12, 0}, Qt::UTC),
            .reversed = false,
            .snapshotId = {},
            .holdingId = {}};
}

} // namespace

/// Sizes that few libraries reach: every figure and every byte is right there too.
class LargeLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { qInfo("%d cases", m_cases); }
    void countsEveryTrack();
    void findsEveryDuplicate();
    void findsWhatIsInNoCrate();
    void filesTheOrphansAndChangesNoOtherCrate();
    void editsOneTrackAndNoOtherByte();
    void dropsOneTrackAndGivesItsRecordBack();
    void exportsAllThatIsOnDisk();
    void readsAndMergesCratesOfAHundredThousand();
    void addsToACrateOfAHundredThousand();
    void keepsALogOfTenThousand();

private:
    QString path(int number) const { return m_user.home(nameOf(number)).sliced(1); }
    QString database() const { return m_user.home(u"Music/_Serato_/database V2"_s); }
    QString crate(const QString &name) const
    {
        return m_user.home(u"Music/_Serato_/Subcrates/%1.crate"_s.arg(name));
    }
    AppState &app() { return m_user.app(); }

    CommandFixture m_user;
    QByteArrayList m_tracks;
    int m_cases = 0;
};

void LargeLibraryTest::initTestCase()
{
    for (int i = 0; i < trackCount; ++i) {
        if (i < onDisk)
            (void)m_user.writeAudio(nameOf(i), QByteArray(i % 2 ? 10 : 20, 'a'));
        m_tracks << trackOf(path(i), fieldsOf(i));
    }
    (void)m_user.writeHomeDatabase(m_tracks);
    QStringList crated;
    for (int i = 0; i < inCrates; ++i)
        crated << path(i);
    put(crate(u"All"_s), crateOf(crated));
    (void)m_user.launchAndScan();
    QVERIFY(m_user.waitUntilIdle(120'000));
}

void LargeLibraryTest::countsEveryTrack()
{
    const auto derived = app().derived();
    QVERIFY(derived != nullptr);
    QCOMPARE(derived->total, trackCount);
    QCOMPARE(derived->missing, trackCount - onDisk);
    QCOMPARE(int(derived->missingTracks().size()), trackCount - onDisk);
    QCOMPARE(int(derived->untaggedTracks().size()), onDisk / 10);
    QCOMPARE(derived->onDiskBytes, quint64(onDisk) * 15);
    for (int i = 0; i < trackCount; ++i)
        QCOMPARE(app().result()->tracks[size_t(i)].track.relativePath, path(i));
    m_cases += trackCount;
}

void LargeLibraryTest::findsEveryDuplicate()
{
    const auto derived = app().derived();
    QCOMPARE(int(derived->duplicateGroups.size()), copies / 2);
    for (const DuplicateGroup &group : derived->duplicateGroups)
        QCOMPARE(group.members.size(), size_t(2));
    QCOMPARE(derived->reclaimableBytes, quint64(copies / 2) * 10);
    m_cases += copies / 2;
}

void LargeLibraryTest::findsWhatIsInNoCrate()
{
    // Those outside the crates are none that are on disk.
    QCOMPARE(app().hygiene()->orphanCount, 0);
    QCOMPARE(app().crates().size(), 1);
    QCOMPARE(app().crates().first().paths.size(), inCrates);
    QVERIFY(app().hygiene()->genreVariants.empty());
    ++m_cases;
}

void LargeLibraryTest::filesTheOrphansAndChangesNoOtherCrate()
{
    QFile::rename(crate(u"All"_s), crate(u"All"_s) + u".off"_s);
    (void)m_user.launchAndScan();
    QVERIFY(m_user.waitUntilIdle(120'000));
    QCOMPARE(app().hygiene()->orphanCount, onDisk);
    QStringList orphans = app().hygiene()->orphanPaths.values();
    orphans.sort();
    app().fileOrphans(orphans);
    QCOMPARE(contentOf(crate(u"Unsorted"_s)), crateOf(orphans));
    QCOMPARE(app().hygiene()->orphanCount, 0);
    QFile::remove(crate(u"Unsorted"_s));
    QFile::rename(crate(u"All"_s) + u".off"_s, crate(u"All"_s));
    m_cases += onDisk;
}

void LargeLibraryTest::editsOneTrackAndNoOtherByte()
{
    constexpr int edited = 54'321;
    (void)m_user.launchAndScan();
    QVERIFY(m_user.waitUntilIdle(120'000));
    app().setGenre(app().result()->tracks[edited], u"A new genre"_s);
    QByteArrayList wanted = m_tracks;
    wanted[edited].replace(textRecord("tgen", u"House"), textRecord("tgen", u"A new genre"));
    wanted[edited] = record("otrk", wanted[edited].sliced(8));
    QVERIFY(contentOf(database()) == databaseVersion() + wanted.join());
    app().undo(app().changeEntries().first());
    QVERIFY(contentOf(database()) == databaseVersion() + m_tracks.join());
    m_cases += 2;
}

void LargeLibraryTest::dropsOneTrackAndGivesItsRecordBack()
{
    constexpr int dropped = 99'998; // missing
    const QByteArray crates = contentOf(crate(u"All"_s));
    app().dropFromLibrary(app().result()->tracks[dropped]);
    QByteArrayList wanted = m_tracks;
    wanted.removeAt(dropped);
    QVERIFY(contentOf(database()) == databaseVersion() + wanted.join());
    QCOMPARE(app().derived()->total, trackCount - 1);
    QVERIFY(contentOf(crate(u"All"_s)) == crates);
    app().undo(app().changeEntries().first());
    wanted << m_tracks.at(dropped);
    QVERIFY(contentOf(database()) == databaseVersion() + wanted.join());
    QCOMPARE(app().derived()->total, trackCount);
    put(database(), databaseVersion() + m_tracks.join());
    m_cases += 2;
}

void LargeLibraryTest::exportsAllThatIsOnDisk()
{
    const QString out = m_user.root().path(u"USB"_s);
    for (const ExportTarget target : {ExportTarget::Rekordbox, ExportTarget::Engine}) {
        app().runExport(target, out);
        QVERIFY(m_user.waitUntilIdle(120'000));
        QVERIFY(app().lastExport().has_value());
        QCOMPARE(app().lastExport()->trackCount, onDisk);
        QCOMPARE(app().drift(target, out), (ExportDrift{.seratoOnly = 0, .deviceOnly = 0}));
        m_cases += onDisk;
    }
    const QByteArray xml = contentOf(out + u"/rekordbox.xml"_s);
    QCOMPARE(xml.count("<TRACK TrackID="), onDisk);
    QCOMPARE(xml.count("<TRACK Key="), onDisk);
    const QString engine = out + u"/Engine Library/Database2/m.db"_s;
    QCOMPARE(rowsOf(engine, "SELECT count(*), count(DISTINCT path) FROM Track"),
             QStringList{u"%1|%1"_s.arg(onDisk)});
    QCOMPARE(rowsOf(engine, "SELECT count(*), max(membershipReference) FROM PlaylistEntity"),
             QStringList{u"%1|%1"_s.arg(onDisk)});
}

void LargeLibraryTest::readsAndMergesCratesOfAHundredThousand()
{
    put(crate(u"One"_s), crateOf(numbered(0, 100'000)));
    const QByteArray folded = crateOf(numbered(30'000, 130'000));
    put(crate(u"Two"_s), folded);
    (void)m_user.launchAndScan();
    QVERIFY(m_user.waitUntilIdle(120'000));
    const QByteArray all = contentOf(crate(u"All"_s));
    const auto hygiene = app().hygiene();
    QCOMPARE(hygiene->overlaps.size(), size_t(1));
    QCOMPARE(hygiene->overlaps[0].shared, 70'000);
    QCOMPARE(hygiene->overlaps[0].percent, 70);
    app().mergeCrates(hygiene->overlaps[0]);
    QVERIFY(contentOf(crate(u"One"_s)) == crateOf(numbered(0, 130'000)));
    QVERIFY(contentOf(crate(u"All"_s)) == all);
    QVERIFY(!QFileInfo::exists(crate(u"Two"_s)));
    QVERIFY(contentOf(app().heldItems().first().heldPath) == folded);
    QCOMPARE(app().hygiene()->overlaps.size(), size_t(0));
    m_cases += 130'000;
}

void LargeLibraryTest::addsToACrateOfAHundredThousand()
{
    put(crate(u"One"_s), crateOf(numbered(0, 100'000)));
    const auto location = app().result()->location;
    QCOMPARE(
        CrateWriter::addTracks({u"crates/99999.mp3"_s, u"/crates/new.mp3"_s}, u"One"_s, location)
            .value_or(-1),
        1);
    QVERIFY(contentOf(crate(u"One"_s)) ==
            crateOf(numbered(0, 100'000) + QStringList{u"crates/new.mp3"_s}));
    m_cases += 100'000;
}

void LargeLibraryTest::keepsALogOfTenThousand()
{
    QList<QByteArray> texts;
    for (int number = logEntries; number > 0; --number)
        texts << StoreFile::encoded(logged(number, path(number)));
    const QString file = m_user.root().path(u"data/Tarnwick/changelog.json"_s);
    put(file, StoreFile::listOf(texts));
    (void)m_user.launchAndScan();
    QVERIFY(m_user.waitUntilIdle(120'000));
    QCOMPARE(app().changeEntries().size(), logEntries);
    QCOMPARE(app().changeLog().changeCount(), logEntries);
    QCOMPARE(app().changeEntries().at(5000), logged(5000, path(5000)));
    app().undo(app().changeEntries().at(5000));
    ChangeEntry undone = logged(5000, path(5000));
    undone.reversed = true;
    texts[5000] = StoreFile::encoded(undone);
    QVERIFY(contentOf(file) == StoreFile::listOf(texts));
    QCOMPARE(app().result()->tracks[5000].track.relativePath, u"Music/was 5000.mp3"_s);
    app().setGenre(app().result()->tracks[7], u"Techno"_s);
    const ChangeEntry newest = app().changeEntries().first();
    QVERIFY(newest.id.startsWith(u"chg-10001-"_s));
    texts.prepend(StoreFile::encoded(newest));
    QVERIFY(contentOf(file) == StoreFile::listOf(texts));
    (void)m_user.launchAndScan();
    QVERIFY(m_user.waitUntilIdle(120'000));
    QCOMPARE(app().changeEntries().size(), logEntries + 1);
    QCOMPARE(app().changeEntries().at(5001), undone);
    m_cases += logEntries;
}

int main(int argc, char *argv[])
{
    keepTemporaryFoldersInMemory();
    const QCoreApplication application(argc, argv);
    LargeLibraryTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "large_library_test.moc"
