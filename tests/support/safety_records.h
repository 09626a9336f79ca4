#pragma once

#include "safety/change_log.h"
#include "safety/holding_folder.h"
#include "safety/snapshot_store.h"
#include "support/scoped_environment.h"
#include "support/test_files.h"

#include <QDir>

/// Setting the scene for what is kept in the data folder.
namespace tarnwick::testing {

/// Lets the data folder lie below `folder`, in "data/Tarnwick".
inline void keepDataIn(const QString &folder)
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder + QStringLiteral("/data")));
}

inline QString dataIn(const QString &folder, const QString &name = {})
{
    return folder + QStringLiteral("/data/Tarnwick/") + name;
}

/// The library in the folder "library".
inline SeratoLibrary::Location libraryIn(const QString &folder)
{
    const QString path = folder + QStringLiteral("/library/_Serato_");
    return {QStringLiteral("Test"), QUrl::fromLocalFile(path), true, true};
}

/// Fills that library with one file or folder for each item of a snapshot, and one that is in none.
/// `word` goes into all contents.
inline void fillLibrary(const QString &folder, const QByteArray &word)
{
    const QString path = folder + QStringLiteral("/library/_Serato_/");
    put(path + QStringLiteral("database V2"), "database " + word.repeated(5000));
    put(path + QStringLiteral("Subcrates/a.crate"), "crate a " + word);
    put(path + QStringLiteral("Subcrates/deep/.b.crate"), "crate b " + word);
    put(path + QStringLiteral("SmartCrates/s.scrate"), "smart " + word);
    put(path + QStringLiteral("neworder.pref"), "order " + word);
    put(path + QStringLiteral("window.pref"), "window " + word);
    put(path + QStringLiteral("History/Sessions/1.session"), "session " + word);
}

/// The items of a snapshot as a tree, without what else lies in the folder.
inline QMap<QString, QByteArray> itemsIn(const QString &folder)
{
    QMap<QString, QByteArray> items;
    for (const auto &[key, content] : treeOf(folder).toStdMap()) {
        if (SnapshotSet::entries().contains(key.section(u'/', 0, 0)))
            items[key] = content;
    }
    return items;
}

inline QMap<QString, QByteArray> itemsOf(const SeratoLibrary::Location &location)
{
    return itemsIn(location.folderPath());
}

/// A library whose items all read "old", and its twin.
inline void prepareLibrary(const QString &folder)
{
    keepDataIn(folder);
    fillLibrary(folder, "old");
    fillLibrary(folder + QStringLiteral("/twin"), "old");
}

/// The library reads "new" now, and a snapshot of the old one exists.
inline void prepareSnapshot(const QString &folder)
{
    prepareLibrary(folder);
    if (!SnapshotStore::create(libraryIn(folder), QStringLiteral("old")))
        qFatal("can't take a snapshot");
    fillLibrary(folder, "new");
    fillLibrary(folder + QStringLiteral("/new twin"), "new");
}

} // namespace tarnwick::testing
