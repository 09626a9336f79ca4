#pragma once

#include "foundation/screen.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What stands in the place of a screen that is still to come.
class ComingSoonPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString symbol READ symbol CONSTANT)
    Q_PROPERTY(QString note READ note CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    explicit ComingSoonPresenter(Screen screen, QObject *parent = nullptr)
        : QObject(parent)
        , m_info(infoOf(screen))
    {}

    QString title() const { return m_info.title; }
    QString symbol() const { return m_info.symbol; }
    /// When the screen is due.
    QString note() const { return m_info.phaseNote; }
    QString text() const;

private:
    const ScreenInfo &m_info;
};

} // namespace tarnwick
