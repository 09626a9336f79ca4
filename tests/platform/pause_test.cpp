#include "platform/pause.h"

#include <QElapsedTimer>
#include <QTest>

using namespace std::chrono_literals;
using namespace tarnwick::platform;

class PauseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void callsOnceThePauseIsOver()
    {
        QObject owner;
        bool called = false;
        QElapsedTimer timer;
        timer.start();
        callAfter(30ms, &owner, [&] { called = true; });
        QVERIFY(!called);
        QTRY_VERIFY(called);
        QVERIFY(timer.elapsed() >= 30);
    }

    void callsNobodyWhoHasGone()
    {
        bool called = false;
        auto owner = std::make_unique<QObject>();
        callAfter(1ms, owner.get(), [&] { called = true; });
        owner.reset();
        QTest::qWait(20);
        QVERIFY(!called);
    }

    void aTestEndsPausesOneByOne()
    {
        ScopedPauses pauses;
        QObject owner;
        QStringList calls;
        callAfter(1ms, &owner, [&] { calls += QStringLiteral("first"); });
        callAfter(3h, &owner, [&] { calls += QStringLiteral("second"); });
        QTest::qWait(20);
        QVERIFY(calls.isEmpty());
        QCOMPARE(pauses.underWay(), (QList<std::chrono::milliseconds>{1ms, 3h}));
        QVERIFY(pauses.endNext());
        QCOMPARE(calls, QStringList(QStringLiteral("first")));
        QVERIFY(pauses.endNext());
        QVERIFY(!pauses.endNext());
        QCOMPARE(calls.last(), QStringLiteral("second"));
    }

    void whatATestEndsMayBeginTheNextPause()
    {
        ScopedPauses pauses;
        QObject owner;
        callAfter(1ms, &owner, [&] { callAfter(2ms, &owner, [] {}); });
        QVERIFY(pauses.endNext());
        QCOMPARE(pauses.underWay(), QList<std::chrono::milliseconds>{2ms});
    }

    void aHeldPauseOfSomebodyWhoHasGoneIsNone()
    {
        ScopedPauses pauses;
        auto owner = std::make_unique<QObject>();
        callAfter(1ms, owner.get(), [] {});
        owner.reset();
        QVERIFY(pauses.underWay().isEmpty());
        QVERIFY(!pauses.endNext());
    }
};

QTEST_GUILESS_MAIN(PauseTest)
#include "pause_test.moc"
