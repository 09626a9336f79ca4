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

VersionGroup makeGroup(const std::vector<ScannedTrack> &tracks,
                       const std::vector<const QString *> &cuts, Members members)
{
    std::vector<int> order(members.begin(), members.end());
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return tracks[size_t(a)].track.playCount > tracks[size_t(b)].track.playCount;
    });
    VersionGroup group{freshIdentity(), displayName(tracks[size_t(members.front())].track), {}};
    group.members.reserve(order.size());
    for (const int member : order)
        group.members.push_back({tracks[size_t(member)], *cuts[size_t(member)]});
    return group;
}

} // namespace

std::vector<VersionGroup> versionGroupsOf(const std::vector<ScannedTrack> &tracks)
{
    KeyGroups sameBase(tracks.size());
    std::vector<const QString *> cuts(tracks.size());
    std::u16string key;
    for (size_t i = 0; i < tracks.size(); ++i) {
        cuts[i] = makeKey(tracks[i], key);
        if (cuts[i])
            sameBase.add(key, int(i));
    }
    std::vector<VersionGroup> groups;
    for (const KeyGroups::Group &found : sameBase.groups()) {
        if (haveTwoTitles(tracks, found.entries))
            groups.push_back(makeGroup(tracks, cuts, found.entries));
    }
    std::stable_sort(groups.begin(), groups.end(), [](const auto &a, const auto &b) {
        return a.members.size() > b.members.size();
    });
    return groups;
}

} // namespace tarnwick
