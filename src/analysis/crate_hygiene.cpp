#include "analysis/crate_hygiene.h"

#include "analysis/crate_paths.h"
#include "analysis/key_groups.h"
#include "foundation/numbers.h"
#include "foundation/text.h"

#include <algorithm>

namespace tarnwick {

namespace {

/// The share of the smaller crate from which two crates count as nearly the same, in per cent.
constexpr int leastPercent = 60;

/// Of the entries of the smaller crate. These counts hold repeated entries, so a crate that repeats
/// itself overlaps the less.
int percentOf(const CratePaths::Shared &pair, const QList<LoadedCrate> &crates)
{
    const int smaller = std::min(crates[pair.a].count(), crates[pair.b].count());
    return int(exactPercent(pair.count, smaller));
}

std::vector<CrateHygiene::Overlap> overlapsOf(const QList<LoadedCrate> &crates,
                                              const CratePaths &paths)
{
    struct Near
    {
        CratePaths::Shared pair;
        int percent;
    };
    std::vector<Near> found; // sorted ahead of the copies of crates, which are dear to move
    for (const CratePaths::Shared &pair : paths.sharedByPair()) {
        if (const int percent = percentOf(pair, crates); percent >= leastPercent)
            found.push_back({pair, percent});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Near &a, const Near &b) { return a.percent > b.percent; });
    std::vector<CrateHygiene::Overlap> overlaps;
    overlaps.reserve(found.size());
    for (const auto &[pair, percent] : found)
        overlaps.push_back({freshIdentity(), crates[pair.a], crates[pair.b], pair.count, percent});
    return overlaps;
}

QSet<QString> orphansOf(const std::vector<ScannedTrack> &tracks, const CratePaths &paths)
{
    QSet<QString> orphans;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        QStringView path = scanned.track.relativePath;
        if (path.startsWith(u'/'))
            path = path.sliced(1);
        if (!paths.contains(path))
            orphans.insert(path.toString());
    }
    return orphans;
}

/// Every spelling of a genre with the number of tracks that carry it, in the order met.
class Spellings
{
public:
    explicit Spellings(const std::vector<ScannedTrack> &tracks)
    {
        for (const ScannedTrack &scanned : tracks) {
            if (!scanned.track.hasGenre())
                continue;
            const size_t number = size_t(m_texts.numberOf(scanned.track.genre));
            m_counts.resize(size_t(m_texts.count()));
            ++m_counts[number];
        }
    }

    int count() const { return m_texts.count(); }
    QString text(int number) const { return m_texts.text(number).toString(); }
    int tracksOf(int number) const { return m_counts[size_t(number)]; }

private:
    TextNumbering m_texts;
    std::vector<int> m_counts;
};

CrateHygiene::GenreVariant makeVariant(const Spellings &spellings, std::span<const int> numbers)
{
    const auto carriedLess = [&](int a, int b) {
        return spellings.tracksOf(a) < spellings.tracksOf(b);
    };
    CrateHygiene::GenreVariant variant{.id = freshIdentity(), .canon = {}, .variants = {}};
    variant.canon = spellings.text(*std::max_element(numbers.begin(), numbers.end(), carriedLess));
    for (const int number : numbers) {
        variant.variants << spellings.text(number);
        variant.trackCount += spellings.tracksOf(number);
    }
    std::sort(variant.variants.begin(), variant.variants.end());
    return variant;
}

std::vector<CrateHygiene::GenreVariant> variantsOf(const std::vector<ScannedTrack> &tracks)
{
    const Spellings spellings(tracks);
    KeyGroups sameGenre;
    for (int number = 0; number < spellings.count(); ++number)
        sameGenre.add(trimmedBlanks(lowerCased(spellings.text(number))), number);
    std::vector<CrateHygiene::GenreVariant> variants;
    for (const KeyGroups::Group &group : sameGenre.groups())
        variants.push_back(makeVariant(spellings, group.entries));
    std::stable_sort(variants.begin(), variants.end(),
                     [](const auto &a, const auto &b) { return a.trackCount > b.trackCount; });
    return variants;
}

} // namespace

CrateHygiene::CrateHygiene(const QList<LoadedCrate> &crates,
                           const std::vector<ScannedTrack> &tracks)
{
    const CratePaths paths(crates);
    overlaps = overlapsOf(crates, paths);
    orphanPaths = orphansOf(tracks, paths);
    orphanCount = int(orphanPaths.size());
    genreVariants = variantsOf(tracks);
}

} // namespace tarnwick
