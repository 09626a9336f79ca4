#pragma once

#include "foundation/result.h"
#include "serato/serato_library.h"

#include <QStringList>
#include <QUrl>

/// Adds tracks to crates. Keeps no state.
namespace tarnwick::CrateWriter {

/// The file of the crate of this name, whether or not it is there.
QUrl crateUrl(const QString &name, const SeratoLibrary::Location &location);

/// Adds the paths that the crate lacks, each without one leading slash, behind its entries, and
/// makes the crate and its folder where they are missing. Returns how many were added. The entries
/// that were there keep their form, so one stored with a leading slash doesn't count as the same.
///
/// The file is always rebuilt from its entries' paths: all else that it held is dropped, and so are
/// the entries of a crate that can't be read. It is the old file or the new one at every moment.
Result<int> addTracks(const QStringList &paths, const QString &name,
                      const SeratoLibrary::Location &location);

} // namespace tarnwick::CrateWriter
