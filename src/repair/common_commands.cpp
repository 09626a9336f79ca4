// The steps that every write command shares.

#include "app/app_state.h"
#include "repair/write_run.h"
#include "safety/snapshot_store.h"

#include <atomic>

using namespace Qt::StringLiterals;

namespace tarnwick {

struct WriteRun::Gathered
{
    AppState::Gathering gathering;
};

bool AppState::mayWrite(const QString &refusal)
{
    return m_result && mayWriteOrRefuse(refusal);
}

bool AppState::mayWriteOrRefuse(const QString &refusal)
{
    if (!canWrite())
        showProblem(refusal);
    return canWrite();
}

ScanResult &AppState::changedResult()
{
    // Figures share the result: without them it may be this object's alone.
    dropFigures();
    if (m_result.use_count() > 1)
        m_result = std::make_shared<ScanResult>(*m_result);
    // A background task may have let go of the result a moment ago: what it read comes before this.
    std::atomic_thread_fence(std::memory_order_acquire);
    return *m_result;
}

WriteRun::WriteRun(AppState &app)
    : m_app(app)
    , m_location(app.m_result->location)
    , m_gathered(new Gathered{AppState::Gathering(app)})
{}

WriteRun::~WriteRun()
{
    end();
}

void WriteRun::snapshot(const QString &reason)
{
    if (const auto made = SnapshotStore::create(m_location, reason))
        m_snapshotId = made->id;
}

bool WriteRun::editDatabase(const RepairEngine::Edit &edit)
{
    const auto outcome = RepairEngine::mutate(m_location, edit);
    if (!outcome)
        showProblem(outcome.error().message());
    return outcome.has_value();
}

void WriteRun::patch(const QUuid &id, const Patch &patch)
{
    m_patches[id].append(patch);
}

void WriteRun::remove(const QUuid &id)
{
    m_removed.insert(id);
}

void WriteRun::append(const ScannedTrack &track)
{
    m_appended.push_back(track);
}

void WriteRun::log(ChangeLog::Change change)
{
    change.snapshotId = m_snapshotId;
    (void)m_app.m_changeLog.append(change);
}

void WriteRun::bringResultInStep()
{
    if (m_patches.isEmpty() && m_removed.isEmpty() && m_appended.empty())
        return;
    std::vector<ScannedTrack> &tracks = m_app.changedResult().tracks;
    for (ScannedTrack &track : tracks) {
        const auto patches = m_patches.constFind(track.id());
        if (patches == m_patches.constEnd())
            continue;
        for (const Patch &patch : *patches)
            patch(track);
    }
    if (!m_removed.isEmpty())
        std::erase_if(tracks, [this](const ScannedTrack &t) { return m_removed.contains(t.id()); });
    tracks.insert(tracks.end(), m_appended.begin(), m_appended.end());
    m_app.libraryHasChanged();
}

void WriteRun::end()
{
    if (!m_gathered)
        return;
    bringResultInStep();
    m_app.syncSafety();
    m_gathered.reset();
}

void WriteRun::succeed(const QString &message)
{
    end();
    m_app.showToast(message, Reversible::Yes);
}

void WriteRun::showProblem(const QString &message)
{
    m_app.showProblem(message);
}

} // namespace tarnwick
