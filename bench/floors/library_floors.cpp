#include "floors/library_floors.h"

#include "floors/flat_table.h"

#include <algorithm>

namespace tarnwick::bench {

namespace {

using namespace std::string_view_literals;

constexpr std::u16string_view cutWords[] = {
    u"radio"sv, u"extended"sv, u"instrumental"sv, u"acapella"sv, u"acappella"sv,    u"intro"sv,
    u"clean"sv, u"dirty"sv,    u"remix"sv,        u"edit"sv,     u"original mix"sv, u"club"sv,
    u"dub"sv,   u"remaster"sv, u"live"sv,         u"vip"sv};

/// The words that begin with each small letter.
struct WordsByLetter
{
    std::vector<int> words[26];

    WordsByLetter()
    {
        for (int word = 0; word < int(std::size(cutWords)); ++word)
            words[cutWords[word].front() - u'a'].push_back(word);
    }
};

int lastCutWord(std::u16string_view title)
{
    static const WordsByLetter byLetter;
    int last = -1;
    for (size_t at = 0; at < title.size(); ++at) {
        if (title[at] < u'a' || title[at] > u'z')
            continue;
        for (const int word : byLetter.words[title[at] - u'a']) {
            if (word > last && title.substr(at).starts_with(cutWords[word]))
                last = word;
        }
    }
    return last;
}

size_t baseLength(std::u16string_view title)
{
    size_t end = std::min(title.find_first_of(u"([-"), title.size());
    while (end > 0 && title[end - 1] == u' ')
        --end;
    return end;
}

} // namespace

int flatGrouping(const std::vector<ScannedTrack> &tracks)
{
    FlatTable keys(tracks.size());
    int onDisk = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        appendFolded(keys.text(), scanned.track.artist);
        keys.text().push_back(u'|');
        appendFolded(keys.text(), scanned.track.title);
        keys.number();
        ++onDisk;
    }
    return onDisk - keys.count();
}

int versionGrouping(const std::vector<ScannedTrack> &tracks)
{
    FlatTable keys(tracks.size());
    int onDisk = 0;
    int cuts = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        std::u16string &text = keys.text();
        appendFolded(text, scanned.track.artist);
        text.push_back(u'|');
        const size_t start = text.size();
        appendFolded(text, scanned.track.title);
        const std::u16string_view title = std::u16string_view(text).substr(start);
        cuts += lastCutWord(title);
        text.resize(start + baseLength(title));
        keys.number();
        ++onDisk;
    }
    return onDisk - keys.count() + cuts;
}

qint64 genreSuggestions(const std::vector<ScannedTrack> &tracks)
{
    FlatTable artists(tracks.size());
    FlatTable pairs(tracks.size()); // artist number, genre
    std::vector<int> artistOfTrack;
    std::vector<int> counts;
    std::vector<int> best;
    artistOfTrack.reserve(tracks.size());
    for (const ScannedTrack &scanned : tracks) {
        appendFolded(artists.text(), scanned.track.artist);
        const int artist = artists.number();
        artistOfTrack.push_back(artist);
        best.resize(size_t(artists.count()), -1);
        if (scanned.track.genre.isEmpty())
            continue;
        pairs.text().push_back(char16_t(artist >> 16));
        pairs.text().push_back(char16_t(artist));
        pairs.text().append(QStringView(scanned.track.genre).utf16(),
                            size_t(scanned.track.genre.size()));
        const int pair = pairs.number();
        counts.resize(size_t(pairs.count()));
        int &winner = best[size_t(artist)];
        if (++counts[size_t(pair)] > (winner < 0 ? 0 : counts[size_t(winner)]))
            winner = pair;
    }
    qint64 sum = 0;
    for (const int artist : artistOfTrack)
        sum += best[size_t(artist)];
    return sum;
}

} // namespace tarnwick::bench
