#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/loudness/standing_model.h"
#include "screens/safety/write_gate_presenter.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the Loudness screen shows.
class LoudnessPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY changed)
    Q_PROPERTY(bool canWrite READ canWrite NOTIFY changed)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(QString analysed READ analysed NOTIFY changed)
    Q_PROPERTY(QString average READ average NOTIFY changed)
    Q_PROPERTY(QString outliers READ outliers NOTIFY changed)
    Q_PROPERTY(int outliersTint READ outliersTint NOTIFY changed)
    Q_PROPERTY(bool hasTracks READ hasTracks NOTIFY changed)
    Q_PROPERTY(bool hasOutliers READ hasOutliers NOTIFY changed)
    Q_PROPERTY(QString offer READ offer NOTIFY changed)
    Q_PROPERTY(QString levelAllTitle READ levelAllTitle NOTIFY changed)
    Q_PROPERTY(tarnwick::StandingModel *tracks READ tracks CONSTANT)

public:
    explicit LoudnessPresenter(AppState &app, QObject *parent = nullptr);

    /// False without a library: then nothing is shown.
    bool hasLibrary() const { return m_hasLibrary; }
    /// Whether a single track can be levelled. The batch is offered all the same.
    bool canWrite() const { return m_app.canWrite(); }
    WriteGatePresenter *gate() { return &m_gate; }
    /// The counts cover the whole library, whatever the rows show of it.
    QString analysed() const { return QString::number(m_analysed); }
    QString average() const { return m_average; }
    QString outliers() const { return QString::number(m_outliers); }
    int outliersTint() const { return hasOutliers() ? Tint::Warn : Tint::Good; }
    bool hasTracks() const { return m_analysed > 0; }
    bool hasOutliers() const { return m_outliers > 0; }
    QString offer() const;
    QString levelAllTitle() const;
    StandingModel *tracks() { return &m_tracks; }

    /// Writes the gain of a row into its file; nothing where it has gone.
    Q_INVOKABLE void level(const QString &key);
    /// Writes the gain of every track that stands out, also of those that are not on show.
    Q_INVOKABLE void levelAll();

Q_SIGNALS:
    void changed();

private:
    void readLibrary();

    AppState &m_app;
    WriteGatePresenter m_gate;
    bool m_hasLibrary = false;
    size_t m_analysed = 0;
    size_t m_outliers = 0;
    QString m_average;
    StandingModel m_tracks;
};

} // namespace tarnwick
