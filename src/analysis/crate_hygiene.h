#pragma once

#include "analysis/scan_result.h"
#include "serato/loaded_crate.h"

#include <QList>
#include <QSet>

namespace tarnwick {

/// What could be tidied about crates and genres: crates that are nearly the same, tracks in no
/// crate, genres spelled in more than one way. Reads no files and changes nothing.
struct CrateHygiene
{
    /// Two crates of which the smaller lies mostly in the other.
    struct Overlap
    {
        QUuid id;      ///< fresh at each computation
        LoadedCrate a; ///< the earlier of the two
        LoadedCrate b;
        int shared = 0;  ///< distinct paths that both hold
        int percent = 0; ///< of the entries of the smaller crate, whole per cent, cut off
    };

    /// A genre that is spelled in several ways, which differ by letter case and blanks around.
    struct GenreVariant
    {
        QUuid id;             ///< fresh at each computation
        QString canon;        ///< the most frequent spelling
        QStringList variants; ///< all spellings, the canon among them, in ascending order
        int trackCount = 0;   ///< of all spellings
    };

    CrateHygiene() = default;
    CrateHygiene(const QList<LoadedCrate> &crates, const std::vector<ScannedTrack> &tracks);

    std::vector<Overlap> overlaps; ///< highest percent first, else in the order of the crates
    QSet<QString> orphanPaths;     ///< of tracks on disk that no crate lists; no leading slash
    int orphanCount = 0;
    std::vector<GenreVariant> genreVariants; ///< most tracks first, else in the order met
};

} // namespace tarnwick
