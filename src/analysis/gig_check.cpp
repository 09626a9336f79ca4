#include "analysis/gig_check.h"

#include "analysis/folded_text.h"
#include "analysis/text_numbering.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// A track whose tags were not read can't be blamed for lacking something in them.
bool isProbed(const ScannedTrack &scanned)
{
    return scanned.existsOnDisk && scanned.tagsRead;
}

bool lacksGrid(const ScannedTrack &scanned)
{
    return isProbed(scanned) && !scanned.hasBeatGrid;
}

bool lacksCues(const ScannedTrack &scanned)
{
    return isProbed(scanned) && !scanned.hasMarkers;
}

bool lacksKey(const ScannedTrack &scanned)
{
    return scanned.existsOnDisk && !scanned.track.hasKey();
}

/// A bit rate of 0 is unknown, and no finding.
bool isOfLowBitrate(const ScannedTrack &scanned)
{
    if (!scanned.existsOnDisk)
        return false;
    const int bitrate = scanned.track.bitrateKbps();
    return bitrate >= 1 && bitrate <= 255;
}

bool isMissing(const ScannedTrack &scanned)
{
    return scanned.isMissing();
}

int countWhere(const std::vector<ScannedTrack> &tracks, bool (*counts)(const ScannedTrack &))
{
    return int(std::count_if(tracks.begin(), tracks.end(), counts));
}

/// How many tracks on disk are surplus: three copies of one track count 2.
int surplusCopies(const std::vector<ScannedTrack> &tracks)
{
    TextNumbering keys(tracks.size());
    std::u16string key;
    int onDisk = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        key.clear();
        appendLowerCased(key, scanned.track.displayArtist());
        key.push_back(u'|');
        appendLowerCased(key, scanned.track.displayTitle());
        keys.numberOf(key);
        ++onDisk;
    }
    return onDisk - keys.count();
}

QList<GigCheck::Check> allChecks(const std::vector<ScannedTrack> &tracks)
{
    const auto check = [](const QString &title, int count, bool blocker, Screen jump) {
        return GigCheck::Check{freshIdentity(), title, count, blocker, jump};
    };
    // The way out of a low bit rate is a better copy, which the duplicates screen offers.
    return {
        check(u"Missing files"_s, countWhere(tracks, isMissing), true, Screen::Missing),
        check(u"No beat grid"_s, countWhere(tracks, lacksGrid), true, Screen::Cues),
        check(u"No key"_s, countWhere(tracks, lacksKey), false, Screen::TrackId),
        check(u"Under 256 kbps"_s, countWhere(tracks, isOfLowBitrate), false, Screen::Duplicates),
        check(u"No hot cues"_s, countWhere(tracks, lacksCues), false, Screen::Cues),
        check(u"In-set duplicates"_s, surplusCopies(tracks), false, Screen::Duplicates),
    };
}

int sumOf(const QList<GigCheck::Check> &checks)
{
    return std::accumulate(checks.begin(), checks.end(), 0,
                           [](int sum, const GigCheck::Check &check) { return sum + check.count; });
}

} // namespace

GigCheck::GigCheck(std::vector<ScannedTrack> tracks)
    : GigCheck(std::make_shared<const std::vector<ScannedTrack>>(std::move(tracks)))
{}

GigCheck::GigCheck(std::shared_ptr<const std::vector<ScannedTrack>> tracks)
    : m_tracks(std::move(tracks))
{
    for (const Check &check : allChecks(*m_tracks)) {
        if (check.count > 0)
            (check.blocker ? blockers : polish).append(check);
    }
}

int GigCheck::blockerCount() const
{
    return sumOf(blockers);
}

int GigCheck::polishCount() const
{
    return sumOf(polish);
}

GigCheck::Verdict GigCheck::verdict() const
{
    if (blockerCount() > 0)
        return Verdict::NotYet;
    return polishCount() > 0 ? Verdict::GoodEnough : Verdict::Ready;
}

QString GigCheck::rawValue(Verdict verdict)
{
    static const QString texts[] = {u"Ready"_s, u"Good enough"_s, u"Not yet"_s};
    return texts[size_t(verdict)];
}

} // namespace tarnwick
