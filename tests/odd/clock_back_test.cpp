#include "platform/clock.h"
#include "safety/snapshot_store.h"
#include "support/command_fixture.h"
#include "support/memory_folder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);

ScannedTrack trackNamed(AppState &app, const QString &name)
{
    for (const ScannedTrack &track : app.result()->tracks) {
        if (track.track.fileName() == name)
            return track;
    }
    qFatal("no track %s", qPrintable(name));
}

DuplicateGroup groupOf(AppState &app, const QString &key)
{
    for (const DuplicateGroup &group : app.derived()->duplicateGroups) {
        if (group.key == key)
            return group;
    }
    qFatal("no group %s", qPrintable(key));
}

} // namespace

/// A clock that is put back between changes: by the user, by a battery that is empty, by the hour
/// in autumn.
class ClockBackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { keepTemporaryFoldersInMemory(); }
    void init();
    void cleanup();
    void cleanupTestCase() { qInfo("%d cases", m_cases); }
    void keepsTheOrderOfTheLog_data() { steps(); }
    void keepsTheOrderOfTheLog();
    void undoesWhatWasDoneAheadOfTheStep_data() { steps(); }
    void undoesWhatWasDoneAheadOfTheStep();
    void purgesNothingThatHasNotHadItsDays_data() { steps(); }
    void purgesNothingThatHasNotHadItsDays();
    void givesNoNameTwice_data() { steps(); }
    void givesNoNameTwice();
    void rollsBackToAnySnapshot_data() { steps(); }
    void rollsBackToAnySnapshot();

private:
    static void steps();
    void addPair(const QString &song);
    void hold(const QString &song);

    std::unique_ptr<CommandFixture> m_user;
    int m_cases = 0;
};

void ClockBackTest::init()
{
    m_user = std::make_unique<CommandFixture>();
}

void ClockBackTest::cleanup()
{
    m_user.reset();
    ++m_cases;
}

void ClockBackTest::steps()
{
    QTest::addColumn<QDateTime>("back");
    QTest::newRow("not at all") << noon;
    QTest::newRow("a millisecond") << noon.addMSecs(-1);
    QTest::newRow("an hour") << noon.addSecs(-3600);
    QTest::newRow("31 days") << noon.addDays(-31);
    QTest::newRow("a year") << noon.addYears(-1);
    QTest::newRow("to the start of the epoch") << QDateTime({1970, 1, 1}, {0, 0}, Qt::UTC);
    QTest::newRow("before 1970") << QDateTime({1969, 12, 31}, {23, 59, 58, 500}, Qt::UTC);
    QTest::newRow("to a year of three digits") << QDateTime({980, 6, 1}, {12, 0}, Qt::UTC);
}

/// Two copies of one song; the first is the better one.
void ClockBackTest::addPair(const QString &song)
{
    const QByteArrayList fields = {textRecord("tsng", song), textRecord("tart", u"Artist")};
    m_user->addTrack(u"Music/"_s + song + u" best.mp3"_s, fields, QByteArray(500, 'b'));
    m_user->addTrack(u"Music/"_s + song + u".mp3"_s, fields, QByteArray(100, 'w'));
}

void ClockBackTest::hold(const QString &song)
{
    const DuplicateGroup group = groupOf(m_user->app(), u"artist|"_s + song);
    m_user->app().resolveDuplicates(group, trackNamed(m_user->app(), song + u" best.mp3"_s).id());
}

void ClockBackTest::keepsTheOrderOfTheLog()
{
    QFETCH(QDateTime, back);
    platform::ScopedClock clock(noon);
    m_user->addTrack(u"Music/a.mp3"_s);
    AppState &app = m_user->start();
    QStringList genres;
    for (const QDateTime &moment : {noon, back, noon.addSecs(1), back, back.addMSecs(1)}) {
        clock.set(moment);
        genres.prepend(u"Genre %1"_s.arg(genres.size()));
        app.setGenre(m_user->track(0), genres.first());
    }
    const auto afters = [](const QList<ChangeEntry> &entries) {
        QStringList all;
        for (const ChangeEntry &entry : entries)
            all << entry.after.value_or(QString());
        return all;
    };
    QCOMPARE(afters(app.changeEntries()), genres);
    const QList<ChangeEntry> written = app.changeEntries();
    QCOMPARE(m_user->restart().changeEntries(), written);
    QSet<QString> ids;
    for (const ChangeEntry &entry : written)
        ids << entry.id;
    QCOMPARE(ids.size(), written.size());
}

void ClockBackTest::undoesWhatWasDoneAheadOfTheStep()
{
    QFETCH(QDateTime, back);
    platform::ScopedClock clock(noon);
    addPair(u"song"_s);
    AppState &app = m_user->start();
    const auto before = treeOf(m_user->home(u"Music"_s));
    app.setGenre(m_user->track(0), u"House"_s);
    hold(u"song"_s);
    clock.set(back);
    AppState &later = m_user->restart();
    later.setGenre(m_user->track(0), u"Techno"_s);
    for (const ChangeEntry &entry : later.changeEntries())
        QVERIFY2(entry.isReversible(), qPrintable(entry.detail));
    clock.set(back.addSecs(-60));
    m_user->restart().undoEverything();
    for (const ChangeEntry &entry : m_user->app().changeEntries())
        QVERIFY(entry.reversed);
    const auto after = treeOf(m_user->home(u"Music"_s));
    QCOMPARE(after.keys(), before.keys());
    QCOMPARE(after[u"song.mp3"_s], before[u"song.mp3"_s]);
    QCOMPARE(m_user->app().result()->tracks.size(), size_t(2));
    for (const ScannedTrack &track : m_user->app().result()->tracks)
        QVERIFY(track.existsOnDisk && track.track.genre.isEmpty());
}

void ClockBackTest::purgesNothingThatHasNotHadItsDays()
{
    QFETCH(QDateTime, back);
    platform::ScopedClock clock(noon);
    addPair(u"one"_s);
    addPair(u"two"_s);
    m_user->start();
    hold(u"one"_s);
    clock.set(back);
    m_user->restart();
    hold(u"two"_s);
    const auto namesHeld = [this] {
        QStringList names;
        for (const HeldItem &item : m_user->app().heldItems()) {
            if (QFileInfo::exists(item.heldPath))
                names << QFileInfo(item.originalPath).fileName();
        }
        return names.join(u' ');
    };
    QCOMPARE(namesHeld(), u"two.mp3 one.mp3"_s);
    clock.set(back.addDays(30).addSecs(-1));
    m_user->restart();
    QCOMPARE(namesHeld(), u"two.mp3 one.mp3"_s);
    // By the clock of its own time each goes when its days have ended, and no other.
    clock.set(std::min(noon, back.addDays(30)).addDays(back == noon ? 30 : 0));
    m_user->restart();
    QCOMPARE(namesHeld(), back.addDays(30) <= noon ? u"one.mp3"_s
                          : back == noon           ? QString()
                                                   : u"two.mp3 one.mp3"_s);
    clock.set(noon.addDays(30).addSecs(-1));
    m_user->restart();
    QVERIFY(back == noon || namesHeld().contains(u"one.mp3"_s));
}

/// Numbers are given anew once a purge has shortened the list; a clock that is put back then would
/// give an item the name of another.
void ClockBackTest::givesNoNameTwice()
{
    QFETCH(QDateTime, back);
    platform::ScopedClock clock(noon);
    const QStringList songs = {u"one"_s, u"two"_s, u"three"_s, u"four"_s, u"five"_s};
    for (const QString &song : songs)
        addPair(song);
    m_user->start();
    clock.set(noon.addDays(-40));
    hold(u"one"_s);
    clock.set(noon);
    hold(u"two"_s);
    hold(u"three"_s);
    m_user->restart(); // purges the first
    QCOMPARE(m_user->app().heldItems().size(), 2);
    hold(u"four"_s);
    clock.set(back);
    m_user->restart();
    hold(u"five"_s);
    QSet<QString> ids;
    QSet<QString> folders;
    for (const HeldItem &item : m_user->app().heldItems()) {
        ids << item.id;
        folders << QFileInfo(item.heldPath).path();
        QCOMPARE(namesIn(QFileInfo(item.heldPath).path()).size(), 1);
    }
    QCOMPARE(ids.size(), 4);
    QCOMPARE(folders.size(), 4);
    m_user->app().undoEverything();
    for (const QString &song : songs)
        QCOMPARE(QFileInfo::exists(m_user->home(u"Music/"_s + song + u".mp3"_s)), song != u"one"_s);
}

void ClockBackTest::rollsBackToAnySnapshot()
{
    QFETCH(QDateTime, back);
    platform::ScopedClock clock(noon);
    m_user->addTrack(u"Music/a.mp3"_s);
    AppState &app = m_user->start();
    const QByteArray first = m_user->database();
    app.takeSnapshot(u"First"_s);
    QVERIFY(m_user->waitUntilIdle());
    app.setGenre(m_user->track(0), u"House"_s);
    const QByteArray second = m_user->database();
    clock.set(back);
    app.takeSnapshot(u"Second"_s);
    QVERIFY(m_user->waitUntilIdle());
    app.setGenre(m_user->track(0), u"Techno"_s);
    const auto rollBackTo = [&](const QString &reason) {
        for (const Snapshot &snapshot : app.snapshots()) {
            if (snapshot.reason == reason)
                app.restoreSnapshot(snapshot);
        }
        return m_user->waitUntilIdle();
    };
    QSet<QString> ids;
    for (const Snapshot &snapshot : app.snapshots())
        ids << snapshot.id;
    QCOMPARE(ids.size(), 4);
    QVERIFY(rollBackTo(u"First"_s));
    QCOMPARE(m_user->database(), first);
    QVERIFY(rollBackTo(u"Second"_s));
    QCOMPARE(m_user->database(), second);
    QCOMPARE(SnapshotStore::list().size(), 6);
}

QTEST_GUILESS_MAIN(ClockBackTest)
#include "clock_back_test.moc"
