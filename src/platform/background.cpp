#include "platform/background.h"

#include <QCoreApplication>
#include <QEvent>
#include <QRunnable>
#include <QThreadPool>

#include <atomic>

namespace tarnwick::platform {

namespace {

/// What one thread did before it gave an object away, another sees once it has taken that. The
/// locks of the pools and of the event queue see to that already, but those are in a library that
/// the thread sanitizer doesn't look into: this says the same where it does.
class HandOver
{
public:
    void give() { m_isGiven.store(true, std::memory_order_release); }
    void take() const { (void)m_isGiven.load(std::memory_order_acquire); }

private:
    std::atomic<bool> m_isGiven{false};
};

class Task : public QRunnable
{
public:
    explicit Task(std::function<void()> work)
        : m_work(std::move(work))
    {
        m_handOver.give();
    }

    void run() override
    {
        m_handOver.take();
        m_work();
    }

private:
    const std::function<void()> m_work;
    HandOver m_handOver;
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
    {
        m_handOver.give();
    }

    ~Call() override { m_handOver.take(); } // not run where the application ends first

    void run() const
    {
        m_handOver.take();
        m_call();
    }

private:
    const std::function<void()> m_call;
    HandOver m_handOver;
};

/// An object of the main thread that outlives every background task.
class Receiver : public QObject
{
protected:
    void customEvent(QEvent *event) override { static_cast<const Call *>(event)->run(); }
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
    poolFor(priority).start(new Task(std::move(work))); // which deletes it at its end
}

void callOnMainThread(std::function<void()> call)
{
    // A task may end while the process does.
    const auto *application = QCoreApplication::instance();
    if (application == nullptr)
        return;
    QCoreApplication::postEvent(mainThreadReceiver(application->thread()),
                                new Call(std::move(call))); // deletes it
}

} // namespace tarnwick::platform
