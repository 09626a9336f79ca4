// The crates of a library as a DJ's would be, tidied by every command there is and brought back by
// a snapshot. What is on disk is read by a reader apart from the program's, and what should be
// there is worked out here, by the plainest means.

#include "app/app_state.h"

#include "safety/snapshot_store.h"
#include "support/app_fixture.h"
#include "support/library_dump.h"
#include "support/test_files.h"
#include "tools/demo_library_run.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

using Crates = QMap<QString, QStringList>;

QString bare(const QString &path)
{
    return path.startsWith(u'/') ? path.sliced(1) : path;
}

void addTo(Crates &crates, const QString &name, const QStringList &paths)
{
    QStringList &entries = crates[name];
    for (const QString &path : paths) {
        if (!entries.contains(bare(path)))
            entries << bare(path);
    }
}

/// Of the smaller crate, in per cent, cut off; 0 where they share nothing.
int overlapOf(const QStringList &a, const QStringList &b)
{
    QSet<QString> shared;
    for (const QString &path : a) {
        if (b.contains(path))
            shared << path;
    }
    return shared.isEmpty()
               ? 0
               : int(double(shared.size()) / double(std::min(a.size(), b.size())) * 100);
}

int overlapsIn(const Crates &crates)
{
    int count = 0;
    for (auto a = crates.begin(); a != crates.end(); ++a) {
        for (auto b = std::next(a); b != crates.end(); ++b)
            count += overlapOf(*a, *b) >= 60 ? 1 : 0;
    }
    return count;
}

} // namespace

class DemoCratesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }
    void theFiguresAreThoseOfTheFiles();
    void everyOverlapMerged();
    void orphansFiled();
    void everyVariantUnified();
    void versionsArchived();
    void allOfItAndBack();
    void cratesThatTheSnapshotHasNotStayWhereTheyAre();

private:
    QString library() const { return m_fixture->home(u"Music/_Serato_"_s); }
    LibraryDump dump() const { return LibraryDump::of(library()); }
    Crates crates() const { return dump().crates(); }
    QStringList orphans() const;
    QMap<QString, QStringList> spellings() const;

    /// Those of one second have no order of their own.
    Snapshot snapshotBecause(const QString &reason) const
    {
        for (const Snapshot &snapshot : m_fixture->app().snapshots()) {
            if (snapshot.reason.startsWith(reason))
                return snapshot;
        }
        return {};
    }

    void mergeAll(Crates &expected) const;
    void fileOrphans(Crates &expected) const;
    void unifyAll() const;
    void archiveAll(Crates &expected) const;

    std::unique_ptr<AppFixture> m_fixture;
};

void DemoCratesTest::init()
{
    m_fixture = std::make_unique<AppFixture>();
    const Run run = demoLibrary({u"--tracks"_s, u"220"_s, u"--seed"_s, u"11"_s, u"--today"_s,
                                 u"2026-11-20"_s, u"--out"_s, m_fixture->root().path(u"home"_s)});
    QVERIFY2(run.status == 0, run.errors.constData());
    m_fixture->launchAndScan();
    QVERIFY(m_fixture->app().result());
}

/// Of the tracks whose files are there, those that no crate lists.
QStringList DemoCratesTest::orphans() const
{
    const LibraryDump read = dump();
    QSet<QString> listed;
    for (const QStringList &entries : read.crates()) {
        for (const QString &entry : entries)
            listed << bare(entry);
    }
    QSet<QString> orphans;
    for (const auto &track : read.tracks()) {
        const QString path = bare(track[u"pfil"_s]);
        if (!listed.contains(path) && QFileInfo(u'/' + path).isFile())
            orphans << path;
    }
    return {orphans.begin(), orphans.end()};
}

/// The spellings of each genre that has several.
QMap<QString, QStringList> DemoCratesTest::spellings() const
{
    QMap<QString, QStringList> all;
    for (const auto &track : dump().tracks()) {
        const QString genre = track[u"tgen"_s];
        QStringList &met = all[genre.toLower().trimmed()];
        if (!genre.trimmed().isEmpty() && !met.contains(genre))
            met << genre;
    }
    all.removeIf([](const auto &genre) { return genre.value().size() < 2; });
    return all;
}

void DemoCratesTest::mergeAll(Crates &expected) const
{
    AppState &app = m_fixture->app();
    while (!app.hygiene()->overlaps.empty()) {
        const CrateHygiene::Overlap overlap = app.hygiene()->overlaps.front();
        const qsizetype a = expected[overlap.a.name].size();
        const qsizetype b = expected[overlap.b.name].size();
        const QString keep = b > a ? overlap.b.name : overlap.a.name;
        const QString fold = b > a ? overlap.a.name : overlap.b.name;
        app.mergeCrates(overlap);
        addTo(expected, keep, expected.take(fold));
        QCOMPARE(app.toast()->message, u"Merged "_s + fold + u" into "_s + keep);
    }
}

void DemoCratesTest::fileOrphans(Crates &expected) const
{
    AppState &app = m_fixture->app();
    const QStringList paths(app.hygiene()->orphanPaths.begin(), app.hygiene()->orphanPaths.end());
    app.fileOrphans(paths);
    addTo(expected, u"Unsorted"_s, paths);
}

void DemoCratesTest::unifyAll() const
{
    AppState &app = m_fixture->app();
    const auto hygiene = app.hygiene();
    for (const CrateHygiene::GenreVariant &variant : hygiene->genreVariants) {
        app.unifyGenre(variant);
        QVERIFY(app.toast()->message.startsWith(u"Unified "_s));
    }
}

void DemoCratesTest::archiveAll(Crates &expected) const
{
    AppState &app = m_fixture->app();
    for (const VersionGroup &group : app.derived()->versionGroups()) {
        const VersionMember &keeper = group.members.front();
        app.archiveVersions(group, keeper.id());
        QStringList losers;
        for (const VersionMember &member : group.members) {
            if (member.id() != keeper.id())
                losers << member.track.track.relativePath;
        }
        addTo(expected, u"Archive"_s, losers);
    }
}

void DemoCratesTest::theFiguresAreThoseOfTheFiles()
{
    const auto hygiene = m_fixture->app().hygiene();
    QVERIFY(hygiene->overlaps.size() >= 3);
    QCOMPARE(int(hygiene->overlaps.size()), overlapsIn(crates()));
    const QStringList loose = orphans();
    QVERIFY(loose.size() >= 10);
    QCOMPARE(hygiene->orphanPaths, QSet<QString>(loose.begin(), loose.end()));
    const auto genres = spellings();
    QVERIFY(genres.size() >= 2);
    QCOMPARE(qsizetype(hygiene->genreVariants.size()), genres.size());
    for (const CrateHygiene::GenreVariant &variant : hygiene->genreVariants) {
        QStringList expected = genres[variant.canon.toLower().trimmed()];
        expected.sort();
        QCOMPARE(variant.variants, expected);
    }
}

void DemoCratesTest::everyOverlapMerged()
{
    Crates expected = crates();
    const qsizetype before = expected.size();
    mergeAll(expected);
    QCOMPARE(crates(), expected);
    QCOMPARE(overlapsIn(crates()), 0);
    const AppState &app = m_fixture->app();
    QCOMPARE(app.holding().count(), int(before - expected.size()));
    QCOMPARE(app.changeEntries().size(), before - expected.size());
}

void DemoCratesTest::orphansFiled()
{
    Crates expected = crates();
    const QStringList loose = orphans();
    fileOrphans(expected);
    QCOMPARE(crates(), expected);
    QCOMPARE(expected[u"Unsorted"_s].size(), loose.size());
    QVERIFY(orphans().isEmpty());
    const auto lines = dump().linesOf(u"Subcrates/Unsorted.crate"_s);
    QCOMPARE(lines.size(), 1 + 2 * loose.size());
    QCOMPARE(lines.first(), u"  vrsn  \"1.0/Serato ScratchLive Crate\""_s);
}

void DemoCratesTest::everyVariantUnified()
{
    const Crates before = crates();
    const QStringList lines = dump().linesOf(u"database V2"_s);
    unifyAll();
    QVERIFY(spellings().isEmpty());
    QCOMPARE(crates(), before);
    const QStringList after = dump().linesOf(u"database V2"_s);
    // Only genres have changed; what was damage at the end of the file is not written again.
    const auto others = [](QStringList all) {
        all.removeIf([](const QString &line) {
            return line.startsWith(u"    tgen  "_s) || line.trimmed().startsWith(u"[damaged: "_s);
        });
        return all;
    };
    QCOMPARE(others(after), others(lines));
}

void DemoCratesTest::versionsArchived()
{
    Crates expected = crates();
    const QByteArray database = contentOf(library() + u"/database V2"_s);
    archiveAll(expected);
    QVERIFY(expected[u"Archive"_s].size() >= 10);
    QCOMPARE(crates(), expected);
    QCOMPARE(contentOf(library() + u"/database V2"_s), database);
}

void DemoCratesTest::allOfItAndBack()
{
    AppState &app = m_fixture->app();
    const auto before = treeOf(library());
    app.takeSnapshot(u"Manual snapshot"_s);
    QVERIFY(m_fixture->waitUntilIdle());
    Crates expected = crates();
    mergeAll(expected);
    fileOrphans(expected);
    unifyAll();
    archiveAll(expected);
    QCOMPARE(crates(), expected);
    QVERIFY(treeOf(library()) != before);
    QVERIFY(app.holding().count() > 0);
    const int held = app.holding().count();

    const Done restored =
        SnapshotStore::restore(snapshotBecause(u"Manual snapshot"_s), app.result()->location);
    QVERIFY2(restored, qPrintable(restored ? QString() : restored.error().message));
    QCOMPARE(treeOf(library()), before);
    // What was folded is held all the same: going back knows nothing of the holding folder.
    QCOMPARE(m_fixture->launchAndScan().holding().count(), held);
}

void DemoCratesTest::cratesThatTheSnapshotHasNotStayWhereTheyAre()
{
    QVERIFY(QDir(library() + u"/Subcrates"_s).removeRecursively());
    AppState &app = m_fixture->launchAndScan();
    const auto before = treeOf(library());
    Crates expected;
    fileOrphans(expected);
    archiveAll(expected);
    QVERIFY(SnapshotStore::restore(snapshotBecause(u"Before: file "_s), app.result()->location));
    QCOMPARE(crates(), expected);
    auto after = treeOf(library());
    after.removeIf([](const auto &file) { return file.key().startsWith(u"Subcrates/"_s); });
    QCOMPARE(after, before);
}

QTEST_GUILESS_MAIN(DemoCratesTest)
#include "demo_crates_test.moc"
