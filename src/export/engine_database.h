#pragma once

#include "export/engine_error.h"
#include "export/sqlite_handles.h"
#include "export/utf8_text.h"
#include "serato/serato_track.h"

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
    EngineResult<void> addInformation();
    EngineResult<void> prepareTracks();
    EngineResult<void> exec(const char *sql);
    void bindPath(const QString &path);
    void bindText(int parameter, QStringView text);
    void bindUtf8(int parameter, const char *text);
    EngineError lastError() const;

    SqliteConnection m_connection;
    SqliteStatement m_trackInsert;
    Utf8Text m_text; ///< the latest text bound or run, with a NUL behind it
};

} // namespace tarnwick::EngineExporter
