#pragma once

#include "app/app_state.h"
#include "platform/running_programs.h"
#include "platform/volumes.h"
#include "support/scoped_environment.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace tarnwick::testing {

/// A user of the test's own: a home folder, a data folder and volumes in a temporary folder, and
/// one AppState over them, which sees of all programs only those that the test starts.
class AppFixture
{
public:
    AppFixture()
        : m_volumes({m_root.makeFolder(QStringLiteral("volumes"))})
        , m_home("HOME", m_root.makeFolder(QStringLiteral("home")).toUtf8())
        , m_data("XDG_DATA_HOME", m_root.path(QStringLiteral("data")).toUtf8())
    {}

    /// Everything below: "home", "volumes" and "data".
    const TestFolder &root() const { return m_root; }
    QString home(const QString &name) const { return m_root.path(QStringLiteral("home/") + name); }

    /// Writes a database into the home library, one record for each list of fields.
    QString writeHomeDatabase(const QByteArrayList &tracks) const
    {
        return m_root.write(QStringLiteral("home/Music/_Serato_/database V2"),
                            databaseVersion() + tracks.join());
    }
    /// The same into a library on a volume.
    QString writeVolumeDatabase(const QString &volume, const QByteArrayList &tracks) const
    {
        return m_root.write(QStringLiteral("volumes/%1/_Serato_/database V2").arg(volume),
                            databaseVersion() + tracks.join());
    }
    /// Writes an audio file below the home folder; gives the path as a database holds it.
    QString writeAudio(const QString &name, const QByteArray &content = "not really audio") const
    {
        return m_root.write(QStringLiteral("home/") + name, content).sliced(1);
    }

    /// Makes the one AppState; a second call ends the first, as a restart would.
    AppState &launch(AppState::Environment environment = AppState::Environment::Read)
    {
        m_app.reset();
        m_app = std::make_unique<AppState>(environment);
        return *m_app;
    }
    AppState &app() { return *m_app; }

    /// Waits until no background work is left.
    bool waitUntilIdle(int milliseconds = 20000)
    {
        return QTest::qWaitFor([this] { return m_app->pendingTasks() == 0; }, milliseconds);
    }
    /// Launches, scans the default library and waits for the end.
    AppState &launchAndScan()
    {
        launch(AppState::Environment::Ignored);
        m_app->rescan();
        waitUntilIdle();
        return *m_app;
    }

private:
    TestFolder m_root;
    platform::ScopedOwnPrograms m_programs;
    platform::ScopedVolumeFolders m_volumes;
    ScopedVariable m_home;
    ScopedVariable m_data;
    std::unique_ptr<AppState> m_app;
};

} // namespace tarnwick::testing
