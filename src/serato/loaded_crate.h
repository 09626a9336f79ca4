#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace tarnwick {

/// A crate as its file states it. A name is flat, whatever separators it holds.
struct LoadedCrate
{
    QString name;      ///< the file's name without its extension
    QUrl url;          ///< the crate file
    QStringList paths; ///< the entries in file order, no leading slash; may repeat

    /// The path of the file.
    QString id() const { return url.toLocalFile(); }
    QSet<QString> pathSet() const { return {paths.begin(), paths.end()}; }
    /// Of the entries, repeated ones included.
    int count() const { return int(paths.size()); }

    bool operator==(const LoadedCrate &) const = default;
};

} // namespace tarnwick
