#include "export/drift.h"

#include "export/engine_exporter.h"
#include "export/rekordbox_exporter.h"
#include "export/serato_backup.h"
#include "export/small_library.h"
#include "support/memory_folder.h"
#include "support/test_folder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using Tracks = std::vector<ScannedTrack>;

Q_DECLARE_METATYPE(Tracks)
Q_DECLARE_METATYPE(std::optional<ExportDrift>)

namespace {

constexpr ExportTarget comparable[] = {ExportTarget::Engine, ExportTarget::Rekordbox};

std::optional<ExportDrift> drift(int seratoOnly, int deviceOnly)
{
    return ExportDrift{.seratoOnly = seratoOnly, .deviceOnly = deviceOnly};
}

ScannedTrack flaggedMissing(const QString &relativePath)
{
    ScannedTrack scanned = onDisk(relativePath);
    scanned.track.flaggedMissing = true;
    return scanned;
}

} // namespace

class DriftTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { keepTemporaryFoldersInMemory(); }
    void init() { m_folder = std::make_unique<TestFolder>(); }
    void countsWhatOneSideAloneHas_data();
    void countsWhatOneSideAloneHas();
    void findsNoDriftInALibraryOfAwkwardNames();
    void hasNothingToCompareWithoutAnExport();
    void hasNothingToCompareWithADamagedExport_data();
    void hasNothingToCompareWithADamagedExport();
    void looksAtTheTargetAskedForAlone();
    void hasNothingToSayOfABackup();
    void leavesTheDeviceAsItIs();

private:
    bool exportTo(ExportTarget target, const Tracks &tracks) const
    {
        const auto exporter =
            target == ExportTarget::Engine ? EngineExporter::exportTo : RekordboxExporter::exportTo;
        return exporter(tracks, {}, m_folder->path(), ignoreProgress).has_value();
    }
    std::optional<ExportDrift> driftNow(ExportTarget target, const Tracks &tracks) const
    {
        return driftOf(target, tracks, m_folder->path());
    }

    std::unique_ptr<TestFolder> m_folder;
};

void DriftTest::countsWhatOneSideAloneHas_data()
{
    QTest::addColumn<Tracks>("exported");
    QTest::addColumn<Tracks>("now");
    QTest::addColumn<std::optional<ExportDrift>>("expected");
    const ScannedTrack a = onDisk(u"a.mp3"_s);
    const ScannedTrack b = onDisk(u"b.mp3"_s);
    const auto row = [](const char *name, const Tracks &exported, const Tracks &now,
                        const std::optional<ExportDrift> &expected) {
        QTest::newRow(name) << exported << now << expected;
    };
    row("in line", {a, b}, {a, b}, drift(0, 0));
    row("another order", {a, b}, {b, a}, drift(0, 0));
    row("one added", {a}, {a, b}, drift(1, 0));
    row("one removed", {a, b}, {a}, drift(0, 1));
    row("one added, one removed", {a}, {b}, drift(1, 1));
    row("two added, one removed", {a}, {b, onDisk(u"c"_s)}, drift(2, 1));
    row("an empty library", {a, b}, {}, drift(0, 2));
    row("one gone from disk", {a, b}, {a, missing(u"b.mp3"_s)}, drift(0, 1));
    row("one that never was on disk", {a, missing(u"c"_s)}, {a, missing(u"c"_s)}, drift(0, 0));
    row("on disk, though flagged as missing", {a}, {a, flaggedMissing(u"c"_s)}, drift(1, 0));
    row("two entries of one new path", {a}, {a, b, onDisk(u"/b.mp3"_s)}, drift(1, 0));
    row("two entries of one old path", {a, b, b}, {a}, drift(0, 1));
    row("another letter case", {a}, {onDisk(u"A.mp3"_s)}, drift(1, 1));
    row("composed and decomposed", {onDisk(u"é"_s)}, {onDisk(u"e\u0301"_s)}, drift(1, 1));
    row("an empty export", {}, {a}, std::nullopt);
    row("nothing on either side", {missing(u"a.mp3"_s)}, {missing(u"a.mp3"_s)}, std::nullopt);
}

void DriftTest::countsWhatOneSideAloneHas()
{
    QFETCH(Tracks, exported);
    QFETCH(Tracks, now);
    for (const ExportTarget target : comparable) {
        QVERIFY(exportTo(target, exported));
        QTEST(driftNow(target, now), "expected");
    }
}

void DriftTest::findsNoDriftInALibraryOfAwkwardNames()
{
    for (const ExportTarget target : comparable) {
        QVERIFY(exportTo(target, smallLibrary()));
        QCOMPARE(driftNow(target, smallLibrary()), drift(0, 0));
    }
}

void DriftTest::hasNothingToCompareWithoutAnExport()
{
    m_folder->write(u"rekordbox.xml.bak"_s, "Location=\"file://localhost/a.mp3\"");
    m_folder->makeFolder(u"Engine Library/Database2"_s);
    for (const ExportTargetInfo &target : allExportTargets()) {
        QCOMPARE(driftNow(target.target, {onDisk(u"a.mp3"_s)}), std::nullopt);
        QCOMPARE(driftOf(target.target, {onDisk(u"a.mp3"_s)}, m_folder->path(u"none"_s)),
                 std::nullopt);
    }
}

void DriftTest::hasNothingToCompareWithADamagedExport_data()
{
    QTest::addColumn<ExportTarget>("target");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    const QString database = u"Engine Library/Database2/m.db"_s;
    QTest::newRow("no database") << ExportTarget::Engine << database << QByteArray("text");
    QTest::newRow("an empty database") << ExportTarget::Engine << database << QByteArray();
    QTest::newRow("a folder for a database")
        << ExportTarget::Engine << database + u"/file"_s << QByteArray();
    QTest::newRow("no XML") << ExportTarget::Rekordbox << u"rekordbox.xml"_s << QByteArray("text");
    QTest::newRow("an empty document")
        << ExportTarget::Rekordbox << u"rekordbox.xml"_s << QByteArray();
    QTest::newRow("no UTF-8") << ExportTarget::Rekordbox << u"rekordbox.xml"_s
                              << QByteArray("\xFF Location=\"file://localhost/a.mp3\"");
    QTest::newRow("a folder for a document")
        << ExportTarget::Rekordbox << u"rekordbox.xml/file"_s << QByteArray();
}

void DriftTest::hasNothingToCompareWithADamagedExport()
{
    QFETCH(ExportTarget, target);
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    m_folder->write(name, content);
    QCOMPARE(driftNow(target, {onDisk(u"a.mp3"_s)}), std::nullopt);
}

void DriftTest::looksAtTheTargetAskedForAlone()
{
    QVERIFY(exportTo(ExportTarget::Engine, {onDisk(u"a"_s)}));
    QCOMPARE(driftNow(ExportTarget::Rekordbox, {onDisk(u"a"_s)}), std::nullopt);
    QVERIFY(exportTo(ExportTarget::Rekordbox, {onDisk(u"b"_s), onDisk(u"c"_s)}));
    QCOMPARE(driftNow(ExportTarget::Engine, {onDisk(u"a"_s)}), drift(0, 0));
    QCOMPARE(driftNow(ExportTarget::Rekordbox, {onDisk(u"a"_s)}), drift(1, 2));
}

void DriftTest::hasNothingToSayOfABackup()
{
    m_folder->write(u"_Serato_/database V2"_s, "a database");
    SeratoLibrary::Location location;
    location.folderUrl = QUrl::fromLocalFile(m_folder->path(u"_Serato_"_s));
    QVERIFY(SeratoBackup::exportTo(location, m_folder->path(), ignoreProgress));
    QVERIFY(exportTo(ExportTarget::Engine, {onDisk(u"a"_s)}));
    QVERIFY(exportTo(ExportTarget::Rekordbox, {onDisk(u"a"_s)}));
    QCOMPARE(driftNow(ExportTarget::SeratoBackup, {onDisk(u"a"_s)}), std::nullopt);
}

void DriftTest::leavesTheDeviceAsItIs()
{
    for (const ExportTarget target : comparable)
        QVERIFY(exportTo(target, smallLibrary()));
    const QByteArray database = m_folder->read(u"Engine Library/Database2/m.db"_s);
    const QByteArray document = m_folder->read(u"rekordbox.xml"_s);
    for (const ExportTarget target : comparable)
        QVERIFY(driftNow(target, {onDisk(u"a"_s)}));
    QCOMPARE(m_folder->read(u"Engine Library/Database2/m.db"_s), database);
    QCOMPARE(m_folder->names(u"Engine Library/Database2"_s), QStringList{u"m.db"_s});
    QCOMPARE(m_folder->read(u"rekordbox.xml"_s), document);
}

QTEST_GUILESS_MAIN(DriftTest)
#include "drift_test.moc"
