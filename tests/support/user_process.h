#pragma once

#include "app/app_state.h"
#include "platform/volumes.h"
#include "support/scoped_environment.h"
#include "support/serato_builder.h"

#include <QEventLoop>

#include <memory>
#include <optional>

/// A user who lives in one folder, for tests that look at it from several processes: "home" with
/// the library and the folder "music", "data" and "volumes".
namespace tarnwick::testing {

inline QString musicFile(const QString &folder, const QString &name)
{
    return folder + QStringLiteral("/home/music/") + name;
}

/// The path of such a file as the database holds it.
inline QString musicPath(const QString &folder, const QString &name)
{
    return musicFile(folder, name).sliced(1);
}

inline QString libraryFile(const QString &folder, const QString &name)
{
    return folder + QStringLiteral("/home/Music/_Serato_/") + name;
}

inline QString databaseFile(const QString &folder)
{
    return libraryFile(folder, QStringLiteral("database V2"));
}

/// A process of the user's: from its launch on, with the first scan done.
class UserProcess
{
public:
    explicit UserProcess(const QString &folder)
        : m_folder(folder)
        , m_volumes({folder + QStringLiteral("/volumes")})
        , m_home("HOME", (folder + QStringLiteral("/home")).toUtf8())
        , m_data("XDG_DATA_HOME", (folder + QStringLiteral("/data")).toUtf8())
        , m_app(std::make_unique<AppState>(AppState::Environment::Ignored))
    {
        m_app->rescan();
        waitUntilIdle();
    }

    AppState &app() { return *m_app; }
    /// The run's folder.
    const QString &folder() const { return m_folder; }

    void waitUntilIdle()
    {
        while (m_app->pendingTasks() > 0) {
            QEventLoop loop;
            QObject::connect(m_app.get(), &AppState::becameIdle, &loop, &QEventLoop::quit);
            loop.exec();
        }
    }

    /// The track of that file as it now is in the scan result; nothing if there is none.
    std::optional<ScannedTrack> track(const QString &fileName) const
    {
        for (const ScannedTrack &each : m_app->result()->tracks) {
            if (each.track.fileName() == fileName)
                return each;
        }
        return std::nullopt;
    }

    /// Path and genre of every track, in order.
    QStringList tracks() const
    {
        QStringList all;
        for (const ScannedTrack &each : m_app->result()->tracks)
            all << each.track.relativePath + u'|' + each.track.genre;
        return all;
    }

private:
    const QString m_folder;
    platform::ScopedVolumeFolders m_volumes;
    ScopedVariable m_home;
    ScopedVariable m_data;
    std::unique_ptr<AppState> m_app;
};

} // namespace tarnwick::testing
