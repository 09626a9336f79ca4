#pragma once

#include "analysis/scan_result.h"
#include "repair/repair_engine.h"
#include "safety/change_log.h"

#include <QHash>
#include <QSet>

#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

class AppState;

/// A write command under way, with the steps that all commands share: the snapshot ahead of the
/// change, the change, `result` brought in step, the log, the word to the views, the toast.
///
/// 1. The snapshot is a net, no condition: where it can't be taken the command goes on, and its
///    entries name none.
/// 2. An item of a batch costs its own read and write of the database, and nothing else that grows
///    with the library: `result` is brought in step once, and the views are told once.
/// 3. What failed is told in a toast at its moment. Nothing of it is logged.
///
/// Lives on the main thread, within one call of a command, behind its guards.
class WriteRun
{
public:
    /// A change to the record of a track in the scan result.
    using Patch = std::function<void(ScannedTrack &)>;

    explicit WriteRun(AppState &app);
    ~WriteRun();
    WriteRun(const WriteRun &) = delete;
    WriteRun &operator=(const WriteRun &) = delete;

    const SeratoLibrary::Location &location() const { return m_location; }

    void snapshot(const QString &reason);
    /// Of the last snapshot that came about.
    const std::optional<QString> &snapshotId() const { return m_snapshotId; }

    /// False, told in a toast, where the database stays as it is.
    bool editDatabase(const RepairEngine::Edit &edit);
    /// False, told in a toast, for a failure.
    template <typename T>
    bool wentWell(const Result<T> &outcome)
    {
        if (!outcome)
            showProblem(outcome.error().message);
        return outcome.has_value();
    }

    /// Changes the track of that id in the scan result, at the end of the run.
    void patch(const QUuid &id, const Patch &patch);
    /// Takes it out of the scan result, at the end of the run.
    void remove(const QUuid &id);

    /// Puts a track behind all others of the scan result, at the end of the run.
    void append(const ScannedTrack &track);

    /// Adds an entry, under this run's snapshot.
    void log(ChangeLog::Change change);

    /// Ends the run, without a word.
    void end();
    /// Ends the run, and says what has been done.
    void succeed(const QString &message);

private:
    struct Gathered;

    void bringResultInStep();
    void showProblem(const QString &message);

    AppState &m_app;
    const SeratoLibrary::Location m_location;
    std::unique_ptr<Gathered> m_gathered; ///< null once the run has ended
    std::optional<QString> m_snapshotId;
    QHash<QUuid, QList<Patch>> m_patches;
    QSet<QUuid> m_removed;
    std::vector<ScannedTrack> m_appended;
};

} // namespace tarnwick
