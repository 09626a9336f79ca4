#include "analysis/versions.h"

#include "analysis/folded_text.h"
#include "analysis/key_groups.h"
#include "analysis/title_cut.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

using Members = std::span<const int>; // places in the library, in its order

/// Puts artist and base into `key`; the artist is not trimmed. Gives the label of the cut, null
/// where the track can have no versions.
const QString *makeKey(const ScannedTrack &scanned, std::u16string &key)
{
    if (!scanned.existsOnDisk)
        return nullptr;
    key.clear();
    appendLowerCased(key, scanned.track.displayArtist());
    key.push_back(u'|');
    const size_t titleStart = key.size();
    appendLowerCased(key, scanned.track.displayTitle());
    const QString &cut = cutOf(QStringView(key).sliced(qsizetype(titleStart)));
    reduceToBase(key, titleStart);
    return key.size() > titleStart ? &cut : nullptr;
}

bool haveTwoTitles(const std::vector<ScannedTrack> &tracks, Members members)
{
    std::u16string first;
    appendLowerCased(first, tracks[size_t(members.front())].track.displayTitle());
    std::u16string other;
    return std::any_of(members.begin() + 1, members.end(), [&](int member) {
        other.clear();
        appendLowerCased(other, tracks[size_t(member)].track.displayTitle());
        return other != first;
    });
}

QString displayName(const SeratoTrack &first)
{
    const QString artist = first.displayArtist();
    const QString title = first.displayTitle();
    return artist.isEmpty() ? title : artist + u" — "_s + capitalised(baseAndCut(title).base);
}

VersionPlaces makePlaces(const std::vector<ScannedTrack> &tracks,
                         const std::vector<const QString *> &cuts, Members members)
{
    VersionPlaces song{.cuts = {}, .first = members.front()};
    song.cuts.reserve(members.size());
    for (const int member : members)
        song.cuts.push_back({member, cuts[size_t(member)]});
    const auto plays = [&](const VersionPlaces::Cut &cut) {
        return tracks[size_t(cut.place)].track.playCount;
    };
    std::stable_sort(song.cuts.begin(), song.cuts.end(),
                     [&](const auto &a, const auto &b) { return plays(a) > plays(b); });
    return song;
}

} // namespace

std::vector<VersionPlaces> versionPlacesOf(const std::vector<ScannedTrack> &tracks)
{
    KeyGroups sameBase(tracks.size());
    std::vector<const QString *> cuts(tracks.size());
    std::u16string key;
    for (size_t i = 0; i < tracks.size(); ++i) {
        cuts[i] = makeKey(tracks[i], key);
        if (cuts[i])
            sameBase.add(key, int(i));
    }
    std::vector<VersionPlaces> songs;
    for (const KeyGroups::Group &found : sameBase.groups()) {
        if (haveTwoTitles(tracks, found.entries))
            songs.push_back(makePlaces(tracks, cuts, found.entries));
    }
    std::stable_sort(songs.begin(), songs.end(),
                     [](const auto &a, const auto &b) { return a.cuts.size() > b.cuts.size(); });
    return songs;
}

VersionGroup versionGroupAt(const std::vector<ScannedTrack> &tracks, const VersionPlaces &song)
{
    VersionGroup group{freshIdentity(), displayName(tracks[size_t(song.first)].track), {}};
    group.members.reserve(song.cuts.size());
    for (const VersionPlaces::Cut &cut : song.cuts)
        group.members.push_back({tracks[size_t(cut.place)], *cut.label});
    return group;
}

std::vector<VersionGroup> versionGroupsOf(const std::vector<ScannedTrack> &tracks)
{
    std::vector<VersionGroup> groups;
    for (const VersionPlaces &song : versionPlacesOf(tracks))
        groups.push_back(versionGroupAt(tracks, song));
    return groups;
}

} // namespace tarnwick
