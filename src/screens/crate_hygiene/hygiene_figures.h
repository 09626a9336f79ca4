#pragma once

#include "analysis/crate_hygiene.h"

/// What is said of crates and genres that could be tidied.
namespace tarnwick::HygieneFigures {

QString percent(const CrateHygiene::Overlap &overlap);
/// Both crates.
QString crates(const CrateHygiene::Overlap &overlap);
/// How much they share, of how much each.
QString shared(const CrateHygiene::Overlap &overlap);

QString orphansTitle(int orphanCount);
/// What the button says that files them.
QString fileTitle(int orphanCount);
/// In ascending order.
QStringList orphanPaths(const CrateHygiene &hygiene);

/// All spellings of a genre.
QString spellings(const CrateHygiene::GenreVariant &variant);
/// How many tracks get which spelling.
QString plan(const CrateHygiene::GenreVariant &variant);
/// What the button says that does it.
QString unifyTitle(const CrateHygiene::GenreVariant &variant);

} // namespace tarnwick::HygieneFigures
