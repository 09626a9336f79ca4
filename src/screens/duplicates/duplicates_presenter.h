#pragma once

#include "app/app_state.h"
#include "screens/duplicates/duplicate_model.h"
#include "screens/safety/write_gate_presenter.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the Duplicates screen shows.
class DuplicatesPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY changed)
    Q_PROPERTY(bool hasGroups READ hasGroups NOTIFY changed)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(QString groups READ groups NOTIFY changed)
    Q_PROPERTY(QString redundant READ redundant NOTIFY changed)
    Q_PROPERTY(QString reclaimable READ reclaimable NOTIFY changed)
    Q_PROPERTY(tarnwick::DuplicateModel *rows READ rows CONSTANT)

public:
    explicit DuplicatesPresenter(AppState &app, QObject *parent = nullptr);

    bool hasLibrary() const { return bool(m_app.result()); }
    bool hasGroups() const { return m_rows.rowCount() > 0; }
    WriteGatePresenter *gate() { return &m_gate; }
    QString groups() const { return m_groups; }
    QString redundant() const { return m_redundant; }
    QString reclaimable() const { return m_reclaimable; }
    DuplicateModel *rows() { return &m_rows; }

    /// Chooses the copy to keep, by its place in the group.
    Q_INVOKABLE void keep(const QString &group, int place);
    /// Keeps the chosen copy and puts the others into holding.
    Q_INVOKABLE void resolve(const QString &group);
    Q_INVOKABLE void markNotDuplicate(const QString &group);

Q_SIGNALS:
    void changed();

private:
    void readLibrary();

    AppState &m_app;
    WriteGatePresenter m_gate;
    DuplicateModel m_rows;
    QString m_groups;
    QString m_redundant;
    QString m_reclaimable;
};

} // namespace tarnwick
