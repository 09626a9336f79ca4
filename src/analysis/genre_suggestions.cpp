#include "analysis/genre_suggestions.h"

#include "analysis/folded_text.h"
#include "foundation/numbers.h"

#include <span>

namespace tarnwick {

namespace {

/// The genres of the tagged tracks, gathered by artist.
class GenresByArtist
{
public:
    void add(int artist, int genre)
    {
        if (size_t(artist) + 1 >= m_ends.size())
            m_ends.resize(size_t(artist) + 2);
        ++m_ends[size_t(artist) + 1];
        m_entries.push_back({artist, genre});
    }

    /// Brings the entries of each artist together; they stay in the order added.
    void gather()
    {
        for (size_t artist = 1; artist < m_ends.size(); ++artist)
            m_ends[artist] += m_ends[artist - 1];
        std::vector<int> next = m_ends;
        m_genres.resize(m_entries.size());
        for (const Entry &entry : m_entries)
            m_genres[size_t(next[size_t(entry.artist)]++)] = entry.genre;
    }

    std::span<const int> of(int artist) const
    {
        const int start = m_ends[size_t(artist)];
        return {m_genres.data() + start, size_t(m_ends[size_t(artist) + 1] - start)};
    }

private:
    struct Entry
    {
        int artist;
        int genre;
    };

    std::vector<Entry> m_entries;
    std::vector<int> m_ends; ///< where the entries of the artist before end
    std::vector<int> m_genres;
};

/// The most frequent of `genres`, the first met of equal ones. `counts` is all zero, before and
/// after.
int mostFrequent(std::span<const int> genres, std::vector<int> &counts)
{
    for (const int genre : genres)
        ++counts[size_t(genre)];
    int winner = genres.front();
    for (const int genre : genres) {
        if (counts[size_t(genre)] > counts[size_t(winner)])
            winner = genre;
    }
    return winner;
}

} // namespace

GenreIndex::GenreIndex(const std::vector<ScannedTrack> &tracks)
    : m_artists(tracks.size() / 2)
{
    TextNumbering spellings;
    GenresByArtist genresByArtist;
    std::u16string artist;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.track.hasGenre())
            continue;
        artist.clear();
        appendLowerCased(artist, scanned.track.displayArtist());
        const int genre = spellings.numberOf(scanned.track.genre);
        if (genre == m_genres.size())
            m_genres.append(scanned.track.genre);
        genresByArtist.add(m_artists.numberOf(artist), genre);
    }
    genresByArtist.gather();
    std::vector<int> counts(size_t(spellings.count()));
    m_winners.reserve(size_t(m_artists.count()));
    for (int number = 0; number < m_artists.count(); ++number) {
        const std::span<const int> genres = genresByArtist.of(number);
        const int winner = mostFrequent(genres, counts);
        m_winners.push_back(
            {winner, int(exactPercent(counts[size_t(winner)], qint64(genres.size())))});
        for (const int genre : genres)
            counts[size_t(genre)] = 0;
    }
}

std::optional<GenreSuggestion> GenreIndex::suggestionFor(const ScannedTrack &scanned) const
{
    std::u16string artist;
    appendLowerCased(artist, scanned.track.displayArtist());
    const int number = artist.empty() ? -1 : m_artists.find(artist);
    if (number < 0)
        return std::nullopt;
    const Winner &winner = m_winners[size_t(number)];
    return GenreSuggestion{m_genres.at(winner.genre), winner.confidence};
}

} // namespace tarnwick
