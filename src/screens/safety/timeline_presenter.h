#pragma once

#include "app/app_state.h"
#include "screens/safety/snapshot_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The card of snapshots, which several screens show.
class TimelinePresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's presenter makes it.")
    Q_PROPERTY(tarnwick::SnapshotModel *snapshots READ snapshots CONSTANT)
    Q_PROPERTY(bool hasSnapshots READ hasSnapshots NOTIFY changed)
    Q_PROPERTY(bool canTake READ canTake NOTIFY changed)
    Q_PROPERTY(bool canRollBack READ canRollBack NOTIFY changed)

public:
    explicit TimelinePresenter(AppState &app, QObject *parent = nullptr);

    SnapshotModel *snapshots() { return &m_snapshots; }
    bool hasSnapshots() const { return m_snapshots.rowCount() > 0; }
    /// Not while a long command runs.
    bool canTake() const { return !m_app.busy(); }
    bool canRollBack() const { return !m_app.isSeratoRunning(); }

    Q_INVOKABLE void take();
    /// Puts a snapshot over the library.
    Q_INVOKABLE void rollBack(const QString &snapshot);

Q_SIGNALS:
    void changed();

private:
    void readSnapshots();

    AppState &m_app;
    SnapshotModel m_snapshots;
};

} // namespace tarnwick
