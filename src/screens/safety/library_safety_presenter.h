#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/safety/library_model.h"
#include "screens/safety/safety_step_model.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the screen of libraries and promises shows.
class LibrarySafetyPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(QString found READ found NOTIFY changed)
    Q_PROPERTY(tarnwick::LibraryModel *libraries READ libraries CONSTANT)
    Q_PROPERTY(tarnwick::SafetyStepModel *steps READ steps CONSTANT)
    Q_PROPERTY(QString takeTitle READ takeTitle NOTIFY changed)
    Q_PROPERTY(bool canTake READ canTake NOTIFY changed)
    Q_PROPERTY(QString taken READ taken NOTIFY changed)
    Q_PROPERTY(QStringList promises READ promises CONSTANT)
    Q_PROPERTY(QString statusSymbol READ statusSymbol NOTIFY changed)
    Q_PROPERTY(int statusTint READ statusTint NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)

public:
    explicit LibrarySafetyPresenter(AppState &app, QObject *parent = nullptr);

    QString found() const;
    LibraryModel *libraries() { return &m_libraries; }
    SafetyStepModel *steps() { return &m_steps; }
    QString takeTitle() const;
    bool canTake() const { return !m_app.busy(); }
    /// How many snapshots there are; nothing ahead of the first.
    QString taken() const;
    QStringList promises() const;
    QString statusSymbol() const;
    int statusTint() const { return m_app.isSeratoRunning() ? Tint::Warn : Tint::Good; }
    QString status() const;

    /// Scans the library of a row.
    Q_INVOKABLE void scan(int row);
    Q_INVOKABLE void takeFirstSnapshot();

Q_SIGNALS:
    void changed();

private:
    void readAll();

    AppState &m_app;
    LibraryModel m_libraries;
    SafetyStepModel m_steps;
};

} // namespace tarnwick
