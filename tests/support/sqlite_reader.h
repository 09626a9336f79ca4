#pragma once

#include <QStringList>

#include <sqlite3.h>

namespace tarnwick::testing {

/// The rows that a query gives, columns joined by "|", NULL as "NULL"; SQLite's words where it
/// fails.
inline QStringList rowsOf(const QString &databasePath, const char *sql)
{
    sqlite3 *database = nullptr;
    QStringList rows;
    const auto addRow = [](void *list, int count, char **values, char **) {
        QStringList columns;
        for (int i = 0; i < count; ++i)
            columns.append(values[i] ? QString::fromUtf8(values[i]) : QStringLiteral("NULL"));
        static_cast<QStringList *>(list)->append(columns.join(u'|'));
        return 0;
    };
    if (sqlite3_open_v2(databasePath.toUtf8().constData(), &database, SQLITE_OPEN_READWRITE,
                        nullptr) != SQLITE_OK ||
        sqlite3_exec(database, sql, addRow, &rows, nullptr) != SQLITE_OK)
        rows = {QString::fromUtf8(sqlite3_errmsg(database))};
    sqlite3_close(database);
    return rows;
}

} // namespace tarnwick::testing
