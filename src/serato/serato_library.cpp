#include "serato/serato_library.h"

#include "foundation/paths.h"
#include "platform/ask.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/mounts.h"
#include "platform/running_programs.h"
#include "platform/volumes.h"

#include <QSet>

#include <algorithm>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoLibrary {

namespace {

// Names on disk, frozen: they are Serato's.
const QString libraryFolderName = u"_Serato_"_s;
const QString databaseName = u"database V2"_s;
const QString subcratesName = u"Subcrates"_s;

/// The library at a folder's path; nothing if no folder is there.
std::optional<Location> libraryAt(const QString &folder, const QString &volumeName)
{
    if (!platform::isFolder(folder))
        return std::nullopt;
    const bool hasDatabase = platform::isRegularFile(joinedPath(folder, databaseName));
    return Location{volumeName, QUrl::fromLocalFile(folder), true, hasDatabase};
}

/// The libraries found so far; the first way to a path wins. A place across the network is asked in
/// the background, all of them at once, and left out where it doesn't answer in time.
class Finder
{
public:
    void consider(const QString &folder, const QString &volumeName)
    {
        if (m_mounts.mayNeverAnswer(folder))
            m_asked.push_back(platform::ask([=] { return libraryAt(folder, volumeName); }));
        else
            add(libraryAt(folder, volumeName));
    }

    QList<Location> sorted()
    {
        const auto deadline = std::chrono::steady_clock::now() + platform::patience;
        for (auto &asked : m_asked) {
            if (asked.wait_until(deadline) == std::future_status::ready)
                add(asked.get());
        }
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](const Location &a, const Location &b) { return a.id() < b.id(); });
        return m_found;
    }

private:
    void add(const std::optional<Location> &location)
    {
        if (!location)
            return;
        const QString path = standardizedPath(location->folderPath());
        if (!m_seen.contains(path)) {
            m_seen.insert(path);
            m_found.append(*location);
        }
    }

    const platform::Mounts m_mounts = platform::Mounts::now();
    std::vector<std::future<std::optional<Location>>> m_asked;
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
