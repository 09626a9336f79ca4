#include "repair/relink_candidates.h"
#include "serato/crate_writer.h"
#include "support/command_fixture.h"
#include "support/other_file_system.h"
#include "support/sqlite_reader.h"
#include "support/tag_builder.h"

#include <QTest>

#include <climits>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestPath = PATH_MAX - 1;
constexpr qsizetype longestName = NAME_MAX;
const QString tooLong = u"File name too long."_s;

QByteArray audio(const QByteArray &cues = "cues")
{
    return TagBuilder().object("Serato Markers2", cues).object("Serato BeatGrid", "grid").file();
}

QByteArrayList song(QStringView title)
{
    return {textRecord("tsng", title), textRecord("tart", u"Artist")};
}

} // namespace

/// Names and paths as long as the system takes them, and longer ones, which only a file of Serato's
/// can hold. Whatever is written beside such a name, under a longer one, works or is refused whole.
class LongNamesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cleanupTestCase() { qInfo("%d cases", m_cases); }
    void findsPathsThatCanBeOpened_data() { pathLengths(); }
    void findsPathsThatCanBeOpened();
    void relinksAndTakesBack_data() { pathLengths(); }
    void relinksAndTakesBack();
    void dropsAndTakesBack_data() { pathLengths(); }
    void dropsAndTakesBack();
    void holdsAndGivesBack_data();
    void holdsAndGivesBack();
    void writesTagsOrRefuses_data();
    void writesTagsOrRefuses();
    void keepsCratesOfAnyLength_data();
    void keepsCratesOfAnyLength();
    void exportsPathsAndNamesWhole();
    void refusesALibraryThatLiesTooDeep();
    void startsWithADataFolderThatLiesTooDeep();
    void looksForCandidatesOfAnyLength_data() { pathLengths(); }
    void looksForCandidatesOfAnyLength();

private:
    static void pathLengths();
    QString deep(qsizetype length, const QString &name = u"a.mp3"_s) const;
    QString longestNamed(qsizetype bytes) const
    {
        return u"Music/"_s + QString(bytes - 4, u'n') + u".mp3"_s;
    }

    std::unique_ptr<CommandFixture> m_user;
    int m_cases = 0;
};

void LongNamesTest::init()
{
    m_user = std::make_unique<CommandFixture>();
}

void LongNamesTest::cleanup()
{
    m_user.reset();
    ++m_cases;
}

void LongNamesTest::pathLengths()
{
    QTest::addColumn<qsizetype>("length");
    for (const qsizetype length :
         {longestPath - 7, longestPath, longestPath + 1, longestPath + 2, 3 * longestPath})
        QTest::addRow("%lld bytes", qlonglong(length)) << length;
}

/// A name below the home folder whose absolute path has so many bytes.
QString LongNamesTest::deep(qsizetype length, const QString &name) const
{
    const qsizetype wanted = length - name.size() - m_user->home(QString()).size();
    QString folders = u"Music/"_s;
    while (wanted - folders.size() > 202)
        folders += QString(200, u'd') + u'/';
    return folders + QString(wanted - folders.size() - 1, u'e') + u'/' + name;
}

void LongNamesTest::findsPathsThatCanBeOpened()
{
    QFETCH(qsizetype, length);
    const bool opens = length <= longestPath;
    const QString name = deep(length);
    const QString path = opens ? m_user->addTrack(name, song(u"Deep"))
                               : m_user->addMissingTrack(name, song(u"Deep"));
    QCOMPARE(path.size() + 1, length);
    AppState &app = m_user->start();
    QCOMPARE(m_user->paths(), QStringList{path});
    QCOMPARE(m_user->track(0).existsOnDisk, opens);
    QCOMPARE(app.derived()->missing, opens ? 0 : 1);
    QCOMPARE(m_user->track(0).track.absolutePath(), u'/' + path);
}

void LongNamesTest::relinksAndTakesBack()
{
    QFETCH(qsizetype, length);
    const QString lost = m_user->addMissingTrack(deep(length), song(u"Lost"));
    const QString there = m_user->writeAudio(u"Music/there.mp3"_s);
    AppState &app = m_user->start();
    const QByteArray before = m_user->database();
    app.relink(m_user->track(0), QUrl::fromLocalFile(u'/' + there));
    QCOMPARE(m_user->paths(), QStringList{there});
    // From there to the long one, too: nobody asks whether a file lies where a user points.
    app.relink(m_user->track(0), QUrl::fromLocalFile(u'/' + lost));
    QCOMPARE(m_user->paths(), QStringList{lost});
    QCOMPARE(m_user->newestEntry().after, std::optional(lost));
    QCOMPARE(m_user->restart().changeEntries().size(), 2);
    QCOMPARE(m_user->paths(), QStringList{lost});
    m_user->app().undoEverything();
    QCOMPARE(m_user->paths(), QStringList{lost});
    QCOMPARE(m_user->database().count(utf16(lost)), before.count(utf16(lost)));
    for (const ChangeEntry &entry : m_user->app().changeEntries())
        QVERIFY(entry.reversed);
}

void LongNamesTest::dropsAndTakesBack()
{
    QFETCH(qsizetype, length);
    (void)m_user->addMissingTrack(deep(length), song(u"Lost"));
    AppState &app = m_user->start();
    const QByteArray before = m_user->database();
    app.dropFromLibrary(m_user->track(0));
    QCOMPARE(m_user->database(), databaseVersion());
    app.undo(m_user->newestEntry());
    QCOMPARE(m_user->database(), before);
}

void LongNamesTest::holdsAndGivesBack_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isElsewhere");
    QTest::newRow("a name of 248 bytes") << u"248"_s << false;
    QTest::newRow("a name of 255 bytes") << u"255"_s << false;
    QTest::newRow("the longest path") << u"path"_s << false;
    QTest::newRow("a name of 248 bytes, across disks") << u"248"_s << true;
    QTest::newRow("a name of 255 bytes, across disks") << u"255"_s << true;
    QTest::newRow("the longest path, across disks") << u"path"_s << true;
}

void LongNamesTest::holdsAndGivesBack()
{
    QFETCH(QString, kind);
    QFETCH(bool, isElsewhere);
    const QString name = kind == u"path"_s ? deep(longestPath) : longestNamed(kind.toInt());
    const QString best = m_user->addTrack(u"Music/best.mp3"_s, song(u"Song"), QByteArray(99, 'b'));
    const QString path = m_user->addTrack(name, song(u"Song"));
    m_user->root().makeFolder(u"data/Tarnwick"_s);
    if (isElsewhere && !linkToOtherFileSystem(m_user->root().path(u"data/Tarnwick/Holding"_s)))
        QSKIP("this machine has one file system only");
    AppState &app = m_user->start();
    const QByteArray before = m_user->database();
    const auto groups = app.derived()->duplicateGroups;
    QCOMPARE(groups.size(), size_t(1));
    app.resolveDuplicates(groups[0], m_user->track(0).id());
    // The copy across disks first stands under a longer name.
    if (isElsewhere && kind == u"255"_s) {
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY2(m_user->toasts().first().contains(tooLong), qPrintable(m_user->toasts().first()));
        QCOMPARE(m_user->database(), before);
        QCOMPARE(contentOf(u'/' + path), QByteArray("not really audio"));
        QVERIFY(app.heldItems().isEmpty());
        QVERIFY(app.changeEntries().isEmpty());
        return;
    }
    QCOMPARE(m_user->paths(), QStringList{best});
    QCOMPARE(contentOf(app.heldItems().value(0).heldPath), QByteArray("not really audio"));
    QVERIFY(!QFileInfo::exists(u'/' + path));
    AppState &later = m_user->restart();
    later.undo(m_user->newestEntry());
    QCOMPARE(m_user->paths(), (QStringList{best, path}));
    const HeldItem item = later.heldItems().value(0);
    if (isElsewhere && kind == u"path"_s) {
        QVERIFY(!item.restored);
        QCOMPARE(contentOf(item.heldPath), QByteArray("not really audio"));
        return;
    }
    QVERIFY(item.restored);
    QCOMPARE(contentOf(u'/' + path), QByteArray("not really audio"));
}

void LongNamesTest::writesTagsOrRefuses_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isWritten");
    QTest::newRow("a name of 248 bytes") << u"248"_s << true;
    QTest::newRow("a name of 249 bytes") << u"249"_s << false;
    QTest::newRow("a name of 255 bytes") << u"255"_s << false;
    QTest::newRow("a path with room for the temporary") << u"path"_s << true;
    QTest::newRow("the longest path") << u"longest path"_s << false;
}

void LongNamesTest::writesTagsOrRefuses()
{
    QFETCH(QString, kind);
    QFETCH(bool, isWritten);
    const QString name = kind == u"path"_s           ? deep(longestPath - 7)
                         : kind == u"longest path"_s ? deep(longestPath)
                                                     : longestNamed(kind.toInt());
    const QString path = m_user->addTrack(name, song(u"Song"), audio());
    AppState &app = m_user->start();
    QCOMPARE(app.cueProtected(), 1);
    const auto check = [&](const QByteArray &before) {
        const QStringList toasts = m_user->toasts();
        QCOMPARE(toasts.size(), 1);
        QVERIFY2(toasts[0].contains(tooLong) != isWritten, qPrintable(toasts[0]));
        QCOMPARE(contentOf(u'/' + path) != before, isWritten);
        QCOMPARE(app.changeEntries().size(), isWritten ? 1 : 0);
        QCOMPARE(namesIn(QFileInfo(u'/' + path).path()).filter(u".twtmp"_s), QStringList());
    };
    app.normalizeLoudness(m_user->track(0), -2.5);
    check(audio());
    put(u'/' + path, TagBuilder().object("Serato Autotags", "x").file());
    QFile::remove(m_user->root().path(u"data/Tarnwick/changelog.json"_s));
    AppState &later = m_user->restart();
    QCOMPARE(later.cueLosses().size(), 1);
    const QByteArray without = contentOf(u'/' + path);
    later.restoreCues(later.cueLosses().first());
    QCOMPARE(m_user->toasts().size(), 1);
    QVERIFY(m_user->toasts()[0].contains(tooLong) != isWritten);
    QCOMPARE(contentOf(u'/' + path) != without, isWritten);
    QCOMPARE(later.changeEntries().size(), isWritten ? 1 : 0);
}

void LongNamesTest::keepsCratesOfAnyLength_data()
{
    QTest::addColumn<int>("bytes");
    for (const int bytes : {248, 249, 255})
        QTest::addRow("%d bytes", bytes) << bytes;
}

void LongNamesTest::keepsCratesOfAnyLength()
{
    QFETCH(int, bytes);
    const QString name(bytes - 6, u'c');
    (void)m_user->addTrack(u"Music/a.mp3"_s, song(u"Song"));
    const QString file = m_user->home(u"Music/_Serato_/Subcrates/%1.crate"_s.arg(name));
    const QByteArray content = crateVersion() + crateEntry(u"Music/a.mp3");
    put(file, content);
    AppState &app = m_user->start();
    QCOMPARE(app.crates().size(), 1);
    QCOMPARE(app.crates().first().name, name);
    app.takeSnapshot(u"Crates"_s);
    QVERIFY(m_user->waitUntilIdle());
    QCOMPARE(contentOf(app.snapshots().first().folderPath() + u"/Subcrates/%1.crate"_s.arg(name)),
             content);
    const auto added = CrateWriter::addTracks({u"b"_s}, name, app.result()->location);
    QCOMPARE(bool(added), bytes <= 248);
    if (!added) {
        QVERIFY(added.error().message.contains(tooLong));
        QCOMPARE(contentOf(file), content);
    }
    app.restoreSnapshot(app.snapshots().first());
    QVERIFY(m_user->waitUntilIdle());
    QCOMPARE(contentOf(file), content);
    QCOMPARE(namesIn(QFileInfo(file).path()), QStringList{name + u".crate"_s});
}

void LongNamesTest::exportsPathsAndNamesWhole()
{
    const QStringList paths = {m_user->addTrack(deep(longestPath), song(u"Deep")),
                               m_user->addTrack(longestNamed(longestName), song(u"Long"))};
    (void)m_user->addMissingTrack(deep(2 * longestPath), song(u"Too deep"));
    const QString crate(longestName - 6, u'c');
    put(m_user->home(u"Music/_Serato_/Subcrates/%1.crate"_s.arg(crate)),
        crateVersion() + crateEntry(paths[0]) + crateEntry(paths[1]));
    AppState &app = m_user->start();
    const QString out = m_user->root().path(u"USB"_s);
    for (const ExportTarget target :
         {ExportTarget::Rekordbox, ExportTarget::Engine, ExportTarget::SeratoBackup}) {
        app.runExport(target, out);
        QVERIFY(m_user->waitUntilIdle());
        QVERIFY(app.lastExport().has_value());
    }
    const QByteArray xml = contentOf(out + u"/rekordbox.xml"_s);
    for (const QString &path : paths)
        QVERIFY(xml.contains("file://localhost/" + path.toUtf8() + '"'));
    QVERIFY(xml.contains("<NODE Name=\"" + crate.toUtf8() +
                         "\" Type=\"1\" KeyType=\"0\" "
                         "Entries=\"2\">"));
    const QString engine = out + u"/Engine Library/Database2/m.db"_s;
    QCOMPARE(rowsOf(engine, "SELECT path FROM Track ORDER BY id"),
             (QStringList{u'/' + paths[0], u'/' + paths[1]}));
    QCOMPARE(rowsOf(engine, "SELECT title FROM Playlist"), QStringList{crate});
    QCOMPARE(namesIn(out + u"/_Serato_ backup/Subcrates"_s), QStringList{crate + u".crate"_s});
}

void LongNamesTest::refusesALibraryThatLiesTooDeep()
{
    const QString folder = deep(longestPath - 12, u"_Serato_"_s);
    const QString file = m_user->home(folder + u"/database V2"_s);
    QCOMPARE(file.size(), longestPath);
    const QByteArray content = databaseVersion() + trackRecord({textRecord("pfil", u"a.mp3")});
    put(file, content);
    AppState &app = m_user->launch(AppState::Environment::Ignored);
    app.startScan({u"Deep"_s, QUrl::fromLocalFile(m_user->home(folder)), true, true});
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(app.result() != nullptr);
    QCOMPARE(app.result()->total(), 1);
    QStringList toasts;
    QObject::connect(&app, &AppState::toastRaised, &app,
                     [&](const Toast &toast) { toasts << toast.message; });
    app.setGenre(app.result()->tracks[0], u"House"_s);
    app.fileOrphans({u"a.mp3"_s});
    app.dropFromLibrary(app.result()->tracks[0]);
    QCOMPARE(toasts.size(), 3);
    for (const QString &toast : toasts)
        QVERIFY2(toast.contains(tooLong), qPrintable(toast));
    QCOMPARE(contentOf(file), content);
    QVERIFY(app.changeEntries().isEmpty());
}

void LongNamesTest::startsWithADataFolderThatLiesTooDeep()
{
    const QString path = m_user->addTrack(u"Music/a.mp3"_s, song(u"Song"), audio());
    (void)m_user->start();
    const ScopedVariable data("XDG_DATA_HOME",
                              QByteArray("/tmp") + QByteArray("/deeper than deep").repeated(400));
    AppState &app = m_user->restart();
    QCOMPARE(app.result()->total(), 1);
    app.takeSnapshot(u"None"_s);
    QVERIFY(m_user->waitUntilIdle());
    QCOMPARE(m_user->toasts().size(), 1);
    QVERIFY(m_user->toasts()[0].startsWith(u"Snapshot failed: "_s));
    app.setGenre(m_user->track(0), u"House"_s);
    QCOMPARE(app.changeEntries().size(), 1);
    QVERIFY(m_user->database().contains(utf16(u"House")));
}

void LongNamesTest::looksForCandidatesOfAnyLength()
{
    QFETCH(qsizetype, length);
    const QString there = longestNamed(longestName);
    (void)m_user->writeAudio(there);
    (void)m_user->addMissingTrack(deep(length, QFileInfo(there).fileName()), song(u"Lost"));
    (void)m_user->start();
    const auto found = RepairEngine::relinkCandidates(m_user->track(0).track);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found[0].url.toLocalFile(), m_user->home(there));
}

QTEST_GUILESS_MAIN(LongNamesTest)
#include "long_names_test.moc"
