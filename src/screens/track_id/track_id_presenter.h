#pragma once

#include "app/app_state.h"
#include "screens/safety/write_gate_presenter.h"
#include "screens/track_id/untagged_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the Track ID screen shows.
class TrackIdPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY changed)
    Q_PROPERTY(bool canWrite READ canWrite NOTIFY changed)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(QString untagged READ untagged NOTIFY changed)
    Q_PROPERTY(QString suggested READ suggested NOTIFY changed)
    Q_PROPERTY(QString ready READ ready NOTIFY changed)
    Q_PROPERTY(bool hasUntagged READ hasUntagged NOTIFY changed)
    Q_PROPERTY(bool hasReady READ hasReady NOTIFY changed)
    Q_PROPERTY(QString offer READ offer NOTIFY changed)
    Q_PROPERTY(QString tagAllTitle READ tagAllTitle NOTIFY changed)
    Q_PROPERTY(tarnwick::UntaggedModel *tracks READ tracks CONSTANT)

public:
    explicit TrackIdPresenter(AppState &app, QObject *parent = nullptr);

    /// False without a library: then nothing is shown.
    bool hasLibrary() const { return m_hasLibrary; }
    /// Whether a single genre can be set. The batch is offered all the same.
    bool canWrite() const { return m_app.canWrite(); }
    WriteGatePresenter *gate() { return &m_gate; }
    /// The three counts cover the whole library, whatever the rows show of it.
    QString untagged() const { return QString::number(m_untagged); }
    QString suggested() const { return QString::number(m_suggested); }
    QString ready() const { return QString::number(m_ready); }
    bool hasUntagged() const { return m_untagged > 0; }
    bool hasReady() const { return m_ready > 0; }
    QString offer() const;
    QString tagAllTitle() const;
    UntaggedModel *tracks() { return &m_tracks; }

    /// Gives the track of a row the genre suggested; nothing where it has gone.
    Q_INVOKABLE void tag(const QString &key);
    /// Gives every track whose suggestion is sure that genre.
    Q_INVOKABLE void tagAll();

Q_SIGNALS:
    void changed();

private:
    void readLibrary();

    AppState &m_app;
    WriteGatePresenter m_gate;
    bool m_hasLibrary = false;
    size_t m_untagged = 0;
    size_t m_suggested = 0;
    size_t m_ready = 0;
    UntaggedModel m_tracks;
};

} // namespace tarnwick
