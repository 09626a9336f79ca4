#include "screens/components/long_run.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>

namespace tarnwick {

namespace {

/// A window that isn't shown draws no picture.
constexpr std::chrono::milliseconds longestWait{100};

} // namespace

void LongRun::start(QQuickItem *button, const QJSValue &work)
{
    for (const Job &job : std::as_const(m_jobs)) {
        if (job.button == button)
            return;
    }
    button->setProperty("down", true);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_jobs.enqueue({button, work});
    if (m_jobs.size() == 1)
        awaitPicture(button);
}

void LongRun::awaitPicture(QQuickItem *button)
{
    auto *waiting = new QTimer(this);
    waiting->setSingleShot(true);
    connect(waiting, &QTimer::timeout, this, [this, waiting] {
        waiting->deleteLater();
        runNext();
    });
    waiting->start(longestWait);
    if (QQuickWindow *window = button ? button->window() : nullptr) {
        connect(window, &QQuickWindow::frameSwapped, waiting, [waiting] { waiting->start(0); });
        window->update();
    }
}

void LongRun::runNext()
{
    const Job job = m_jobs.head();
    job.work.call();
    m_jobs.dequeue();
    QGuiApplication::restoreOverrideCursor();
    if (job.button)
        job.button->setProperty("down", QVariant());
    if (!m_jobs.isEmpty())
        awaitPicture(m_jobs.head().button);
}

} // namespace tarnwick
