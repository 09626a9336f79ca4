#include "serato/serato_history.h"

#include "platform/clock.h"
#include "platform/fault_gate.h"
#include "support/scoped_environment.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"

#include <QCryptographicHash>
#include <QTest>

#include <cerrno>
#include <ctime>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

/// The example of docs/formats/history-session.md.
const QByteArray exampleSession = hex("7672736e" // vrsn
                                      "00000008"
                                      "0031 002e 0030 002f" // "1.0/"
                                      "6f656e74"            // oent
                                      "00000046"
                                      "61646174" // adat
                                      "0000003e"
                                      "00000002" // 2, the path
                                      "0000000c"
                                      "002f 0061 002e 006d 0070 0033" // "/a.mp3"
                                      "00000006"                      // 6, the title
                                      "0000000a"
                                      "0048 0065 006c 006c 006f" // "Hello"
                                      "00000007"                 // 7, the artist
                                      "00000004"
                                      "0041 0064" // "Ad"
                                      "0000001c"  // 28, the time
                                      "00000004"
                                      "5ff06400"); // 2021-01-02 12:16:00 UTC

constexpr quint32 fridayNoon = 1609502400; // 2021-01-01 12:00:00 UTC

/// What the clock shows unless a test says otherwise: Wednesday of the week of 2026-11-16.
const QDateTime stoppedAt(QDate(2026, 11, 18), QTime(12, 0), Qt::UTC);
const QString thisWeek = u"2026-11-16"_s;

QByteArray numbered(quint32 number, const QByteArray &payload)
{
    return bigEndian32(number) + bigEndian32(quint32(payload.size())) + payload;
}

QByteArray pathField(QStringView path)
{
    return numbered(2, utf16(path));
}

QByteArray titleField(QStringView title)
{
    return numbered(6, utf16(title));
}

QByteArray artistField(QStringView artist)
{
    return numbered(7, utf16(artist));
}

QByteArray timeField(quint32 seconds)
{
    return numbered(28, bigEndian32(seconds));
}

/// One play of a session.
QByteArray entry(const QByteArrayList &fields)
{
    return record("oent", record("adat", fields.join()));
}

QString noLane(const QString &)
{
    return {};
}

QList<PlayEvent> eventsOf(const QByteArray &session, SeratoParser::Notes *notes = nullptr)
{
    std::vector<PlayEvent> events;
    SeratoHistory::appendEvents(events, session, noLane, notes);
    return QList<PlayEvent>(events.begin(), events.end());
}

/// The one play in the fields of one entry.
PlayEvent eventOf(const QByteArrayList &fields)
{
    const QList<PlayEvent> events = eventsOf(entry(fields));
    if (events.size() != 1)
        qFatal("not one play but %d", int(events.size()));
    return events.first();
}

QStringList titlesOf(const QList<PlayEvent> &events)
{
    QStringList titles;
    for (const PlayEvent &event : events)
        titles << event.title;
    return titles;
}

/// A home folder of the test's own, with a sessions folder to fill.
class Home
{
public:
    Home()
        : m_variable("HOME", m_folder.path().toUtf8())
    {}

    QString write(const QString &name, const QByteArray &session) const
    {
        return m_folder.write(u"Music/_Serato_/History/Sessions/"_s + name, session);
    }
    /// A session of one play with this title.
    QString writePlay(const QString &name, const QString &title) const
    {
        return write(name, entry({titleField(title)}));
    }
    QString makeFolder(const QString &name) const
    {
        return m_folder.makeFolder(u"Music/_Serato_/History/Sessions/"_s + name);
    }
    QStringList titles() const
    {
        const auto events = SeratoHistory::events(noLane);
        return titlesOf(QList<PlayEvent>(events.begin(), events.end()));
    }

private:
    TestFolder m_folder;
    ScopedVariable m_variable;
};

class TimeZone
{
public:
    explicit TimeZone(const QByteArray &name)
        : m_variable("TZ", name)
    {
        ::tzset();
    }

private:
    ScopedVariable m_variable;
};

} // namespace

class SeratoHistoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_clock = std::make_unique<platform::ScopedClock>(stoppedAt); }
    void cleanup() { m_clock.reset(); }

    void readsTheExample();
    void givesTheFieldsOfAPlayInTheirPlaces();
    void looksUpTheLaneOfThePlayedPath();
    void readsTextAsOtherFilesDo_data();
    void readsTextAsOtherFilesDo();
    void skipsWhatIsNoEntry();
    void givesAPlayForEachSetOfFieldsInAnEntry();
    void takesTheLaterOfTwoEqualFields();
    void keepsWhatStandsAheadOfDamage_data();
    void keepsWhatStandsAheadOfDamage();
    void tellsWhatItLeftOut();

    void splitsATitleOnlyWhereThereIsNoArtist_data();
    void splitsATitleOnlyWhereThereIsNoArtist();
    void dropsAPlayWithoutATitle_data();
    void dropsAPlayWithoutATitle();
    void keepsAPlayWithoutAPath();

    void takesTheMondayOfTheWeek_data();
    void takesTheMondayOfTheWeek();
    void tellsTheWeeksOfOneSessionApart_data();
    void tellsTheWeeksOfOneSessionApart();
    void countsToThisWeekWithoutATime_data();
    void countsToThisWeekWithoutATime();
    void keepsTheTimeThatALaterBadOneFollows();

    void hashesPlainSha256();
    void keysATrackByArtistAndTitle_data();
    void keysATrackByArtistAndTitle();
    void keysAlikeWhateverTheLetterCase();
    void keysAPlayByItsSplitTitle();

    void looksInTheHomeLibrary();
    void readsSessionsInTheOrderOfTheirNames();
    void hasNoEventsWithoutAFolder();
    void readsSessionFilesAlone();
    void leavesOutWhatCannotBeRead_data();
    void leavesOutWhatCannotBeRead();
    void neverOpensAPipe();

private:
    std::unique_ptr<platform::ScopedClock> m_clock;
};

void SeratoHistoryTest::readsTheExample()
{
    SeratoParser::Notes notes;
    const QList<PlayEvent> expected = {{.trackKey = SeratoHistory::trackKey(u"Ad"_s, u"Hello"_s),
                                        .title = u"Hello"_s,
                                        .artist = u"Ad"_s,
                                        .lane = {},
                                        .week = u"2020-12-28"_s,
                                        .playedPath = u"/a.mp3"_s}};
    QCOMPARE(eventsOf(exampleSession, &notes), expected);
    QCOMPARE(notes, SeratoParser::Notes());
}

void SeratoHistoryTest::givesTheFieldsOfAPlayInTheirPlaces()
{
    const PlayEvent event =
        eventOf({numbered(1, bigEndian32(7)), pathField(u"/Music/a.mp3"), titleField(u"Title"),
                 artistField(u"Artist"), numbered(9, utf16(u"House")), timeField(fridayNoon)});
    QCOMPARE(event.playedPath, u"/Music/a.mp3"_s);
    QCOMPARE(event.title, u"Title"_s);
    QCOMPARE(event.artist, u"Artist"_s);
    QCOMPARE(event.week, u"2020-12-28"_s);
    QCOMPARE(event.trackKey, SeratoHistory::trackKey(u"Artist"_s, u"Title"_s));
}

void SeratoHistoryTest::looksUpTheLaneOfThePlayedPath()
{
    std::vector<PlayEvent> events;
    QStringList asked;
    SeratoHistory::appendEvents(events, entry({pathField(u"no slash.mp3"), titleField(u"T")}),
                                [&](const QString &path) {
                                    asked << path;
                                    return u"House"_s;
                                });
    QCOMPARE(asked, QStringList{u"no slash.mp3"_s});
    QCOMPARE(events.at(0).lane, u"House"_s);
}

void SeratoHistoryTest::readsTextAsOtherFilesDo_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    QTest::newRow("beyond Latin-1") << hex("041d 043e 0447 044c") << u"Ночь"_s;
    QTest::newRow("a pair") << hex("d83c dfb5") << u"🎵"_s;
    QTest::newRow("an odd last byte") << hex("0041 00") << u"A"_s;
    QTest::newRow("an unpaired surrogate") << hex("d83c 0041") << u"\uFFFDA"_s;
    QTest::newRow("a NUL inside") << hex("0041 0000 0042") << u"A\0B"_s;
    QTest::newRow("a byte-order mark") << hex("feff 0041") << u"\uFEFFA"_s;
}

void SeratoHistoryTest::readsTextAsOtherFilesDo()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, text);
    const PlayEvent event =
        eventOf({numbered(2, payload), numbered(6, payload), numbered(7, payload)});
    QCOMPARE(event.playedPath, text);
    QCOMPARE(event.title, text);
    QCOMPARE(event.artist, text);
}

void SeratoHistoryTest::skipsWhatIsNoEntry()
{
    const QByteArray play = record("adat", titleField(u"T"));
    QCOMPARE(titlesOf(eventsOf(record("otrk", play))), QStringList());
    QCOMPARE(titlesOf(eventsOf(play)), QStringList());
    QCOMPARE(titlesOf(eventsOf(record("oent", record("adax", titleField(u"T"))))), QStringList());
    QCOMPARE(titlesOf(eventsOf(record("osrt", hex("00")) + record("oent", play))),
             QStringList{u"T"_s});
}

void SeratoHistoryTest::givesAPlayForEachSetOfFieldsInAnEntry()
{
    const QByteArray two = record("oent", record("adat", titleField(u"A")) + record("ovct") +
                                              record("adat", titleField(u"B")));
    QCOMPARE(titlesOf(eventsOf(two)), (QStringList{u"A"_s, u"B"_s}));
}

void SeratoHistoryTest::takesTheLaterOfTwoEqualFields()
{
    const PlayEvent event =
        eventOf({titleField(u"first"), artistField(u"X"), pathField(u"/first"),
                 timeField(fridayNoon), titleField(u"second"), artistField(u"Y"),
                 pathField(u"/second"), timeField(fridayNoon + 7 * 86400)});
    QCOMPARE(event.title, u"second"_s);
    QCOMPARE(event.artist, u"Y"_s);
    QCOMPARE(event.playedPath, u"/second"_s);
    QCOMPARE(event.week, u"2021-01-04"_s);
    // An empty one replaces too.
    QCOMPARE(eventOf({titleField(u"T"), artistField(u"X"), artistField(u"")}).artist, QString());
}

void SeratoHistoryTest::keepsWhatStandsAheadOfDamage_data()
{
    QTest::addColumn<QByteArray>("session");
    QTest::addColumn<QStringList>("titles");
    const QByteArray good = entry({titleField(u"A")});
    const auto damaged = [](const QByteArray &rest) {
        return entry({titleField(u"B"), rest, titleField(u"C")});
    };
    const auto row = [](const char *name, const QByteArray &session, const QStringList &titles) {
        QTest::newRow(name) << session << titles;
    };
    row("empty file", {}, {});
    row("no history at all", "#!/bin/sh\nexit 0\n", {});
    row("cut inside an entry", good + good.chopped(1), {u"A"_s});
    row("a tag beyond ASCII", good + hex("80656e74 00000000") + good, {u"A"_s});
    row("a field past the end", good + damaged(hex("00000007 ffffffff")) + good,
        {u"A"_s, u"B"_s, u"A"_s});
    row("a field one byte too long",
        record("oent", record("adat", titleField(u"B") + hex("00000006 00000003 0041"))), {u"B"_s});
    row("fewer than eight bytes behind the last field",
        record("oent", record("adat", titleField(u"B") + hex("00000006 000000"))), {u"B"_s});
    row("an entry of seven bytes", record("oent", record("adat", hex("00000006 000000"))), {});
    row("an empty entry", good + record("oent") + entry({}) + good, {u"A"_s, u"A"_s});
    row("fields cut by their entry", record("oent", record("adat", titleField(u"B")).chopped(1)),
        {});
}

void SeratoHistoryTest::keepsWhatStandsAheadOfDamage()
{
    QFETCH(QByteArray, session);
    QFETCH(QStringList, titles);
    QCOMPARE(titlesOf(eventsOf(session)), titles);
}

void SeratoHistoryTest::tellsWhatItLeftOut()
{
    SeratoParser::Notes notes;
    eventsOf(entry({titleField(u"B"), hex("00000006 ffffffff 0041")}), &notes);
    QCOMPARE(notes, SeratoParser::Notes{u"adat: the last 10 of 20 bytes are no field"_s});
}

void SeratoHistoryTest::splitsATitleOnlyWhereThereIsNoArtist_data()
{
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("splitArtist");
    QTest::addColumn<QString>("splitTitle");
    const auto row = [](const char *name, const QStringList &texts) {
        QTest::newRow(name) << texts[0] << texts[1] << texts[2] << texts[3];
    };
    row("no artist", {u""_s, u"A - B"_s, u"A"_s, u"B"_s});
    row("an artist", {u"X"_s, u"A - B"_s, u"X"_s, u"A - B"_s});
    row("a blank is an artist", {u" "_s, u"A - B"_s, u" "_s, u"A - B"_s});
    row("at the first place", {u""_s, u"A - B - C"_s, u"A"_s, u"B - C"_s});
    row("no blanks around the dash", {u""_s, u"A-B"_s, u""_s, u"A-B"_s});
    row("nothing ahead", {u""_s, u" - B"_s, u""_s, u"B"_s});
    row("more blanks stay", {u""_s, u"A  -  B"_s, u"A "_s, u" B"_s});
}

void SeratoHistoryTest::splitsATitleOnlyWhereThereIsNoArtist()
{
    QFETCH(QString, artist);
    QFETCH(QString, title);
    const PlayEvent event = eventOf({titleField(title), artistField(artist)});
    QTEST(event.artist, "splitArtist");
    QTEST(event.title, "splitTitle");
}

void SeratoHistoryTest::dropsAPlayWithoutATitle_data()
{
    QTest::addColumn<QByteArray>("session");
    QTest::newRow("no title") << entry({artistField(u"X"), pathField(u"/a.mp3")});
    QTest::newRow("an empty title") << entry({artistField(u"X"), titleField(u"")});
    QTest::newRow("a title of one byte") << entry({artistField(u"X"), numbered(6, "A")});
    QTest::newRow("all of it an artist") << entry({titleField(u"A - ")});
    QTest::newRow("nothing but the dash") << entry({titleField(u" - ")});
}

void SeratoHistoryTest::dropsAPlayWithoutATitle()
{
    QFETCH(QByteArray, session);
    QCOMPARE(titlesOf(eventsOf(session)), QStringList());
}

void SeratoHistoryTest::keepsAPlayWithoutAPath()
{
    QCOMPARE(eventOf({titleField(u"T")}).playedPath, QString());
}

void SeratoHistoryTest::takesTheMondayOfTheWeek_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDateTime>("utc");
    QTest::addColumn<QString>("week");
    const auto row = [](const char *name, const char *zone, const char *utc, const QString &week) {
        QTest::newRow(name) << QByteArray(zone)
                            << QDateTime::fromString(QString::fromLatin1(utc), Qt::ISODate) << week;
    };
    row("a Monday", "UTC", "2021-06-07T00:00:00Z", u"2021-06-07"_s);
    row("a Sunday", "UTC", "2021-06-13T23:59:59Z", u"2021-06-07"_s);
    row("a Friday of last year's last week", "UTC", "2021-01-01T12:00:00Z", u"2020-12-28"_s);
    row("a Thursday of a week 53", "UTC", "2020-12-31T12:00:00Z", u"2020-12-28"_s);
    row("a Monday of next year's first week", "UTC", "2018-12-31T12:00:00Z", u"2018-12-31"_s);
    row("a leap day", "UTC", "2024-02-29T12:00:00Z", u"2024-02-26"_s);
    row("one second into the epoch", "UTC", "1970-01-01T00:00:01Z", u"1969-12-29"_s);
    row("past the year 2038", "UTC", "2040-01-01T12:00:00Z", u"2039-12-26"_s);
    row("the last that 32 bits hold", "UTC", "2106-02-07T06:28:15Z", u"2106-02-01"_s);
    row("Sunday in London", "Europe/London", "2021-01-10T23:30:00Z", u"2021-01-04"_s);
    row("Monday in Berlin", "Europe/Berlin", "2021-01-10T23:30:00Z", u"2021-01-11"_s);
    row("Monday in Auckland", "Pacific/Auckland", "2021-01-10T11:00:00Z", u"2021-01-11"_s);
    row("Sunday in Honolulu", "Pacific/Honolulu", "2021-01-11T09:59:59Z", u"2021-01-04"_s);
    row("Monday in Honolulu", "Pacific/Honolulu", "2021-01-11T10:00:00Z", u"2021-01-11"_s);
    row("half an hour off", "Asia/Kolkata", "2021-01-10T18:30:00Z", u"2021-01-11"_s);
    row("ahead of summer time", "America/New_York", "2021-03-15T03:30:00Z", u"2021-03-08"_s);
    row("in summer time", "America/New_York", "2021-03-15T04:00:00Z", u"2021-03-15"_s);
    row("a week without its Friday", "Pacific/Apia", "2012-01-01T09:00:00Z", u"2011-12-26"_s);
}

void SeratoHistoryTest::takesTheMondayOfTheWeek()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDateTime, utc);
    const TimeZone inThatZone(zone);
    const PlayEvent event = eventOf({titleField(u"T"), timeField(quint32(utc.toSecsSinceEpoch()))});
    QTEST(event.week, "week");
}

void SeratoHistoryTest::tellsTheWeeksOfOneSessionApart_data()
{
    QTest::addColumn<QByteArray>("zone");
    for (const char *zone : {"UTC", "Europe/Berlin", "America/Santiago", "Asia/Beirut",
                             "America/St_Johns", "Pacific/Apia", "Africa/Monrovia"})
        QTest::newRow(zone) << QByteArray(zone);
}

/// Each play of a long session has the week that it would have alone, whichever came before it.
void SeratoHistoryTest::tellsTheWeeksOfOneSessionApart()
{
    QFETCH(QByteArray, zone);
    const TimeZone inThatZone(zone);
    QList<quint32> times;
    quint32 draw = 1;
    for (quint32 time = 1; time < 1'700'000'000; time += 3'000'017) {
        draw = draw * 1103515245 + 12345;
        times << time << time + 5 * 86400 << time + (draw >> 12) % (14 * 86400) << 0 << time + 60;
    }
    QByteArrayList entries;
    for (const quint32 time : times)
        entries << entry({titleField(u"T"), timeField(time)});
    const QList<PlayEvent> together = eventsOf(entries.join());
    QCOMPARE(together.size(), times.size());
    for (qsizetype i = 0; i < times.size(); ++i) {
        if (together.at(i).week != eventsOf(entries.at(i)).first().week)
            QFAIL(qPrintable(u"%1: %2"_s.arg(times.at(i)).arg(together.at(i).week)));
    }
}

void SeratoHistoryTest::countsToThisWeekWithoutATime_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("zero") << timeField(0);
    QTest::newRow("eight bytes") << numbered(28, bigEndian32(0) + bigEndian32(fridayNoon));
    QTest::newRow("three bytes") << numbered(28, bigEndian32(fridayNoon).first(3));
    QTest::newRow("no bytes") << numbered(28, {});
}

void SeratoHistoryTest::countsToThisWeekWithoutATime()
{
    QFETCH(QByteArray, field);
    QCOMPARE(eventOf({titleField(u"T"), field}).week, thisWeek);
}

void SeratoHistoryTest::keepsTheTimeThatALaterBadOneFollows()
{
    const PlayEvent event =
        eventOf({titleField(u"T"), timeField(fridayNoon), numbered(28, bigEndian32(0) + "....")});
    QCOMPARE(event.week, u"2020-12-28"_s);
}

/// The digest that all machines of a community must agree upon, by the vectors of its standard.
void SeratoHistoryTest::hashesPlainSha256()
{
    const auto digest = [](const QByteArray &bytes) {
        return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    };
    QCOMPARE(digest(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    QCOMPARE(digest("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    QCOMPARE(digest("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
             "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

/// Expected texts are what `printf '%s' 'artist|title' | sha256sum | cut -c -20` prints.
void SeratoHistoryTest::keysATrackByArtistAndTitle_data()
{
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("key");
    const auto row = [](const char *name, const QString &artist, const QString &title,
                        const char *key) {
        QTest::newRow(name) << artist << title << QString::fromLatin1(key);
    };
    row("plain", u"Daft Punk"_s, u"One More Time"_s, "3b875567370c54066fe0");
    row("nothing but the bar", u""_s, u""_s, "cbe5cfdf7c2118a9c3d7");
    row("accents stay", u"Beyoncé"_s, u"Déjà Vu"_s, "606d36adc694a1cf3848");
    row("a blank behind the artist stays", u"A "_s, u"B"_s, "1f7844d4093e391cf292");
    row("blanks at the ends go", u" \tA"_s, u"B\n "_s, "0eab8a0a3380abf4c7d1");
    row("so do line separators", u"\u2028A"_s, u"B\u0085"_s, "0eab8a0a3380abf4c7d1");
    row("digits keep their leading zeros", u"DJ"_s, u"Track 2086"_s, "0000c2c0634d00ec85f6");
}

void SeratoHistoryTest::keysATrackByArtistAndTitle()
{
    QFETCH(QString, artist);
    QFETCH(QString, title);
    QTEST(SeratoHistory::trackKey(artist, title), "key");
}

void SeratoHistoryTest::keysAlikeWhateverTheLetterCase()
{
    QCOMPARE(SeratoHistory::trackKey(u"DAFT PUNK"_s, u"One More Time"_s),
             SeratoHistory::trackKey(u"daft punk"_s, u"ONE MORE TIME"_s));
    QCOMPARE(SeratoHistory::trackKey(u"ÉLAN"_s, u"НОЧЬ"_s),
             SeratoHistory::trackKey(u"élan"_s, u"ночь"_s));
    QVERIFY(SeratoHistory::trackKey(u"Elan"_s, u"T"_s) !=
            SeratoHistory::trackKey(u"Élan"_s, u"T"_s));
    // Not one text more often composed than it came.
    QVERIFY(SeratoHistory::trackKey(u"E\u0301lan"_s, u"T"_s) !=
            SeratoHistory::trackKey(u"\u00C9lan"_s, u"T"_s));
}

void SeratoHistoryTest::keysAPlayByItsSplitTitle()
{
    QCOMPARE(eventOf({titleField(u"A - B")}).trackKey, SeratoHistory::trackKey(u"A"_s, u"B"_s));
    QCOMPARE(eventOf({titleField(u"A - B"), artistField(u"X")}).trackKey,
             SeratoHistory::trackKey(u"X"_s, u"A - B"_s));
}

void SeratoHistoryTest::looksInTheHomeLibrary()
{
    const ScopedVariable home("HOME", "/homes/dj");
    QCOMPARE(SeratoHistory::sessionsDir(), u"/homes/dj/Music/_Serato_/History/Sessions"_s);
}

void SeratoHistoryTest::readsSessionsInTheOrderOfTheirNames()
{
    const Home home;
    home.write(u"12.session"_s, entry({titleField(u"C")}) + entry({titleField(u"B")}));
    home.writePlay(u"9.session"_s, u"D"_s);
    home.writePlay(u"11.session"_s, u"A"_s);
    QCOMPARE(home.titles(), (QStringList{u"A"_s, u"C"_s, u"B"_s, u"D"_s}));
}

void SeratoHistoryTest::hasNoEventsWithoutAFolder()
{
    const Home home;
    QCOMPARE(home.titles(), QStringList());
}

void SeratoHistoryTest::readsSessionFilesAlone()
{
    const Home home;
    home.writePlay(u"1.session"_s, u"yes"_s);
    home.writePlay(u".hidden.session"_s, u"hidden"_s);
    home.writePlay(u"x.SESSION"_s, u"upper case"_s);
    home.writePlay(u"x.session.bak"_s, u"a copy"_s);
    home.writePlay(u"session"_s, u"no extension"_s);
    home.writePlay(u".session"_s, u"no name"_s);
    home.writePlay(u"deeper/2.session"_s, u"below"_s);
    QCOMPARE(home.titles(), (QStringList{u"hidden"_s, u"yes"_s}));
}

void SeratoHistoryTest::leavesOutWhatCannotBeRead_data()
{
    QTest::addColumn<platform::FileOperation>("operation");
    QTest::newRow("opening fails") << platform::FileOperation::Open;
    QTest::newRow("reading fails") << platform::FileOperation::Read;
}

void SeratoHistoryTest::leavesOutWhatCannotBeRead()
{
    QFETCH(platform::FileOperation, operation);
    const Home home;
    home.writePlay(u"1.session"_s, u"A"_s);
    const QString bad = home.writePlay(u"2.session"_s, u"B"_s);
    home.makeFolder(u"3.session"_s);
    home.writePlay(u"4.session"_s, u"D"_s);
    const platform::ScopedFaults faults([&](platform::FileOperation asked, const QString &path) {
        return asked == operation && path == bad ? EIO : 0;
    });
    QCOMPARE(home.titles(), (QStringList{u"A"_s, u"D"_s}));
}

void SeratoHistoryTest::neverOpensAPipe()
{
    const Home home;
    home.writePlay(u"1.session"_s, u"A"_s);
    const QString pipe = home.makeFolder(u"."_s) + u"/2.session"_s;
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(home.titles(), QStringList{u"A"_s});
}

QTEST_GUILESS_MAIN(SeratoHistoryTest)
#include "serato_history_test.moc"
