#include "screens/health/health_figures.h"

#include "foundation/byte_format.h"
#include "foundation/numbers.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::HealthFigures {

namespace {

struct Band
{
    QString label;
    double from; ///< beats a minute, inclusive
    double below;
};

const QList<Band> &bands()
{
    static const QList<Band> all = {
        {u"< 90"_s, 0, 90},       {u"90–105"_s, 90, 105},   {u"105–120"_s, 105, 120},
        {u"120–130"_s, 120, 130}, {u"130–145"_s, 130, 145}, {u"145+"_s, 145, 999},
    };
    return all;
}

/// "{verb} {n} {noun}{rest}" where there is at least one.
void addStep(QList<Step> &steps, int count, const QString &title, const QString &detail,
             Screen jump)
{
    if (count >= 1)
        steps.append({title.arg(count), detail, jump});
}

QString nounFor(int count, const QString &one, const QString &several)
{
    return count == 1 ? one : several;
}

} // namespace

QList<Step> steps(const Derived &derived)
{
    const int untagged = derived.total - derived.withGenre;
    const int unkeyed = derived.total - derived.withKey;
    QList<Step> steps;
    addStep(steps, derived.missing,
            u"Relink %1 missing "_s + nounFor(derived.missing, u"file"_s, u"files"_s),
            u"Serato can't find these on disk. Relinking keeps their cues and grids."_s,
            Screen::Missing);
    addStep(steps, derived.duplicateExcess,
            u"Clear %1 duplicate "_s + nounFor(derived.duplicateExcess, u"copy"_s, u"copies"_s),
            u"Reclaims %1. The best copy is kept, the rest held for 30 days."_s.arg(
                ByteFmt::string(derived.reclaimableBytes)),
            Screen::Duplicates);
    addStep(steps, untagged,
            u"Tag %1 "_s + nounFor(untagged, u"track"_s, u"tracks"_s) + u" with no genre"_s,
            u"Fingerprint unnamed files to fill artist, title, label and genre."_s,
            Screen::TrackId);
    // There is no screen for keys.
    addStep(steps, unkeyed,
            u"Analyse %1 "_s + nounFor(unkeyed, u"track"_s, u"tracks"_s) + u" with no key"_s,
            u"Keys carry across to Engine DJ and rekordbox on export."_s, Screen::Loudness);
    return steps;
}

QList<Bar> topGenres(const Derived &derived)
{
    constexpr qsizetype mostBars = 6;
    QList<Bar> bars;
    QHash<QString, qsizetype> places;
    for (const ScannedTrack &scanned : derived.result().tracks) {
        const QString &genre = scanned.track.genre;
        if (!scanned.track.hasGenre())
            continue;
        const auto place = places.constFind(genre);
        if (place != places.constEnd()) {
            ++bars[*place].count;
        } else {
            places.insert(genre, bars.size());
            bars.append({genre, 1});
        }
    }
    std::stable_sort(bars.begin(), bars.end(),
                     [](const Bar &one, const Bar &other) { return one.count > other.count; });
    return bars.first(std::min(mostBars, bars.size()));
}

QList<Bar> bpmBands(const Derived &derived)
{
    QList<Bar> bars;
    for (const Band &band : bands())
        bars.append({band.label, 0});
    for (const ScannedTrack &scanned : derived.result().tracks) {
        const double tempo = parseTempo(scanned.track.bpm).value_or(0);
        for (qsizetype i = 0; i < bars.size(); ++i) {
            if (tempo > 0 && tempo >= bands()[i].from && tempo < bands()[i].below)
                ++bars[i].count;
        }
    }
    return bars;
}

} // namespace tarnwick::HealthFigures
