#pragma once

#include "app/app_state.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The toast bar. Keeps the last message while the bar goes away.
class ToastPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool shown READ isShown NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(bool reversible READ isReversible NOTIFY changed)

public:
    explicit ToastPresenter(AppState &app, QObject *parent = nullptr);

    bool isShown() const { return m_app.toast().has_value(); }
    QString message() const { return m_last.message; }
    bool isReversible() const { return m_last.reversible; }

Q_SIGNALS:
    void changed();

private:
    void readToast();

    AppState &m_app;
    Toast m_last;
};

} // namespace tarnwick
