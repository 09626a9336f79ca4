#include "platform/background.h"

#include "platform/ask.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <atomic>

using namespace tarnwick::platform;

class BackgroundTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void worksElsewhereAndAnswersOnTheMainThread_data();
    void worksElsewhereAndAnswersOnTheMainThread();
    void leavesTheAnswerOutForAnOwnerThatHasGone();
    void startsManyTasksAtOnce();
    void handsCallsToTheMainThreadInOrder();
    void waitsForAnAnswerNoLongerThanItsCallerWants();
};

void BackgroundTest::worksElsewhereAndAnswersOnTheMainThread_data()
{
    QTest::addColumn<Priority>("priority");
    QTest::newRow("somebody waits") << Priority::UserInitiated;
    QTest::newRow("nobody waits") << Priority::Utility;
}

void BackgroundTest::worksElsewhereAndAnswersOnTheMainThread()
{
    QFETCH(Priority, priority);
    QObject owner;
    QThread *workedOn = nullptr;
    QThread *answeredOn = nullptr;
    int answer = 0;
    runInBackground(
        priority, &owner,
        [&] {
            workedOn = QThread::currentThread();
            return 42;
        },
        [&](int value) {
            answeredOn = QThread::currentThread();
            answer = value;
        });
    QTRY_COMPARE(answer, 42);
    QVERIFY(workedOn != thread());
    QCOMPARE(answeredOn, thread());
}

void BackgroundTest::leavesTheAnswerOutForAnOwnerThatHasGone()
{
    auto owner = std::make_unique<QObject>();
    QSemaphore gone;
    std::atomic<bool> worked{false};
    bool answered = false;
    runInBackground(
        Priority::UserInitiated, owner.get(),
        [&] {
            gone.acquire();
            worked = true;
            return 0;
        },
        [&](int) { answered = true; });
    owner.reset();
    gone.release();
    QTRY_VERIFY(worked);
    bool passed = false;
    callOnMainThread([&] { passed = true; });
    QTRY_VERIFY(passed);
    QTest::qWait(20);
    QVERIFY(!answered);
}

void BackgroundTest::startsManyTasksAtOnce()
{
    constexpr int tasks = 16;
    QSemaphore started;
    QSemaphore finish;
    for (int i = 0; i < tasks; ++i) {
        startInBackground(Priority::UserInitiated, [&] {
            started.release();
            finish.acquire();
            started.release();
        });
    }
    QVERIFY(started.tryAcquire(tasks, 10'000));
    finish.release(tasks);
    QVERIFY(started.tryAcquire(tasks, 10'000));
}

void BackgroundTest::handsCallsToTheMainThreadInOrder()
{
    QList<int> calls;
    startInBackground(Priority::Utility, [&] {
        for (int i = 0; i < 3; ++i)
            callOnMainThread([&calls, i] { calls.append(i); });
    });
    QTRY_COMPARE(calls, (QList<int>{0, 1, 2}));
}

void BackgroundTest::waitsForAnAnswerNoLongerThanItsCallerWants()
{
    auto answer = ask([] { return QThread::currentThread(); });
    QVERIFY(answer.get() != thread());
    const auto never = std::make_shared<QSemaphore>();
    auto late = ask([never] {
        never->acquire();
        return 1;
    });
    QCOMPARE(late.wait_for(std::chrono::milliseconds(1)), std::future_status::timeout);
    never->release();
    QCOMPARE(late.get(), 1);
}

QTEST_GUILESS_MAIN(BackgroundTest)
#include "background_test.moc"
