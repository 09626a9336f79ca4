#include "platform/fault_gate.h"

#include <QTest>

#include <cerrno>
#include <thread>

using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

class FaultGateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void letsEverythingHappenWithoutAHook();
    void asksTheHookForItsLife();
    void asksOneAtATime();
};

void FaultGateTest::letsEverythingHappenWithoutAHook()
{
    QCOMPARE(faultFor(FileOperation::Write, u"/a"_s), 0);
}

void FaultGateTest::asksTheHookForItsLife()
{
    QList<std::pair<FileOperation, QString>> asked;
    {
        const ScopedFaults faults([&](FileOperation operation, const QString &path) {
            asked.append({operation, path});
            return operation == FileOperation::Flush ? EIO : 0;
        });
        QCOMPARE(faultFor(FileOperation::Open, u"/a"_s), 0);
        QCOMPARE(faultFor(FileOperation::Flush, u"/b"_s), EIO);
    }
    QCOMPARE(faultFor(FileOperation::Flush, u"/c"_s), 0);
    QCOMPARE(asked, (QList<std::pair<FileOperation, QString>>{{FileOperation::Open, u"/a"_s},
                                                              {FileOperation::Flush, u"/b"_s}}));
}

void FaultGateTest::asksOneAtATime()
{
    constexpr int each = 5000;
    int count = 0;
    const ScopedFaults faults([&](FileOperation, const QString &) {
        ++count;
        return 0;
    });
    const auto ask = [] {
        for (int i = 0; i < each; ++i)
            (void)faultFor(FileOperation::Read, u"/a"_s);
    };
    std::thread other(ask);
    ask();
    other.join();
    QCOMPARE(count, 2 * each);
}

QTEST_GUILESS_MAIN(FaultGateTest)
#include "fault_gate_test.moc"
