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
QObject *mainThreadReceiver()
{
    static QObject *const receiver = [] {
        auto *made = new QObject;
        made->moveToThread(QCoreApplication::instance()->thread());
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
    QMetaObject::invokeMethod(mainThreadReceiver(), std::move(call), Qt::QueuedConnection);
}

} // namespace tarnwick::platform
