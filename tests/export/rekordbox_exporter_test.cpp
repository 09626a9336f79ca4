#include "export/rekordbox_exporter.h"

#include "export/small_library.h"
#include "support/test_folder.h"
#include "support/tiny_disk.h"

#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString fileName = u"rekordbox.xml"_s;
const QByteArray earlierContent = "an earlier export";

QByteArray goldenFile()
{
    QFile file(QFINDTESTDATA("data/export/small_library.xml"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the expected document can't be read");
    return file.readAll();
}

QString location(const QByteArray &path)
{
    return QString::fromUtf8("<TRACK Location=\"file://localhost" + path + "\"/>");
}

} // namespace

class RekordboxExporterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<TestFolder>(); }
    void writesTheWholeDocument();
    void tellsWhatItHasWritten();
    void writesPlaylistsWithoutEntriesWhereNoTrackIsOnDisk();
    void reportsItsProgress_data();
    void reportsItsProgress();
    void makesTheFolder();
    void replacesAnEarlierExport();
    void failsWhereTheFolderCannotBeMade();
    void failsWhereAFolderHasTheNameOfTheFile();
    void keepsTheEarlierExportWhenAnyCallOfTheSystemFails();
    void keepsTheEarlierExportOnAFullDevice();
    void readsBackWhatItWrites();
    void readsTheLocationsOfAnyText_data();
    void readsTheLocationsOfAnyText();
    void readsNothingWhereThereIsNoTextToRead_data();
    void readsNothingWhereThereIsNoTextToRead();

private:
    Result<ExportOutcome> exportSmallLibrary(const QString &folder) const
    {
        return RekordboxExporter::exportTo(smallLibrary(), smallCrates(), folder, ignoreProgress);
    }

    std::unique_ptr<TestFolder> m_folder;
};

void RekordboxExporterTest::writesTheWholeDocument()
{
    QVERIFY(exportSmallLibrary(m_folder->path()));
    QCOMPARE(m_folder->read(fileName), goldenFile());
}

void RekordboxExporterTest::tellsWhatItHasWritten()
{
    const Result<ExportOutcome> outcome = exportSmallLibrary(m_folder->path());
    QVERIFY(outcome);
    QCOMPARE(outcome->target, ExportTarget::Rekordbox);
    QCOMPARE(outcome->path, m_folder->path(fileName));
    QCOMPARE(outcome->trackCount, 7);
    QCOMPARE(outcome->crateCount, 3);
}

void RekordboxExporterTest::writesPlaylistsWithoutEntriesWhereNoTrackIsOnDisk()
{
    const std::vector<ScannedTrack> tracks = {missing(u"a"_s)};
    const auto outcome = RekordboxExporter::exportTo(tracks, {crate(u"A"_s, {u"a"_s})},
                                                     m_folder->path(), ignoreProgress);
    QVERIFY(outcome);
    QCOMPARE(outcome->trackCount, 0);
    QCOMPARE(outcome->crateCount, 1);
    const QByteArray text = m_folder->read(fileName);
    QVERIFY(text.contains("  <COLLECTION Entries=\"0\">\n  </COLLECTION>\n"));
    QVERIFY(text.contains("    <NODE Type=\"0\" Name=\"ROOT\" Count=\"1\">\n"
                          "      <NODE Name=\"A\" Type=\"1\" KeyType=\"0\" Entries=\"0\">\n"
                          "      </NODE>\n    </NODE>\n"));
}

void RekordboxExporterTest::reportsItsProgress_data()
{
    const QString tracks = u"Writing collection… "_s;
    const QString playlists = u"Writing playlists… "_s;
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("reports");
    QTest::newRow("no track") << 0 << QStringList{tracks + u"0/0"_s, playlists + u"0/0"_s};
    QTest::newRow("49 tracks") << 49 << QStringList{tracks + u"0/49"_s, playlists + u"49/49"_s};
    QTest::newRow("50 tracks") << 50
                               << QStringList{tracks + u"0/50"_s, tracks + u"50/50"_s,
                                              playlists + u"50/50"_s};
    QTest::newRow("120 tracks") << 120
                                << QStringList{tracks + u"0/120"_s, tracks + u"50/120"_s,
                                               tracks + u"100/120"_s, playlists + u"120/120"_s};
}

void RekordboxExporterTest::reportsItsProgress()
{
    QFETCH(int, count);
    std::vector<ScannedTrack> tracks = tracksOnDisk(count);
    tracks.insert(tracks.begin(), missing(u"gone"_s)); // counts for nothing
    ProgressLog log;
    QVERIFY(RekordboxExporter::exportTo(tracks, {}, m_folder->path(), log.function()));
    QTEST(log.reports, "reports");
}

void RekordboxExporterTest::makesTheFolder()
{
    QVERIFY(exportSmallLibrary(m_folder->path(u"USB/to be/made"_s)));
    QCOMPARE(m_folder->read(u"USB/to be/made/rekordbox.xml"_s), goldenFile());
}

void RekordboxExporterTest::replacesAnEarlierExport()
{
    m_folder->write(fileName, earlierContent);
    QVERIFY(exportSmallLibrary(m_folder->path()));
    QCOMPARE(m_folder->read(fileName), goldenFile());
    QCOMPARE(m_folder->names(), QStringList{fileName});
}

void RekordboxExporterTest::failsWhereTheFolderCannotBeMade()
{
    m_folder->write(u"in the way"_s, "a file");
    ProgressLog log;
    const auto outcome = RekordboxExporter::exportTo(
        smallLibrary(), {}, m_folder->path(u"in the way/USB"_s), log.function());
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message, u"The file “USB” couldn't be created: Not a directory."_s);
    QCOMPARE(log.reports.size(), 2); // the document was complete by then
    QCOMPARE(m_folder->read(u"in the way"_s), QByteArray("a file"));
}

void RekordboxExporterTest::failsWhereAFolderHasTheNameOfTheFile()
{
    m_folder->write(u"rekordbox.xml/kept"_s, "kept");
    const auto outcome = exportSmallLibrary(m_folder->path());
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The file “rekordbox.xml” couldn't be written: Is a directory."_s);
    QCOMPARE(m_folder->read(u"rekordbox.xml/kept"_s), QByteArray("kept"));
}

void RekordboxExporterTest::keepsTheEarlierExportWhenAnyCallOfTheSystemFails()
{
    int failures = 0;
    for (int failingCall = 1;; ++failingCall) {
        m_folder->write(fileName, earlierContent);
        FailingDisk disk(failingCall, EIO);
        const auto outcome = exportSmallLibrary(m_folder->path());
        if (disk.calls() < failingCall)
            break;
        failures += outcome ? 0 : 1;
        const QByteArray expected = outcome ? goldenFile() : earlierContent;
        QCOMPARE(m_folder->read(fileName), expected);
        QVERIFY(outcome || outcome.error().message.startsWith(u"The file “"_s));
    }
    QVERIFY2(failures >= 5, "open, write, flush, close and rename can each fail");
}

void RekordboxExporterTest::keepsTheEarlierExportOnAFullDevice()
{
    const TinyDisk disk(m_folder->makeFolder(u"USB"_s));
    if (!disk.isMounted())
        QSKIP("this user can't mount a file system");
    m_folder->write(u"USB/rekordbox.xml"_s, earlierContent);
    const auto outcome = RekordboxExporter::exportTo(tracksOnDisk(2000), {},
                                                     m_folder->path(u"USB"_s), ignoreProgress);
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The file “rekordbox.xml” couldn't be written: No space left on device."_s);
    QCOMPARE(m_folder->read(u"USB/rekordbox.xml"_s), earlierContent);
    QCOMPARE(m_folder->names(u"USB"_s), QStringList{fileName});
}

void RekordboxExporterTest::readsBackWhatItWrites()
{
    QVERIFY(exportSmallLibrary(m_folder->path()));
    QSet<QString> paths;
    for (const ScannedTrack &scanned : smallLibrary()) {
        if (scanned.existsOnDisk)
            paths.insert(scanned.track.absolutePath());
    }
    QCOMPARE(paths.size(), 6);
    QCOMPARE(RekordboxExporter::readPaths(m_folder->path()), paths);
}

void RekordboxExporterTest::readsTheLocationsOfAnyText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("paths");
    QTest::newRow("empty file") << QByteArray() << QStringList{};
    QTest::newRow("no location") << QByteArray("no XML at all") << QStringList{};
    QTest::newRow("another host") << QByteArray("Location=\"file://server/a\"") << QStringList{};
    QTest::newRow("two") << (location("/a%20b") + u'\n' + location("/c")).toUtf8()
                         << QStringList{u"/a b"_s, u"/c"_s};
    QTest::newRow("one twice") << (location("/a") + location("/%61")).toUtf8()
                               << QStringList{u"/a"_s};
    QTest::newRow("cut inside the last")
        << location("/a").toUtf8() + "Location=\"file://localhost/b" << QStringList{u"/a"_s};
    QTest::newRow("cut inside one ahead of another")
        << "Location=\"file://localhost/a" + location("/b").toUtf8() << QStringList{u"/b"_s};
    QTest::newRow("bad escape") << location("/a%2").toUtf8() << QStringList{u"/a%2"_s};
    QTest::newRow("escape that is no UTF-8")
        << location("/%FF%20").toUtf8() << QStringList{u"/%FF%20"_s};
    QTest::newRow("nothing behind the host") << location("").toUtf8() << QStringList{u""_s};
    QTest::newRow("entities are not looked at")
        << location("/a&amp;b").toUtf8() << QStringList{u"/a&amp;b"_s};
}

void RekordboxExporterTest::readsTheLocationsOfAnyText()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, paths);
    m_folder->write(fileName, text);
    QCOMPARE(RekordboxExporter::readPaths(m_folder->path()),
             QSet<QString>(paths.begin(), paths.end()));
}

void RekordboxExporterTest::readsNothingWhereThereIsNoTextToRead_data()
{
    QTest::addColumn<std::function<void(const TestFolder &)>>("prepare");
    using Prepare = std::function<void(const TestFolder &)>;
    QTest::newRow("no file") << Prepare([](const TestFolder &) {});
    QTest::newRow("a folder") << Prepare([](const TestFolder &f) { f.makeFolder(fileName); });
    QTest::newRow("no UTF-8") << Prepare(
        [](const TestFolder &f) { f.write(fileName, location("/a").toUtf8() + '\xFF'); });
}

void RekordboxExporterTest::readsNothingWhereThereIsNoTextToRead()
{
    QFETCH(std::function<void(const TestFolder &)>, prepare);
    prepare(*m_folder);
    QVERIFY(!RekordboxExporter::readPaths(m_folder->path()));
}

QTEST_GUILESS_MAIN(RekordboxExporterTest)
#include "rekordbox_exporter_test.moc"
