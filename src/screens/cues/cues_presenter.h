#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/cues/loss_model.h"
#include "screens/safety/timeline_presenter.h"
#include "screens/safety/write_gate_presenter.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the screen of cues and grids shows.
class CuesPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(QString protectedTracks READ protectedTracks NOTIFY changed)
    Q_PROPERTY(QString withGrid READ withGrid NOTIFY changed)
    Q_PROPERTY(QString found READ found NOTIFY changed)
    Q_PROPERTY(int foundTint READ foundTint NOTIFY changed)
    Q_PROPERTY(bool hasLosses READ hasLosses NOTIFY changed)
    Q_PROPERTY(QString restoreAllTitle READ restoreAllTitle NOTIFY changed)
    Q_PROPERTY(tarnwick::LossModel *losses READ losses CONSTANT)
    Q_PROPERTY(tarnwick::TimelinePresenter *timeline READ timeline CONSTANT)

public:
    explicit CuesPresenter(AppState &app, QObject *parent = nullptr);

    WriteGatePresenter *gate() { return &m_gate; }
    QString protectedTracks() const { return QString::number(m_app.cueProtected()); }
    QString withGrid() const { return QString::number(m_withGrid); }
    QString found() const { return QString::number(m_losses.rowCount()); }
    int foundTint() const { return hasLosses() ? Tint::Accent : Tint::Ink; }
    bool hasLosses() const { return m_losses.rowCount() > 0; }
    QString restoreAllTitle() const;
    LossModel *losses() { return &m_losses; }
    TimelinePresenter *timeline() { return &m_timeline; }

    Q_INVOKABLE void restore(const QString &key);
    Q_INVOKABLE void restoreAll();

Q_SIGNALS:
    void changed();

private:
    void readLibrary();

    AppState &m_app;
    WriteGatePresenter m_gate;
    LossModel m_losses;
    TimelinePresenter m_timeline;
    int m_withGrid = 0;
};

} // namespace tarnwick
