#pragma once

#include "analysis/scan_result.h"
#include "analysis/text_numbering.h"

#include <QStringList>

#include <optional>

namespace tarnwick {

/// The genre that an artist's tracks mostly carry.
struct GenreSuggestion
{
    QString genre;      ///< in the spelling that occurs most
    int confidence = 0; ///< whole per cent of the artist's tagged tracks, 0 to 100, cut off

    /// From this confidence on, in per cent, a suggestion is taken without being looked at.
    static constexpr int sureConfidence = 95;
    bool isSure() const { return confidence >= sureConfidence; }

    bool operator==(const GenreSuggestion &) const = default;
};

/// What each artist's genres suggest, counted once for a whole library; on disk or not, every track
/// with a genre counts. Another spelling is another genre.
class GenreIndex
{
public:
    explicit GenreIndex(const std::vector<ScannedTrack> &tracks);

    /// What the artist of `scanned` suggests; letter case doesn't matter. Nothing without an artist
    /// or a tagged track of theirs. The track itself counts where it is of the library.
    std::optional<GenreSuggestion> suggestionFor(const ScannedTrack &scanned) const;

private:
    struct Winner
    {
        int genre;
        int confidence;
    };

    TextNumbering m_artists;
    QStringList m_genres;          ///< each spelling once
    std::vector<Winner> m_winners; ///< one for each of m_artists
};

} // namespace tarnwick
