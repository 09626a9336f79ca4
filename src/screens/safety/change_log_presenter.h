#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/safety/change_model.h"
#include "screens/safety/timeline_presenter.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the change log shows.
class ChangeLogPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(QString made READ made NOTIFY changed)
    Q_PROPERTY(QString held READ held NOTIFY changed)
    Q_PROPERTY(int heldTint READ heldTint NOTIFY changed)
    Q_PROPERTY(QString snapshots READ snapshots NOTIFY changed)
    Q_PROPERTY(bool hasChanges READ hasChanges NOTIFY changed)
    Q_PROPERTY(bool hasReversible READ hasReversible NOTIFY changed)
    Q_PROPERTY(tarnwick::ChangeModel *changes READ changes CONSTANT)
    Q_PROPERTY(tarnwick::TimelinePresenter *timeline READ timeline CONSTANT)

public:
    explicit ChangeLogPresenter(AppState &app, QObject *parent = nullptr);

    QString made() const { return m_made; }
    QString held() const { return QString::number(m_app.holding().count()); }
    int heldTint() const { return m_app.holding().count() == 0 ? Tint::Ink : Tint::Warn; }
    QString snapshots() const { return QString::number(m_app.snapshots().size()); }
    bool hasChanges() const { return m_changes.rowCount() > 0; }
    bool hasReversible() const { return m_hasReversible; }
    ChangeModel *changes() { return &m_changes; }
    TimelinePresenter *timeline() { return &m_timeline; }

    Q_INVOKABLE void undo(const QString &entry);
    Q_INVOKABLE void undoEverything();

Q_SIGNALS:
    void changed();

private:
    void readLog();

    AppState &m_app;
    ChangeModel m_changes;
    TimelinePresenter m_timeline;
    QString m_made;
    bool m_hasReversible = false;
};

} // namespace tarnwick
