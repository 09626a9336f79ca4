#include "analysis/genre_suggestions.h"

#include "foundation/text.h"
#include "support/random_library.h"
#include "support/track_builder.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

using Suggestion = std::optional<GenreSuggestion>;

namespace {

ScannedTrack tagged(const QString &artist, const QString &genre)
{
    return onDisk(artist, u"x"_s).genre(genre);
}

Suggestion suggestion(const std::vector<ScannedTrack> &tracks, const QString &artist)
{
    return GenreIndex(tracks).suggestionFor(onDisk(artist, u"y"_s));
}

/// The rule word by word: one walk of the whole library for one track.
Suggestion slowSuggestion(const std::vector<ScannedTrack> &tracks, const ScannedTrack &wanted)
{
    const QString artist = lowerCased(wanted.track.displayArtist());
    if (artist.isEmpty())
        return std::nullopt;
    std::map<QString, int> counts;
    QStringList order;
    int total = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.track.hasGenre() || lowerCased(scanned.track.displayArtist()) != artist)
            continue;
        if (++counts[scanned.track.genre] == 1)
            order << scanned.track.genre;
        ++total;
    }
    if (total == 0)
        return std::nullopt;
    const QString winner =
        *std::max_element(order.begin(), order.end(),
                          [&](const auto &a, const auto &b) { return counts[a] < counts[b]; });
    return GenreSuggestion{winner, int(double(counts[winner]) / total * 100)};
}

} // namespace

class GenreSuggestionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoOfThreeIsCutOffTo66()
    {
        QCOMPARE(suggestion({tagged(u"A"_s, u"Soul"_s), tagged(u"A"_s, u"House"_s),
                             tagged(u"A"_s, u"House"_s)},
                            u"A"_s),
                 Suggestion({u"House"_s, 66}));
    }

    void twentyNineOfFiftyIsCutOffTo57()
    {
        std::vector<ScannedTrack> tracks;
        for (int i = 0; i < 50; ++i)
            tracks.push_back(tagged(u"A"_s, i < 29 ? u"House"_s : u"Soul"_s));
        QCOMPARE(suggestion(tracks, u"A"_s), Suggestion({u"House"_s, 57}));
    }

    void theTrackItselfCounts()
    {
        const ScannedTrack only = tagged(u"A"_s, u"House"_s);
        QCOMPARE(GenreIndex({only}).suggestionFor(only), Suggestion({u"House"_s, 100}));
    }

    void tracksThatAreLostCount()
    {
        QCOMPARE(suggestion({lost(u"A"_s).genre(u"House"_s)}, u"A"_s),
                 Suggestion({u"House"_s, 100}));
    }

    void theArtistInOtherCaseIsTheSame()
    {
        QCOMPARE(suggestion({tagged(u"ÉTIENNE"_s, u"House"_s)}, u"étienne"_s),
                 Suggestion({u"House"_s, 100}));
    }

    void theArtistMayStandInTheTitle()
    {
        const GenreIndex index({onDisk(u""_s, u"A - x"_s).genre(u"House"_s)});
        QCOMPARE(index.suggestionFor(onDisk(u""_s, u"a - y"_s)), Suggestion({u"House"_s, 100}));
    }

    void anotherSpellingIsAnotherGenre()
    {
        QCOMPARE(suggestion({tagged(u"A"_s, u"house"_s), tagged(u"A"_s, u"House"_s),
                             tagged(u"A"_s, u"House"_s), tagged(u"A"_s, u"House "_s)},
                            u"A"_s),
                 Suggestion({u"House"_s, 50}));
    }

    void ofEqualCountsTheFirstMetWins()
    {
        QCOMPARE(suggestion({tagged(u"A"_s, u"Soul"_s), tagged(u"A"_s, u"House"_s),
                             tagged(u"A"_s, u"House"_s), tagged(u"A"_s, u"Soul"_s)},
                            u"A"_s),
                 Suggestion({u"Soul"_s, 50}));
    }

    void noSuggestion_data()
    {
        QTest::addColumn<QString>("artist");
        QTest::newRow("no artist") << u""_s;
        QTest::newRow("unknown artist") << u"C"_s;
        QTest::newRow("the artist with a blank: not trimmed") << u"A "_s;
        QTest::newRow("artist with blank genres alone") << u"B"_s;
    }

    void noSuggestion()
    {
        QFETCH(QString, artist);
        QCOMPARE(suggestion({tagged(u"A"_s, u"House"_s), tagged(u"B"_s, u" \t"_s),
                             tagged(u""_s, u"House"_s)},
                            artist),
                 Suggestion());
    }

    void anEmptyLibrarySuggestsNothing() { QCOMPARE(suggestion({}, u"A"_s), Suggestion()); }

    void agreesWithTheRuleWordByWord()
    {
        int suggested = 0;
        for (unsigned seed = 0; seed < 10; ++seed) {
            const std::vector<ScannedTrack> tracks = RandomLibrary(seed).tracks(300);
            const GenreIndex index(tracks);
            for (const ScannedTrack &scanned : tracks) {
                const Suggestion expected = slowSuggestion(tracks, scanned);
                QCOMPARE(index.suggestionFor(scanned), expected);
                suggested += expected.has_value();
            }
        }
        QVERIFY(suggested > 1'000);
    }
};

QTEST_APPLESS_MAIN(GenreSuggestionsTest)
#include "genre_suggestions_test.moc"
