#include "platform/end_signals.h"

#include <QTest>

#include <csignal>

namespace tarnwick {

/// That a signal is passed on to the event loop once, and that the next one is the system's.
class EndSignalsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        platform::onEndSignal([this] { ++m_calls; });
    }

    void aSignalIsHeardByTheEventLoop_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("end of a session") << SIGTERM;
        QTest::newRow("Ctrl+C") << SIGINT;
        QTest::newRow("a terminal that closes") << SIGHUP;
    }

    void aSignalIsHeardByTheEventLoop()
    {
        QFETCH(int, signal);
        m_calls = 0;
        QCOMPARE(std::raise(signal), 0);
        QCOMPARE(m_calls, 0);
        QTRY_COMPARE(m_calls, 1);
        struct sigaction next = {};
        ::sigaction(signal, nullptr, &next);
        QVERIFY(next.sa_handler == SIG_DFL);
    }

private:
    int m_calls = 0;
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::EndSignalsTest)
#include "end_signals_test.moc"
