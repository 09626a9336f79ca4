#pragma once

#include <QList>
#include <QString>
#include <QUrl>

/// Where the Serato libraries of this machine are, and whether Serato runs now. Keeps no state:
/// each call looks at the machine afresh.
namespace tarnwick::SeratoLibrary {

/// A `_Serato_` folder.
struct Location
{
    QString volumeName; ///< shown to the user
    QUrl folderUrl;     ///< the `_Serato_` folder
    bool isOnline = false;
    bool hasDatabase = false; ///< `database V2` lies in the folder

    /// The path of the folder.
    QString id() const;
    QString folderPath() const;
    QString databasePath() const;
    QString subcratesPath() const;

    bool operator==(const Location &) const = default;
};

size_t qHash(const Location &location, size_t seed = 0) noexcept;

/// The user's own library folder, whether or not it is there.
QString homeLibrary();

/// All libraries found, ordered by the path of their folder. Never fails.
QList<Location> discover();

/// True if one of Serato's programs is running at this moment. Never fails.
bool isSeratoRunning();

} // namespace tarnwick::SeratoLibrary
