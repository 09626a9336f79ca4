#pragma once

#include "app/app_state.h"
#include "screens/missing/candidate_model.h"
#include "screens/missing/missing_model.h"
#include "screens/safety/write_gate_presenter.h"

#include <QHash>
#include <QSet>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the screen of missing files shows, and what it has searched for. One panel of candidates is
/// open at a time; a track is searched for once while the screen is shown.
class MissingPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY changed)
    Q_PROPERTY(bool hasMissing READ hasMissing NOTIFY changed)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(tarnwick::MissingModel *tracks READ tracks CONSTANT)
    Q_PROPERTY(QString panelText READ panelText NOTIFY panelChanged)
    Q_PROPERTY(tarnwick::CandidateModel *candidates READ candidates CONSTANT)

public:
    explicit MissingPresenter(AppState &app, QObject *parent = nullptr);

    bool hasLibrary() const { return bool(m_app.result()); }
    bool hasMissing() const { return m_tracks.rowCount() > 0; }
    WriteGatePresenter *gate() { return &m_gate; }
    MissingModel *tracks() { return &m_tracks; }
    /// What stands in the open panel in the place of candidates; nothing where there are some.
    QString panelText() const;
    /// Those of the open panel.
    CandidateModel *candidates() { return &m_candidates; }

    /// Opens the panel of a row, or closes it.
    Q_INVOKABLE void toggle(const QString &key);
    /// Asks the user where the file is.
    Q_INVOKABLE void browse(const QString &key);
    Q_INVOKABLE void drop(const QString &key);
    /// Relinks the row to a candidate of the open panel.
    Q_INVOKABLE void relink(const QString &key, int candidate);

Q_SIGNALS:
    void changed();
    void panelChanged();

private:
    void readLibrary();
    void search(const SeratoTrack &track);
    void showPanel();

    AppState &m_app;
    WriteGatePresenter m_gate;
    MissingModel m_tracks;
    CandidateModel m_candidates;
    QUuid m_expanded;
    QSet<QUuid> m_searching;
    QHash<QUuid, QList<RepairEngine::Candidate>> m_found;
};

} // namespace tarnwick
