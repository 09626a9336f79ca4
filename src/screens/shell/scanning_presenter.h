#pragma once

#include "app/app_state.h"

#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// How far the running scan has come. Reports come in far more often than the screen is drawn:
/// those between two frames are told as one.
class ScanningPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(QString phase READ phase NOTIFY changed)
    Q_PROPERTY(QString count READ count NOTIFY changed)
    Q_PROPERTY(double fraction READ fraction NOTIFY changed)
    Q_PROPERTY(QString filesOnDisk READ filesOnDisk NOTIFY changed)
    Q_PROPERTY(QString missing READ missing NOTIFY changed)

public:
    explicit ScanningPresenter(AppState &app, QObject *parent = nullptr);

    QString phase() const { return m_progress.phase; }
    QString count() const;
    double fraction() const { return m_progress.fraction(); }
    QString filesOnDisk() const { return QString::number(m_progress.filesOnDisk); }
    QString missing() const { return QString::number(m_progress.missing); }

    /// Tells the last report without waiting for the next frame.
    void tellNow();

Q_SIGNALS:
    void changed();

private:
    AppState &m_app;
    ScanProgress m_progress;
    QTimer m_nextFrame;
};

} // namespace tarnwick
