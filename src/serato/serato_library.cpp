#include "serato/serato_library.h"

#include "foundation/paths.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/running_programs.h"
#include "platform/volumes.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoLibrary {

namespace {

// Names on disk, frozen: they are Serato's.
const QString libraryFolderName = u"_Serato_"_s;
const QString databaseName = u"database V2"_s;
const QString subcratesName = u"Subcrates"_s;

/// The libraries found so far; the first way to a path wins.
class Finder
{
public:
    void consider(const QString &folder, const QString &volumeName)
    {
        const QString path = standardizedPath(folder);
        if (m_seen.contains(path) || !platform::isFolder(folder))
            return;
        m_seen.insert(path);
        const bool hasDatabase = platform::isRegularFile(joinedPath(folder, databaseName));
        m_found.append({volumeName, QUrl::fromLocalFile(folder), true, hasDatabase});
    }

    QList<Location> sorted()
    {
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](const Location &a, const Location &b) { return a.id() < b.id(); });
        return m_found;
    }

private:
    QSet<QString> m_seen;
    QList<Location> m_found;
};

} // namespace

QString Location::id() const
{
    return folderPath();
}

QString Location::folderPath() const
{
    return folderUrl.toLocalFile();
}

QString Location::databasePath() const
{
    return joinedPath(folderPath(), databaseName);
}

QString Location::subcratesPath() const
{
    return joinedPath(folderPath(), subcratesName);
}

size_t qHash(const Location &location, size_t seed) noexcept
{
    return qHashMulti(seed, location.volumeName, location.folderUrl, location.isOnline,
                      location.hasDatabase);
}

QString homeLibrary()
{
    return joinedPath(joinedPath(platform::homeFolder(), u"Music"_s), libraryFolderName);
}

QList<Location> discover()
{
    Finder finder;
    finder.consider(homeLibrary(), platform::systemDiskName());
    for (const platform::Volume &volume : platform::volumes())
        finder.consider(joinedPath(volume.path, libraryFolderName), volume.name);
    return finder.sorted();
}

bool isSeratoRunning()
{
    return platform::isAnyProgramRunning({u"Serato DJ Pro"_s, u"Serato DJ Lite"_s, u"Serato DJ"_s});
}

} // namespace tarnwick::SeratoLibrary
