#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/signal/chart_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the screen of Signal shows, with its filters; the chart itself stays with AppState.
///
/// Settings follow each keystroke, but whether the screen asks for a server is settled only when a
/// server is connected to and when the setup closes: a field must not go away under the typist.
class SignalPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool asksForServer READ asksForServer NOTIFY changed)
    Q_PROPERTY(QString server READ server WRITE setServer NOTIFY changed)
    Q_PROPERTY(QString apiKey READ apiKey WRITE setApiKey NOTIFY changed)
    Q_PROPERTY(QString city READ city WRITE setCity NOTIFY changed)
    Q_PROPERTY(bool sharing READ sharing NOTIFY changed)
    Q_PROPERTY(QString shareSymbol READ shareSymbol NOTIFY changed)
    Q_PROPERTY(int shareTint READ shareTint NOTIFY changed)
    Q_PROPERTY(QString shareTitle READ shareTitle NOTIFY changed)
    Q_PROPERTY(QString shareLine READ shareLine NOTIFY changed)
    Q_PROPERTY(QString contributeTitle READ contributeTitle NOTIFY changed)
    Q_PROPERTY(bool busy READ busy NOTIFY changed)
    Q_PROPERTY(QString pool READ pool NOTIFY changed)
    Q_PROPERTY(QString host READ host NOTIFY changed)
    Q_PROPERTY(bool showsSetup READ showsSetup NOTIFY changed)
    Q_PROPERTY(QStringList windows READ windows CONSTANT)
    Q_PROPERTY(int window READ window NOTIFY changed)
    Q_PROPERTY(QString laneTitle READ laneTitle NOTIFY changed)
    Q_PROPERTY(QStringList lanes READ lanes NOTIFY lanesChanged)
    Q_PROPERTY(int lane READ lane NOTIFY changed)
    Q_PROPERTY(bool onlyMine READ onlyMine NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)
    Q_PROPERTY(tarnwick::ChartModel *chart READ chart CONSTANT)

public:
    /// Fetches the chart where there is a server.
    explicit SignalPresenter(AppState &app, QObject *parent = nullptr);

    bool asksForServer() const { return m_asksForServer; }
    QString server() const { return m_app.signal().serverUrl; }
    QString apiKey() const { return m_app.signal().apiKey; }
    QString city() const { return m_app.signal().city; }
    bool sharing() const { return m_app.signal().optIn; }
    QString shareSymbol() const;
    Tint::Value shareTint() const { return sharing() ? Tint::Accent : Tint::Neutral; }
    QString shareTitle() const;
    QString shareLine() const;
    QString contributeTitle() const;
    bool busy() const { return m_app.signalBusy(); }
    /// Empty while nothing is known of the pool.
    QString pool() const;
    QString host() const;
    bool showsSetup() const { return m_showsSetup; }
    QStringList windows() const;
    /// Which of `windows` is chosen.
    int window() const;
    QString laneTitle() const;
    /// "All" alone until the library's are worked out.
    const QStringList &lanes() const { return m_lanes; }
    /// Which of `lanes` is chosen; -1 where the library no longer has it.
    int lane() const { return int(m_lanes.indexOf(m_lane)); }
    bool onlyMine() const { return m_onlyMine; }
    /// Why the last fetch failed; empty if it didn't.
    QString error() const { return m_app.landingError().value_or(QString()); }
    /// Whether there is nothing to show and nothing to wait for.
    bool isEmpty() const { return !busy() && m_chart.rowCount() == 0; }
    ChartModel *chart() { return &m_chart; }

    /// In memory alone: connecting saves it.
    void setServer(const QString &url);
    void setApiKey(const QString &key);
    void setCity(const QString &city);

    Q_INVOKABLE void connectToServer();
    Q_INVOKABLE void toggleSharing();
    Q_INVOKABLE void contribute();
    Q_INVOKABLE void toggleSetup();
    Q_INVOKABLE void closeSetup();
    Q_INVOKABLE void leave();
    Q_INVOKABLE void chooseWindow(int index);
    Q_INVOKABLE void chooseLane(int index);
    Q_INVOKABLE void toggleOnlyMine();

Q_SIGNALS:
    void changed();
    void lanesChanged();

private:
    void reload();
    void readLibrary();
    void readSignal();
    void readLanes();
    void showChart();
    void settleForm();
    void save(const SignalConfig &config);

    AppState &m_app;
    ChartModel m_chart;
    int m_window; ///< days
    QStringList m_lanes;
    QString m_lane;
    bool m_onlyMine = false;
    bool m_showsSetup = false;
    bool m_asksForServer = false;
    QString m_typedServer; ///< as last seen or typed here
};

} // namespace tarnwick
