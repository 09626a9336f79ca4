#include "analysis/dimensions.h"

#include "foundation/byte_format.h"
#include "foundation/numbers.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

using Kind = Dimension::Kind;

QString choose(int count, const QString &ofOne, const QString &ofMany)
{
    return count == 1 ? ofOne : ofMany;
}

/// What is on disk alone decides; a flagged file that is there shows in the detail only.
Dimension filesLinks(const LibraryCounts &counts)
{
    const QString detail =
        counts.missing == 0
            ? u"Every file is where Serato expects it"_s
            : u"%1 %2 can't be found"_s.arg(QString::number(counts.missing),
                                            choose(counts.missing, u"file"_s, u"files"_s));
    return {Kind::FilesLinks, percent(counts.onDisk, counts.total), detail, u"Missing files"_s};
}

/// The beat grid alone decides: markers enter no score.
Dimension cuesGrids(const LibraryCounts &counts)
{
    const QString detail = u"%1 of %2 analysed files carry a beat grid"_s.arg(counts.withGrid)
                               .arg(counts.tagsReadable);
    return {Kind::CuesGrids, percent(counts.withGrid, counts.tagsReadable), detail,
            u"Cues & grids"_s};
}

Dimension duplicates(const LibraryCounts &counts)
{
    const int excess = counts.duplicateExcess;
    const QString detail =
        excess == 0
            ? u"No obvious duplicate copies"_s
            : u"%1 redundant %2 · %3 reclaimable"_s.arg(QString::number(excess),
                                                        choose(excess, u"copy"_s, u"copies"_s),
                                                        ByteFmt::string(counts.reclaimableBytes));
    return {Kind::Duplicates, percent(counts.total - excess, counts.total), detail,
            u"Duplicates"_s};
}

Dimension tagsGenres(const LibraryCounts &counts)
{
    const int without = counts.total - counts.withGenre;
    const QString detail = u"%1 %2 no genre"_s.arg(
        QString::number(without), choose(without, u"track has"_s, u"tracks have"_s));
    return {Kind::TagsGenres,
            percent(qint64(counts.withArtist) + counts.withGenre, 2 * qint64(counts.total)), detail,
            u"Track ID"_s};
}

Dimension levels(const LibraryCounts &counts)
{
    const QString detail = u"%1 of %2 analysed files have a loudness tag"_s.arg(counts.withGain)
                               .arg(counts.tagsReadable);
    return {Kind::Levels, percent(counts.withGain, counts.tagsReadable), detail, u"Loudness"_s};
}

Dimension exportParity(const LibraryCounts &counts)
{
    const QString detail =
        u"%1 keyed · %2 with BPM — carries to Engine / rekordbox"_s.arg(counts.withKey)
            .arg(counts.withBpm);
    const qint64 carried = qint64(std::min(counts.withBpm, counts.total)) + counts.withKey;
    return {Kind::ExportParity, percent(carried, 2 * qint64(counts.total)), detail,
            u"USB & export"_s};
}

struct Grade
{
    int from;
    const char16_t *text;
};

constexpr Grade grades[] = {
    {90, u"This library is gig-ready."},      {75, u"Solid. A few fixes from spotless."},
    {55, u"Playable, but it needs a clean."}, {35, u"Rough. Let's fix the big things first."},
    {0, u"Needs work before the next set."},
};

} // namespace

QString Dimension::rawValue(Kind kind)
{
    static const QString texts[] = {u"Files & links"_s, u"Cues & grids"_s, u"Duplicates"_s,
                                    u"Tags & genres"_s, u"Levels"_s,       u"Export parity"_s};
    return texts[size_t(kind)];
}

/// Where there is nothing to look at, a share of nothing counts as all of it: 100.
QList<Dimension> dimensionsOf(const LibraryCounts &counts)
{
    return {filesLinks(counts), cuesGrids(counts), duplicates(counts),
            tagsGenres(counts), levels(counts),    exportParity(counts)};
}

int overallScore(const QList<Dimension> &dimensions)
{
    int sum = 0;
    for (const Dimension &dimension : dimensions)
        sum += dimension.score;
    return int(std::round(double(sum) / double(dimensions.size())));
}

QString gradeOf(int score)
{
    const auto reached = [score](const Grade &grade) { return score >= grade.from; };
    const Grade *grade = std::find_if(std::begin(grades), std::end(grades) - 1, reached);
    return QString::fromUtf16(grade->text);
}

int estimatedMinutesOf(const LibraryCounts &counts)
{
    const int withoutGenre = std::max(counts.total - counts.withGenre, 0);
    const double minutes = 0.2 * withoutGenre + counts.missing + counts.duplicateExcess;
    return std::max(int(std::round(minutes)), 1);
}

} // namespace tarnwick
