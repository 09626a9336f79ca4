#pragma once

#include "foundation/result.h"
#include "safety/snapshot.h"
#include "serato/serato_library.h"

#include <QList>

/// Plain copies of what this program can change in a library, taken ahead of a change.
///
/// 1. The folders on disk are the only record of which snapshots exist; nothing is kept in memory.
/// 2. A snapshot exists from the moment at which its "meta.json" is complete, and that is written
///    last. What has none is invisible and stays on disk. Nothing of it is flushed, since that
///    would take longer than the change itself: if the power goes within seconds, a snapshot can be
///    listed whose files lack bytes. Going back to one takes a snapshot first, so that it too is
///    undone.
/// 3. A snapshot that can't be completed leaves no folder behind, and never touches one that was
///    there before. Where a folder is removed, its "meta.json" goes first.
/// 4. Going back takes a snapshot first, but goes on without one where none can be made: a broken
///    library is what people go back from.
/// 5. Going back puts each item in place in one step, old or new. It stops at the first that fails
///    and undoes nothing: the items ahead of it are the snapshot's, those behind it are as they
///    were.
///
/// Snapshots are kept without limit. Nothing here is logged, and nothing here looks at the path
/// that a snapshot was taken from: one library's snapshot can be put over another.
///
/// All calls block until they are done, on any thread.
namespace tarnwick::SnapshotStore {

/// Copies the library's items. Serato may be running: a snapshot only reads. Fails with "No Serato
/// database found at that location." or "Snapshot failed: {cause}".
Result<Snapshot> create(const SeratoLibrary::Location &location, const QString &reason);

/// All that can be read, newest first; of one date in the order of their folders' names.
QList<Snapshot> list();

/// Puts the snapshot's items over those of the library; what the snapshot doesn't have stays. Fails
/// while Serato runs, ahead of anything else, and with the file system's words.
Done restore(const Snapshot &snapshot, const SeratoLibrary::Location &location);

/// Removes its folder, as far as it can; one whose record can't be removed stays whole.
void remove(const Snapshot &snapshot);

/// Bytes of all snapshots, as their records state them.
quint64 totalBytes();

} // namespace tarnwick::SnapshotStore
