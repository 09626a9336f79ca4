#include "screens/export/export_presenter.h"

#include "export/drift.h"
#include "platform/background.h"
#include "platform/file_choice.h"
#include "platform/reveal.h"
#include "screens/export/export_figures.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace tarnwick {

ExportPresenter::ExportPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_wasExporting(isExporting())
{
    connect(&app, &AppState::libraryChanged, this, &ExportPresenter::readLibrary);
    connect(&app, &AppState::exportingChanged, this, &ExportPresenter::readProgress);
    connect(&app, &AppState::lastExportChanged, this, &ExportPresenter::outcomeChanged);
    readLibrary();
}

QString ExportPresenter::stemsNote() const
{
    return ExportFigures::stemsNote(m_targets.chosen());
}

QString ExportPresenter::hardwareNote() const
{
    return ExportFigures::hardwareNote(m_targets.chosen());
}

QString ExportPresenter::folderTitle() const
{
    return ExportFigures::folderTitle(m_folder);
}

QString ExportPresenter::exportTitle() const
{
    return m_onDisk ? ExportFigures::exportTitle(*m_onDisk) : QString();
}

QString ExportPresenter::phase() const
{
    return isExporting() ? m_app.exporting()->phase : QString();
}

QString ExportPresenter::progress() const
{
    return isExporting() ? ExportFigures::progressLine(*m_app.exporting()) : QString();
}

double ExportPresenter::fraction() const
{
    return isExporting() ? m_app.exporting()->fraction() : 0;
}

QString ExportPresenter::outcome() const
{
    return m_app.lastExport() ? ExportFigures::outcomeLine(*m_app.lastExport()) : QString();
}

QString ExportPresenter::nothingToCompare() const
{
    return m_knowsDrift && !m_hasDrift ? ExportFigures::nothingToCompare() : QString();
}

void ExportPresenter::chooseTarget(int row)
{
    if (row < 0 || row >= m_targets.rowCount())
        return;
    const ExportTarget target = allExportTargets().at(row).target;
    if (target == m_targets.chosen())
        return;
    m_targets.choose(target);
    m_carries.setTarget(target);
    Q_EMIT targetChanged();
    readDrift();
}

void ExportPresenter::pickDestination()
{
    // The screen may have gone by the time of the answer.
    const QPointer<ExportPresenter> guard(this);
    platform::chooseFile({.kind = platform::FileQuestion::Kind::Folder,
                          .message = u"Pick a drive or folder to export to"_s,
                          .acceptLabel = u"Choose"_s},
                         [guard](const QString &folder) {
                             if (guard)
                                 guard->setFolder(folder);
                         });
}

void ExportPresenter::setFolder(const QString &folder)
{
    m_folder = folder;
    Q_EMIT folderChanged();
    Q_EMIT canExportChanged();
    readDrift();
}

void ExportPresenter::runExport()
{
    if (canExport())
        m_app.runExport(m_targets.chosen(), m_folder);
}

void ExportPresenter::reveal()
{
    if (m_app.lastExport())
        platform::revealInFileManager(m_app.lastExport()->path);
}

void ExportPresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_onDisk = derived ? std::optional(derived->onDisk) : std::nullopt;
    Q_EMIT libraryChanged();
    readDrift();
}

void ExportPresenter::readProgress()
{
    Q_EMIT progressChanged();
    if (isExporting() == m_wasExporting)
        return;
    m_wasExporting = isExporting();
    Q_EMIT canExportChanged();
    // Also after one that failed: it may have taken an earlier export away.
    if (!m_wasExporting)
        readDrift();
}

void ExportPresenter::readDrift()
{
    const int reading = ++m_driftReadings;
    m_knowsDrift = false;
    m_hasDrift = false;
    m_drift.setDrift(std::nullopt);
    Q_EMIT driftChanged();
    const auto library = m_app.result();
    if (m_folder.isEmpty() || !library)
        return;
    platform::runInBackground(
        platform::Priority::UserInitiated, this,
        [target = m_targets.chosen(), folder = m_folder, library] {
            return driftOf(target, library->tracks, folder);
        },
        [this, reading](const std::optional<ExportDrift> &drift) {
            if (reading == m_driftReadings)
                showDrift(drift);
        });
}

void ExportPresenter::showDrift(const std::optional<ExportDrift> &drift)
{
    m_knowsDrift = true;
    m_hasDrift = drift.has_value();
    m_drift.setDrift(drift);
    Q_EMIT driftChanged();
}

} // namespace tarnwick
