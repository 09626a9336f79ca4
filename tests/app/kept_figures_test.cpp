// The figures in AppState that are kept, and prepared in the background.

#include "app/app_state.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray track(const QString &path, const QString &title = u"Song"_s)
{
    return trackRecord({textRecord("pfil", path), textRecord("tart", u"Ash"),
                        textRecord("tsng", title), textRecord("tgen", u"House")});
}

} // namespace

class KeptFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void thereAreNoneBeforeTheFirstScan()
    {
        m_fixture->writeHomeDatabase({track(u"a.mp3"_s)});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QVERIFY(m_fixture->waitUntilIdle());
        app.prepareHygiene();
        app.prepareVersions();
        QCOMPARE(app.pendingTasks(), 0);
        QVERIFY(!app.hygiene());
        QVERIFY(!app.versions());
        QVERIFY(!app.hasHygiene());
        QVERIFY(!app.hasVersions());
    }

    void hygieneIsKeptUntilTheLibraryOrTheCratesChange()
    {
        m_fixture->writeHomeDatabase({track(m_fixture->writeAudio(u"a.mp3"_s))});
        AppState &app = m_fixture->launchAndScan();
        const auto before = app.hygiene();
        QCOMPARE(before->orphanCount, 1);
        QCOMPARE(app.hygiene(), before);
        writeCrate(u"Mix"_s, {m_fixture->home(u"a.mp3"_s)});
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(app.hygiene() != before);
        QCOMPARE(app.hygiene()->orphanCount, 0);
        // What was taken earlier stands for its reader.
        QCOMPARE(before->orphanCount, 1);
    }

    /// A view that reads the figures at either signal must not be left with those in between.
    void hygieneReadAtEachSignalEndsUpRight()
    {
        const QByteArray a = track(m_fixture->writeAudio(u"a.mp3"_s));
        const QByteArray b = track(m_fixture->writeAudio(u"b.mp3"_s));
        m_fixture->writeHomeDatabase({a});
        AppState &app = m_fixture->launchAndScan();
        QCOMPARE(app.hygiene()->orphanCount, 1);
        m_fixture->writeHomeDatabase({a, b});
        writeCrate(u"Mix"_s, {m_fixture->home(u"a.mp3"_s), m_fixture->home(u"b.mp3"_s)});
        QList<int> read;
        const auto look = [&] { read << app.hygiene()->orphanCount; };
        connect(&app, &AppState::libraryChanged, &app, look);
        connect(&app, &AppState::cratesChanged, &app, look);
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(read, QList<int>({2, 0}));
        QCOMPARE(app.hygiene()->orphanCount, 0);
    }

    void versionsAreKeptUntilTheLibraryChanges()
    {
        m_fixture->writeHomeDatabase({cut(u"a.mp3"_s, u"Song"_s), cut(u"b.mp3"_s, u"Song [2]"_s)});
        AppState &app = m_fixture->launchAndScan();
        const auto before = app.versions();
        QCOMPARE(before->size(), size_t(1));
        QCOMPARE(before->front().cuts.size(), size_t(2));
        QCOMPARE(app.versions(), before);
        app.setGenre(app.result()->tracks.front(), u"Disco"_s);
        QVERIFY(!app.hasVersions());
        QVERIFY(app.versions() != before);
    }

    void areWorkedOutInTheBackgroundOnce()
    {
        m_fixture->writeHomeDatabase({cut(u"a.mp3"_s, u"Song"_s), cut(u"b.mp3"_s, u"Song [2]"_s)});
        AppState &app = m_fixture->launchAndScan();
        QVERIFY(!app.hasHygiene());
        QVERIFY(!app.hasVersions());
        const QSignalSpy prepared(&app, &AppState::figuresPrepared);
        for (int i = 0; i < 2; ++i) {
            app.prepareHygiene();
            app.prepareVersions();
            QCOMPARE(app.pendingTasks(), 2);
        }
        QVERIFY(!app.hasHygiene());
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(prepared.size(), 2);
        QVERIFY(app.hasHygiene());
        QVERIFY(app.hasVersions());
        QCOMPARE(app.hygiene()->orphanCount, 2);
        QCOMPARE(app.versions()->size(), size_t(1));
        app.prepareHygiene();
        app.prepareVersions();
        QCOMPARE(app.pendingTasks(), 0);
    }

    void aReaderWhoDoesNotWaitKeepsWhatItRead()
    {
        m_fixture->writeHomeDatabase({});
        AppState &app = m_fixture->launchAndScan();
        app.prepareHygiene();
        app.prepareVersions();
        const auto hygiene = app.hygiene();
        const auto versions = app.versions();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.hygiene(), hygiene);
        QCOMPARE(app.versions(), versions);
    }

    void whatRestsOnAnEarlierLibraryIsNotTaken()
    {
        m_fixture->writeHomeDatabase({cut(u"a.mp3"_s, u"Song"_s), cut(u"b.mp3"_s, u"Song [2]"_s)});
        AppState &app = m_fixture->launchAndScan();
        const QSignalSpy prepared(&app, &AppState::figuresPrepared);
        app.prepareHygiene();
        app.prepareVersions();
        app.setGenre(app.result()->tracks.front(), u"hOUSE"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(prepared.size(), 2);
        QVERIFY(!app.hasHygiene());
        QVERIFY(!app.hasVersions());
        // Asked again, they are those of the present library.
        app.prepareHygiene();
        app.prepareVersions();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(app.hasVersions());
        QCOMPARE(app.hygiene()->genreVariants.size(), size_t(1));
    }

private:
    QByteArray cut(const QString &name, const QString &title) const
    {
        return track(m_fixture->writeAudio(name), title);
    }
    void writeCrate(const QString &name, const QStringList &entries) const
    {
        QByteArray bytes = crateVersion();
        for (const QString &entry : entries)
            bytes += crateEntry(entry);
        m_fixture->root().write(u"home/Music/_Serato_/Subcrates/%1.crate"_s.arg(name), bytes);
    }

    std::unique_ptr<AppFixture> m_fixture;
};

QTEST_GUILESS_MAIN(KeptFiguresTest)
#include "kept_figures_test.moc"
