#pragma once

#include "analysis/library_counts.h"

#include <QList>
#include <QString>

namespace tarnwick {

/// One of the six scored sides of a library.
struct Dimension
{
    enum class Kind { FilesLinks, CuesGrids, Duplicates, TagsGenres, Levels, ExportParity };

    Kind kind = Kind::FilesLinks;
    int score = 0;     ///< 0 to 100
    QString detail;    ///< one line beside the score
    QString jumpTitle; ///< the button that leads to where it can be improved

    /// The text of a kind, shown and used as its identity.
    static QString rawValue(Kind kind);
    QString id() const { return rawValue(kind); }

    bool operator==(const Dimension &) const = default;
};

/// The six dimensions, in the order of Dimension::Kind.
QList<Dimension> dimensionsOf(const LibraryCounts &counts);

/// The mean of the dimensions' scores, all of equal weight, 0 to 100.
int overallScore(const QList<Dimension> &dimensions);

/// What an overall score amounts to, in one sentence.
QString gradeOf(int score);

/// How long a clean-up takes, in minutes; at least 1. A minute for each missing file and each
/// redundant copy, twelve seconds for each track without a genre.
int estimatedMinutesOf(const LibraryCounts &counts);

} // namespace tarnwick
