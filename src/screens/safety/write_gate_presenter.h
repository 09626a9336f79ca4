#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The banner that says whether changes are possible, as last looked at.
class WriteGatePresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's presenter makes it.")
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    Q_PROPERTY(int tint READ tint NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    explicit WriteGatePresenter(AppState &app, QObject *parent = nullptr);

    QString symbol() const;
    int tint() const { return m_app.isSeratoRunning() ? Tint::Warn : Tint::Good; }
    QString text() const;

Q_SIGNALS:
    void changed();

private:
    AppState &m_app;
};

} // namespace tarnwick
