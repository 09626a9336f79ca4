#include "platform/background.h"

#include <QCoreApplication>
#include <QThreadPool>

namespace tarnwick::platform {

namespace {

/// More than the program ever starts at once: a scan that waits for a sleeping drive must not hold
/// up an export.
constexpr int threadsPerPool = 32;

QThreadPool &poolFor(Priority priority)
{
    // Never destroyed: the process ends without waiting for what still runs.
    static auto *const pools = [] {
        auto *made = new QThreadPool[2];
        for (int i = 0; i < 2; ++i)
            made[i].setMaxThreadCount(threadsPerPool);
        made[int(Priority::Utility)].setThreadPriority(QThread::LowPriority);
        return made;
    }();
    return pools[int(priority)];
}

/// An object of the main thread that outlives every background task.
QObject *mainThreadReceiver(QThread *mainThread)
{
    static QObject *const receiver = [mainThread] {
        auto *made = new QObject;
        made->moveToThread(mainThread);
        return made;
    }();
    return receiver;
}

} // namespace

void startInBackground(Priority priority, std::function<void()> work)
{
    poolFor(priority).start(std::move(work));
}

void callOnMainThread(std::function<void()> call)
{
    // A task may end while the process does.
    if (const auto *application = QCoreApplication::instance())
        QMetaObject::invokeMethod(mainThreadReceiver(application->thread()), std::move(call),
                                  Qt::QueuedConnection);
}

} // namespace tarnwick::platform
