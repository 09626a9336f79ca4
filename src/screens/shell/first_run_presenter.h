#pragma once

#include "app/app_state.h"
#include "screens/shell/location_model.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The view in which the user chooses a library.
class FirstRunPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool seratoRunning READ isSeratoRunning NOTIFY seratoRunningChanged)
    Q_PROPERTY(bool hasLocations READ hasLocations NOTIFY locationsChanged)
    Q_PROPERTY(tarnwick::LocationModel *locations READ locations CONSTANT)
    Q_PROPERTY(QStringList promises READ promises CONSTANT)

public:
    explicit FirstRunPresenter(AppState &app, QObject *parent = nullptr);

    bool isSeratoRunning() const { return m_app.isSeratoRunning(); }
    bool hasLocations() const { return m_locations.rowCount() > 0; }
    LocationModel *locations() { return &m_locations; }
    QStringList promises() const;

    /// Scans the library of a row.
    Q_INVOKABLE void scan(int row);

Q_SIGNALS:
    void seratoRunningChanged();
    void locationsChanged();

private:
    void readLocations();

    AppState &m_app;
    LocationModel m_locations;
};

} // namespace tarnwick
