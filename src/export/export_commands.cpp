// Exports through AppState. They only read the library, so that neither a running Serato nor a
// failed snapshot stands in their way.

#include "app/app_state.h"
#include "export/drift.h"
#include "export/engine_exporter.h"
#include "export/rekordbox_exporter.h"
#include "export/serato_backup.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// What an export takes with it into the background: a scan or a command that ends meanwhile
/// doesn't disturb it.
struct ExportJob
{
    ExportTarget target;
    QString folder;
    std::shared_ptr<const ScanResult> library;
    QList<LoadedCrate> crates;

    Result<ExportOutcome> run(const ExportProgressFunction &report) const
    {
        switch (target) {
        case ExportTarget::Engine:
            return EngineExporter::exportTo(library->tracks, crates, folder, report);
        case ExportTarget::Rekordbox:
            return RekordboxExporter::exportTo(library->tracks, crates, folder, report);
        case ExportTarget::SeratoBackup:
            break;
        }
        return SeratoBackup::exportTo(library->location, folder, report);
    }
};

} // namespace

void AppState::runExport(ExportTarget target, const QString &folder)
{
    if (!m_result)
        return;
    setExporting(ExportProgress{.phase = u"Starting…"_s});
    setLastExport(std::nullopt);
    const QPointer<AppState> self(this);
    const auto report = [self](const ExportProgress &progress) {
        platform::callOnMainThread([self, progress] {
            if (self)
                self->setExporting(progress);
        });
    };
    const ExportJob job{target, folder, m_result, m_crates};
    runInBackground(
        platform::Priority::UserInitiated, [job, report] { return job.run(report); },
        [this](const Result<ExportOutcome> &outcome) {
            if (outcome)
                finishExport(*outcome);
            else
                failExport(outcome.error());
        });
}

void AppState::finishExport(const ExportOutcome &outcome)
{
    setExporting(std::nullopt);
    setLastExport(outcome);
    // "tracks" also where library files were copied.
    showToast(
        u"Exported %1 tracks to %2"_s.arg(outcome.trackCount).arg(infoOf(outcome.target).rawValue));
}

/// What was written until then stays where it is.
void AppState::failExport(const Failure &reason)
{
    setExporting(std::nullopt);
    showProblem(reason.message);
}

std::optional<ExportDrift> AppState::drift(ExportTarget target, const QString &folder) const
{
    return m_result ? driftOf(target, m_result->tracks, folder) : std::nullopt;
}

void AppState::setExporting(const std::optional<ExportProgress> &progress)
{
    m_exporting = progress;
    Q_EMIT exportingChanged();
}

void AppState::setLastExport(const std::optional<ExportOutcome> &outcome)
{
    m_lastExport = outcome;
    Q_EMIT lastExportChanged();
}

} // namespace tarnwick
