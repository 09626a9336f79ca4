#include "expectations.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

bool isBlank(const QString &text)
{
    return std::ranges::all_of(text, [](QChar unit) {
        return unit == u'\t' || unit.category() == QChar::Separator_Space;
    });
}

/// Artist and title as they are shown: a title "A - B" without an artist stands for both.
struct Names
{
    QString artist;
    QString title;
};

Names shownNames(const QString &artist, const QString &title)
{
    const qsizetype at = title.indexOf(u" - "_s);
    if (!artist.isEmpty() || at < 0) {
        return {artist, title};
    }
    return {title.left(at), title.sliced(at + 3)};
}

bool hasReplayGainText(const TagPlan &tag)
{
    return tag.replayGain == ReplayGain::UpperCase || tag.replayGain == ReplayGain::LowerCase;
}

void countFile(Expectations &counts, const TrackPlan &track)
{
    counts.onDisk += track.existsOnDisk();
    counts.missing += track.isMissing();
    counts.onDiskBytes += track.existsOnDisk() ? track.fileBytes : 0;
    if (track.tagReadable()) {
        ++counts.tagsReadable;
        counts.withMarkers += track.tag.markers2;
        counts.withGrid += track.tag.beatGrid;
        counts.withGain += track.tag.autotags || hasReplayGainText(track.tag);
    }
}

void countNames(Expectations &counts, const TrackPlan &track)
{
    counts.withArtist += !isBlank(shownNames(track.artist, track.title).artist);
    counts.withGenre += !isBlank(track.genre);
    counts.withKey += !isBlank(track.key);
    counts.withBpm += !isBlank(track.bpm) && track.bpm != u"0"_s;
}

/// Sorts like the tracks themselves: the better a copy, the smaller.
auto rank(const TrackPlan &track)
{
    const TagPlan &tag = track.tag;
    const int readable = track.tagReadable();
    const int tags = readable * (tag.beatGrid + tag.markers2);
    return std::tuple(-track.kbps, -tags, -static_cast<qint64>(track.fileBytes));
}

ExpectedGroup group(const QString &key, QList<const TrackPlan *> copies)
{
    std::ranges::stable_sort(copies, {}, [](const TrackPlan *copy) { return rank(*copy); });
    ExpectedGroup result{key, {}, 0};
    for (const TrackPlan *copy : std::as_const(copies)) {
        result.reclaimableBytes += result.members.isEmpty() ? 0 : copy->fileBytes;
        result.members.append(copy->path);
    }
    return result;
}

void groupCopies(Expectations &counts, const QList<TrackPlan> &tracks)
{
    QHash<QString, QList<const TrackPlan *>> copies;
    QStringList keys; // in library order
    for (const TrackPlan &track : tracks) {
        const Names names = shownNames(track.artist, track.title);
        const QString title = names.title.toLower().trimmed();
        if (!track.existsOnDisk() || title.isEmpty()) {
            continue;
        }
        const QString key = names.artist.toLower().trimmed() + u'|' + title;
        auto &list = copies[key];
        if (list.isEmpty()) {
            keys.append(key);
        }
        list.append(&track);
    }
    for (const QString &key : std::as_const(keys)) {
        if (copies[key].size() > 1) {
            counts.groups.append(group(key, copies[key]));
            counts.duplicateExcess += static_cast<int>(copies[key].size()) - 1;
            counts.reclaimableBytes += counts.groups.last().reclaimableBytes;
        }
    }
    std::ranges::stable_sort(counts.groups, std::greater(), &ExpectedGroup::reclaimableBytes);
}

int percent(int part, int whole)
{
    return whole == 0 ? 100 : static_cast<int>(std::round(double(part) / double(whole) * 100));
}

void score(Expectations &counts)
{
    const int total = counts.total;
    counts.dimensions = {
        percent(counts.onDisk, total),
        percent(counts.withGrid, counts.tagsReadable),
        percent(total - counts.duplicateExcess, total),
        percent(counts.withArtist + counts.withGenre, 2 * total),
        percent(counts.withGain, counts.tagsReadable),
        percent(counts.withBpm + counts.withKey, 2 * total),
    };
    int sum = 0;
    for (const int dimension : counts.dimensions) {
        sum += dimension;
    }
    counts.score = static_cast<int>(std::round(sum / 6.0));
}

int countOrphans(const LibraryPlan &plan)
{
    QSet<QString> filed;
    for (const CratePlan &crate : plan.crates) {
        filed.unite(QSet<QString>(crate.paths.begin(), crate.paths.end()));
    }
    return static_cast<int>(std::ranges::count_if(plan.tracks, [&filed](const TrackPlan &track) {
        return track.existsOnDisk() && !filed.contains(track.path);
    }));
}

/// Plays without a title are of no use to anyone and don't count.
int countPlays(const LibraryPlan &plan)
{
    int plays = 0;
    for (const SessionPlan &session : plan.sessions) {
        for (const PlayPlan &play : session.plays) {
            plays += !shownNames(play.artist, play.title).title.isEmpty();
        }
    }
    return plays;
}

} // namespace

Expectations expectationsOf(const LibraryPlan &plan)
{
    Expectations counts;
    counts.total = static_cast<int>(plan.tracks.size());
    for (const TrackPlan &track : plan.tracks) {
        countFile(counts, track);
        countNames(counts, track);
    }
    groupCopies(counts, plan.tracks);
    score(counts);
    counts.orphans = countOrphans(plan);
    counts.plays = countPlays(plan);
    return counts;
}

} // namespace tarnwick::demo
