#pragma once

#include "foundation/json_reader.h"
#include "foundation/json_writer.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// A copy of what this program can change in a library, kept in a folder of its own. Never changed
/// once it is written.
struct Snapshot
{
    QString id;           ///< "snap-" and a stamp; the name of its folder
    QDateTime date;       ///< when the copying ended, UTC
    QString reason;       ///< shown to the user
    QString sourcePath;   ///< the library's folder at that time
    qint64 fileCount = 0; ///< files copied, folders not counted
    quint64 byteSize = 0; ///< of those files, as copied

    /// Where it lies.
    QString folderPath() const;
    /// The date as people read it.
    QString shortDate() const;

    /// One JSON object, its keys the names below; all are required.
    static bool read(JsonReader &json, Snapshot &snapshot, bool *hasWrittenForm = nullptr);
    void write(JsonWriter &json) const;

    bool operator==(const Snapshot &) const = default;
};

namespace SnapshotSet {

/// What a snapshot holds of a library's folder, in the order of copying and of restoring. The names
/// are Serato's own. Nothing else is in a snapshot: no history, and none of the audio files.
const QStringList &entries();

} // namespace SnapshotSet

} // namespace tarnwick
