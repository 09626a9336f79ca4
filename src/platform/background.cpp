#include "platform/background.h"

#include <QCoreApplication>
#include <QEvent>
#include <QRunnable>
#include <QThreadPool>

#include <atomic>

namespace tarnwick::platform {

namespace {

/// What one thread did before it gave something away, another sees once it has taken it. The locks
/// of the pools and of the event queue see to that already, but those are in a library that the
/// thread sanitizer doesn't look into: this says the same where it does.
class HandOver
{
public:
    void give() { m_count.fetch_add(1, std::memory_order_acq_rel); }
    void take() const { (void)m_count.load(std::memory_order_acquire); }

private:
    std::atomic<quint64> m_count{0};
};

HandOver toBackground;
HandOver toMainThread;

class Task : public QRunnable
{
public:
    explicit Task(std::function<void()> work)
        : m_work(std::move(work))
    {}

    void run() override
    {
        toBackground.take();
        m_work();
    }

private:
    const std::function<void()> m_work;
};

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

/// What the main thread is to do.
class Call : public QEvent
{
public:
    explicit Call(std::function<void()> call)
        : QEvent(User)
        , m_call(std::move(call))
    {}

    void operator()() const { m_call(); }

private:
    const std::function<void()> m_call;
};

/// An object of the main thread that outlives every background task, and gets nothing but calls.
class Receiver : public QObject
{
public:
    bool event(QEvent *event) override
    {
        toMainThread.take();
        if (event->type() != QEvent::User)
            return QObject::event(event);
        (*static_cast<const Call *>(event))();
        return true;
    }
};

Receiver *mainThreadReceiver(QThread *mainThread)
{
    static Receiver *const receiver = [mainThread] {
        auto *made = new Receiver;
        made->moveToThread(mainThread);
        return made;
    }();
    return receiver;
}

} // namespace

void startInBackground(Priority priority, std::function<void()> work)
{
    auto *const task = new Task(std::move(work));
    toBackground.give();
    poolFor(priority).start(task); // which deletes it at its end
}

void callOnMainThread(std::function<void()> call)
{
    // A task may end while the process does.
    const auto *application = QCoreApplication::instance();
    if (application == nullptr)
        return;
    auto *const event = new Call(std::move(call));
    toMainThread.give();
    QCoreApplication::postEvent(mainThreadReceiver(application->thread()), event); // deletes it
}

} // namespace tarnwick::platform
