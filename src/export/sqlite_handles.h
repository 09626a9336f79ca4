#pragma once

#include <memory>

#include <sqlite3.h>

namespace tarnwick {

struct CloseConnection
{
    void operator()(sqlite3 *connection) const { sqlite3_close(connection); }
};

struct FinalizeStatement
{
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};

/// SQLite's handles, closed with the object. A connection must outlive its statements.
using SqliteConnection = std::unique_ptr<sqlite3, CloseConnection>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

} // namespace tarnwick
