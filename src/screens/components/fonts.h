#pragma once

#include <QFont>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The fonts of the window: Archivo where that family is installed, else the system's font. The
/// families are asked for once in a process.
class Fonts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool hasArchivo READ hasArchivo CONSTANT)

public:
    using QObject::QObject;

    static bool hasArchivo();

    /// The face of Archivo for a weight of QFont's scale: anything that is not medium, semibold,
    /// bold or heavier is "Archivo-Regular".
    Q_INVOKABLE static QString archivoName(int weight);

    /// A font of `size` points of the layout, at any density of the screen. `tracking` is added
    /// between letters, in the same points.
    Q_INVOKABLE static QFont font(qreal size, int weight, qreal tracking);

    /// The same, with every letter shown as a capital.
    Q_INVOKABLE static QFont capitals(qreal size, int weight, qreal tracking);

    /// What `font` gives, with the family settled by the caller.
    static QFont fontOf(bool archivo, qreal size, int weight, qreal tracking);
};

} // namespace tarnwick
