#pragma once

#include "serato/loaded_crate.h"
#include "serato/serato_library.h"

#include <QList>

/// Reads the crates of a library. Keeps no state.
namespace tarnwick::CrateStore {

/// The common form of a track's path in crates and database: one leading slash, if there is one, is
/// dropped, and nothing else changes.
QString normalize(const QString &path);

/// Every crate of the library's `Subcrates` folder, ordered by name without regard to letter case;
/// folders within it are not entered. A crate that can't be read is there with no paths; without
/// the folder there are none. Never fails.
QList<LoadedCrate> load(const SeratoLibrary::Location &location);

} // namespace tarnwick::CrateStore
