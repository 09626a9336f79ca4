#include "analysis/duplicates.h"

#include "analysis/folded_text.h"
#include "analysis/key_groups.h"

#include <algorithm>

namespace tarnwick {

namespace {

/// What decides which copy is the best, worked out once for each member.
struct Copy
{
    const ScannedTrack *track;
    int bitrate;
    int tags; ///< 0 to 2: beat grid and markers

    explicit Copy(const ScannedTrack &of)
        : track(&of)
        , bitrate(of.track.bitrateKbps())
        , tags(int(of.hasBeatGrid) + int(of.hasMarkers))
    {}

    bool isBetterThan(const Copy &other) const
    {
        if (bitrate != other.bitrate)
            return bitrate > other.bitrate;
        if (tags != other.tags)
            return tags > other.tags;
        return track->onDiskSizeBytes > other.track->onDiskSizeBytes;
    }
};

/// Puts the track's key into `key`. False if the track has no title, so that it has no copies.
bool makeKey(const ScannedTrack &scanned, std::u16string &key)
{
    key.clear();
    appendLowerCasedTrimmed(key, scanned.track.displayArtist());
    key.push_back(u'|');
    const size_t titleStart = key.size();
    appendLowerCasedTrimmed(key, scanned.track.displayTitle());
    return key.size() > titleStart;
}

DuplicateGroup makeGroup(const std::vector<ScannedTrack> &tracks, QString key,
                         std::span<const int> members)
{
    std::vector<Copy> copies;
    copies.reserve(members.size());
    for (const int member : members)
        copies.emplace_back(tracks[size_t(member)]);
    std::stable_sort(copies.begin(), copies.end(),
                     [](const Copy &a, const Copy &b) { return a.isBetterThan(b); });

    DuplicateGroup group{.id = freshIdentity(), .key = std::move(key), .members = {}};
    group.members.reserve(copies.size());
    for (const Copy &copy : copies)
        group.members.push_back(*copy.track);
    for (size_t i = 1; i < copies.size(); ++i)
        group.reclaimableBytes += copies[i].track->onDiskSizeBytes;
    return group;
}

} // namespace

std::vector<DuplicateGroup> duplicateGroupsOf(const std::vector<ScannedTrack> &tracks,
                                              const QSet<QString> &ignoredKeys)
{
    KeyGroups sameKey(tracks.size());
    std::u16string key;
    for (size_t i = 0; i < tracks.size(); ++i) {
        if (tracks[i].existsOnDisk && makeKey(tracks[i], key))
            sameKey.add(key, int(i));
    }
    std::vector<DuplicateGroup> groups;
    for (const KeyGroups::Group &found : sameKey.groups()) {
        QString text = found.key.toString();
        if (!ignoredKeys.contains(text))
            groups.push_back(makeGroup(tracks, std::move(text), found.entries));
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const DuplicateGroup &a, const DuplicateGroup &b) {
                         return a.reclaimableBytes > b.reclaimableBytes;
                     });
    return groups;
}

} // namespace tarnwick
