#pragma once

#include "serato/serato_document.h"
#include "serato/serato_library.h"

#include <functional>

/// The one door through which the database of a library is changed. Keeps no state.
///
/// 1. Whether Serato runs is asked at the moment of the change, whatever was known before.
/// 2. Each change reads the whole file afresh and replaces it whole. Nothing is kept in between, so
///    that what Serato or another program wrote is never overwritten by something older.
/// 3. A change that finds nothing to do writes nothing.
namespace tarnwick::RepairEngine {

/// Why a change did not come about.
struct RepairError
{
    enum class Kind { SeratoRunning, NotFound, ReadFailed, WriteFailed };

    Kind kind = Kind::NotFound;
    QString cause = {}; ///< of a failed read or write, in the system's words

    /// A sentence for the user.
    QString message() const;

    bool operator==(const RepairError &) const = default;
};

/// Changes a document in place; true if it found what it had to change.
using Edit = std::function<bool(SeratoDocument &)>;

/// Reads the database, edits it and writes it back. Blocks for as long as that takes; for the main
/// thread.
tl::expected<void, RepairError> mutate(const SeratoLibrary::Location &location, const Edit &edit);

} // namespace tarnwick::RepairEngine
