#pragma once

#include <QJSValue>
#include <QPointer>
#include <QQueue>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// Runs what keeps the main thread for long: first lets the window show that the button is pressed
/// and that the pointer is busy, then runs it, then lets go of the button.
class LongRun : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// `work` is called after the window's next picture. What it is about has to be settled by
    /// then: the rows of a list may be others when it runs.
    Q_INVOKABLE void start(QQuickItem *button, const QJSValue &work);

private:
    struct Job
    {
        QPointer<QQuickItem> button;
        QJSValue work;
    };

    void awaitPicture(QQuickItem *button);
    void runNext();

    QQueue<Job> m_jobs;
};

} // namespace tarnwick
