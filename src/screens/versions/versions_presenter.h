#pragma once

#include "app/app_state.h"
#include "screens/safety/write_gate_presenter.h"
#include "screens/versions/version_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the Versions screen shows. Where the versions of a large library are not there yet it opens
/// without them, and they come a moment later.
class VersionsPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY changed)
    Q_PROPERTY(bool hasNoGroups READ hasNoGroups NOTIFY changed)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(tarnwick::VersionModel *rows READ rows CONSTANT)

public:
    explicit VersionsPresenter(AppState &app, QObject *parent = nullptr);

    bool hasLibrary() const { return bool(m_app.result()); }
    /// Whether it is known that there are none.
    bool hasNoGroups() const { return !m_waits && hasLibrary() && m_rows.rowCount() == 0; }
    WriteGatePresenter *gate() { return &m_gate; }
    VersionModel *rows() { return &m_rows; }

    /// Chooses the cut to keep, by its place in the song.
    Q_INVOKABLE void choose(const QString &group, int place);
    /// Keeps the chosen cut and files the others into the crate for those.
    Q_INVOKABLE void archive(const QString &group);

Q_SIGNALS:
    void changed();

private:
    void open();
    void readLibrary();

    AppState &m_app;
    WriteGatePresenter m_gate;
    VersionModel m_rows;
    bool m_waits = true; ///< for the first versions of a library
};

} // namespace tarnwick
