#pragma once

#include "export/engine_error.h"
#include "export/sqlite_handles.h"
#include "serato/serato_track.h"

#include <QByteArray>
#include <QStringEncoder>

namespace tarnwick::EngineExporter {

/// An Engine database that is being written, from nothing, in one transaction. To be called in the
/// order: create, the tracks, endTracks, each playlist with its entries, commit. Without a commit
/// the database goes back to its bare tables when the object goes. A failure ends its use.
class EngineDatabase
{
public:
    /// Makes the tables in a file at which nothing stands yet, and begins the transaction.
    static EngineResult<EngineDatabase> create(const QString &path);

    EngineResult<void> addTrack(int id, const SeratoTrack &track);
    void endTracks() { m_trackInsert.reset(); }
    EngineResult<void> addPlaylist(int listId, const QString &title);
    /// `place` counts the entries of a list from 1.
    EngineResult<void> addEntry(int listId, int trackId, int place);
    EngineResult<void> commit() { return exec("COMMIT;"); }

private:
    explicit EngineDatabase(SqliteConnection connection)
        : m_connection(std::move(connection))
    {}

    EngineResult<void> begin();
    EngineResult<void> prepareTracks();
    EngineResult<void> exec(const QByteArray &sql);
    void bindText(int parameter, QStringView text);
    EngineError lastError() const;

    SqliteConnection m_connection;
    SqliteStatement m_trackInsert;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
    QByteArray m_text; ///< the latest text bound, in UTF-8 with a NUL behind it
};

} // namespace tarnwick::EngineExporter
