#include "floors/library_floors.h"

#include "floors/flat_table.h"

#include <algorithm>
#include <utility>

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
    std::u16string key;
    int onDisk = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        key.clear();
        appendFolded(key, scanned.track.artist);
        key.push_back(u'|');
        appendFolded(key, scanned.track.title);
        keys.number(key);
        ++onDisk;
    }
    return onDisk - keys.count();
}

int versionGrouping(const std::vector<ScannedTrack> &tracks)
{
    FlatTable keys(tracks.size());
    std::u16string key;
    int onDisk = 0;
    int cuts = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        key.clear();
        appendFolded(key, scanned.track.artist);
        key.push_back(u'|');
        const size_t start = key.size();
        appendFolded(key, scanned.track.title);
        const std::u16string_view title = std::u16string_view(key).substr(start);
        cuts += lastCutWord(title);
        keys.number(std::u16string_view(key).substr(0, start + baseLength(title)));
        ++onDisk;
    }
    return onDisk - keys.count() + cuts;
}

qint64 genreSuggestions(const std::vector<ScannedTrack> &tracks)
{
    FlatTable artists(tracks.size());
    FlatTable pairs(tracks.size()); // artist number, genre
    std::u16string key;
    std::vector<int> artistOfTrack;
    std::vector<int> counts;
    std::vector<int> best;
    artistOfTrack.reserve(tracks.size());
    for (const ScannedTrack &scanned : tracks) {
        key.clear();
        appendFolded(key, scanned.track.artist);
        const int artist = artists.number(key);
        artistOfTrack.push_back(artist);
        best.resize(size_t(artists.count()), -1);
        if (scanned.track.genre.isEmpty())
            continue;
        key = {char16_t(artist >> 16), char16_t(artist)};
        key.append(QStringView(scanned.track.genre).utf16(), size_t(scanned.track.genre.size()));
        const int pair = pairs.number(key);
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

int pairsThatShare(const QList<LoadedCrate> &crates)
{
    size_t entries = 0;
    for (const LoadedCrate &crate : crates)
        entries += size_t(crate.paths.size());
    FlatTable paths(entries);
    std::vector<int> numbers;
    numbers.reserve(entries);
    for (const LoadedCrate &crate : crates) {
        for (const QString &path : crate.paths)
            numbers.push_back(paths.number({QStringView(path).utf16(), size_t(path.size())}));
    }
    std::vector<int> newest(size_t(paths.count()), -1); // of each path, its newest entry
    std::vector<int> older(entries);                    // of each entry, the one before it
    std::vector<int> crateOf(entries);
    std::vector<int> shared(size_t(crates.size()));
    int pairs = 0;
    size_t entry = 0;
    for (int crate = 0; crate < crates.size(); ++crate) {
        std::fill(shared.begin(), shared.end(), 0);
        for (qsizetype left = crates[crate].paths.size(); left > 0; --left, ++entry) {
            older[entry] = std::exchange(newest[size_t(numbers[entry])], int(entry));
            crateOf[entry] = crate;
            for (int other = older[entry]; other >= 0; other = older[size_t(other)])
                pairs += ++shared[size_t(crateOf[size_t(other)])] == 1;
        }
    }
    return pairs;
}

} // namespace tarnwick::bench
