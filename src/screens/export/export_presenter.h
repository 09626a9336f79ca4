#pragma once

#include "app/app_state.h"
#include "screens/export/carry_model.h"
#include "screens/export/drift_model.h"
#include "screens/export/target_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the export screen shows: the choice of a target and a folder, the export itself, and the
/// drift from an earlier one. The choice lasts as long as the screen.
class ExportPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasFigures READ hasFigures NOTIFY libraryChanged)
    Q_PROPERTY(tarnwick::TargetModel *targets READ targets CONSTANT)
    Q_PROPERTY(tarnwick::CarryModel *carries READ carries CONSTANT)
    Q_PROPERTY(QString stemsNote READ stemsNote NOTIFY targetChanged)
    Q_PROPERTY(QString hardwareNote READ hardwareNote NOTIFY targetChanged)
    Q_PROPERTY(QString folder READ folder NOTIFY folderChanged)
    Q_PROPERTY(QString folderTitle READ folderTitle NOTIFY folderChanged)
    Q_PROPERTY(QString exportTitle READ exportTitle NOTIFY libraryChanged)
    Q_PROPERTY(bool canExport READ canExport NOTIFY canExportChanged)
    Q_PROPERTY(bool isExporting READ isExporting NOTIFY progressChanged)
    Q_PROPERTY(QString phase READ phase NOTIFY progressChanged)
    Q_PROPERTY(QString progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(double fraction READ fraction NOTIFY progressChanged)
    Q_PROPERTY(QString outcome READ outcome NOTIFY outcomeChanged)
    Q_PROPERTY(bool knowsDrift READ knowsDrift NOTIFY driftChanged)
    Q_PROPERTY(QString nothingToCompare READ nothingToCompare NOTIFY driftChanged)
    Q_PROPERTY(tarnwick::DriftModel *drift READ drift CONSTANT)

public:
    explicit ExportPresenter(AppState &app, QObject *parent = nullptr);

    bool hasFigures() const { return m_onDisk.has_value(); }
    TargetModel *targets() { return &m_targets; }
    CarryModel *carries() { return &m_carries; }
    QString stemsNote() const;
    QString hardwareNote() const;
    /// The whole path of the chosen folder; empty while there is none.
    QString folder() const { return m_folder; }
    QString folderTitle() const;
    QString exportTitle() const;
    bool canExport() const { return !m_folder.isEmpty() && !isExporting(); }
    bool isExporting() const { return m_app.exporting().has_value(); }
    QString phase() const;
    QString progress() const;
    double fraction() const;
    /// What the last export has written; empty where none has.
    QString outcome() const;
    /// Whether the drift of the present choice has been worked out.
    bool knowsDrift() const { return m_knowsDrift; }
    /// Said in the place of the figures where there are none.
    QString nothingToCompare() const;
    DriftModel *drift() { return &m_drift; }

    /// Chooses the target of a row.
    Q_INVOKABLE void chooseTarget(int row);
    /// Asks the user for a folder.
    Q_INVOKABLE void pickDestination();
    Q_INVOKABLE void runExport();
    /// Shows what the last export has written in the file manager.
    Q_INVOKABLE void reveal();

Q_SIGNALS:
    void libraryChanged();
    void targetChanged();
    void folderChanged();
    void canExportChanged();
    void progressChanged();
    void outcomeChanged();
    void driftChanged();

private:
    void readLibrary();
    void readProgress();
    void setFolder(const QString &folder);
    /// Drops the drift that is known, and works it out afresh in the background.
    void readDrift();
    void showDrift(const std::optional<ExportDrift> &drift);

    AppState &m_app;
    std::optional<int> m_onDisk;
    TargetModel m_targets;
    CarryModel m_carries;
    QString m_folder;
    bool m_wasExporting = false;
    DriftModel m_drift;
    bool m_knowsDrift = false;
    bool m_hasDrift = false;
    int m_driftReadings = 0; ///< tells an answer that comes too late
};

} // namespace tarnwick
