#pragma once

#include "platform/fault_gate.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <functional>
#include <optional>

#include <unistd.h>

/// Interrupts an operation on files at every one of its system calls, and looks at what it left.
///
/// For a writer of any kind: describe the operation as an Interruption in a function `cases()` of
/// the test, run `failAtEachCall` and `killAtEachCall` on it from a test function, and end the file
/// with TARNWICK_FAULT_LOOP_MAIN instead of Qt's macro, since a killed run is a process of its own:
/// the test's executable, started once more.
namespace tarnwick::testing {

/// An operation, told three times over one folder, which is new and empty for each run.
struct Interruption
{
    QString name;
    std::function<void(const QString &folder)> prepare; ///< makes what the operation works on
    std::function<void(const QString &folder)> act;     ///< the operation; its failure is no matter
    /// What is wrong in the folder afterwards, in words; empty if nothing is.
    std::function<QString(const QString &folder)> trouble;
    /// What the process does in peace ahead of the operation; may be empty.
    std::function<void(const QString &folder)> arrive = nullptr;
};

/// How a loop over all calls went.
struct FaultReport
{
    int calls = 0;   ///< how many system calls were interrupted, one in each run
    QString trouble; ///< what was wrong after the first bad run, and which call that was
};

/// Where the folders of the runs are made: in memory where there is such a place, since hundreds of
/// runs flush to the device what they write.
inline QString placeForRuns()
{
    const QString memory = QStringLiteral("/dev/shm");
    const QString place = QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    return place + QStringLiteral("/tarnwick-run-XXXXXX");
}

/// Whether one call fails, or that one and all behind it, as where a disk goes away.
enum class Fault { Once, Lasting };

/// Lets the n-th call fail with an errno value, for n = 1, 2, 3 … until the operation has no more.
inline FaultReport failAtEachCall(const Interruption &what, int error, Fault fault = Fault::Once)
{
    FaultReport report;
    for (;; ++report.calls) {
        QTemporaryDir folder(placeForRuns());
        what.prepare(folder.path());
        if (what.arrive)
            what.arrive(folder.path());
        int left = report.calls;
        QString call;
        {
            platform::ScopedFaults faults(
                [&](platform::FileOperation operation, const QString &path) {
                    if (left-- == 0)
                        call = QStringLiteral("operation %1 on %2").arg(int(operation)).arg(path);
                    const bool fails = fault == Fault::Lasting ? left < 0 : left == -1;
                    return fails ? error : 0;
                });
            what.act(folder.path());
        }
        if (call.isEmpty())
            return report;
        report.trouble = what.trouble(folder.path());
        if (!report.trouble.isEmpty()) {
            report.trouble += QStringLiteral(" (after a failed ") + call + u')';
            return report;
        }
    }
}

/// Ends the process without warning ahead of the n-th call, for n = 1, 2, 3 … likewise.
inline FaultReport killAtEachCall(const Interruption &what)
{
    FaultReport report;
    for (;; ++report.calls) {
        QTemporaryDir folder(placeForRuns());
        what.prepare(folder.path());
        QProcess victim;
        victim.setProcessChannelMode(QProcess::ForwardedChannels);
        victim.start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("--killed-at"), QString::number(report.calls), what.name,
                      folder.path()});
        if (!victim.waitForFinished())
            report.trouble = QStringLiteral("the victim did not end");
        else if (victim.exitStatus() == QProcess::NormalExit && victim.exitCode() == 0)
            return report;
        else if (victim.exitStatus() == QProcess::NormalExit)
            report.trouble = QStringLiteral("the victim ended by itself, in trouble");
        else
            report.trouble = what.trouble(folder.path());
        if (!report.trouble.isEmpty()) {
            report.trouble += QStringLiteral(" (killed ahead of call %1)").arg(report.calls + 1);
            return report;
        }
    }
}

/// The life of a victim, if the arguments ask for one: 0 where it outlived the operation.
inline std::optional<int> runAsVictim(const QStringList &arguments,
                                      const QList<Interruption> &cases)
{
    if (arguments.value(1) != QStringLiteral("--killed-at"))
        return std::nullopt;
    int left = arguments.value(2).toInt();
    for (const Interruption &what : cases) {
        if (what.name != arguments.value(3))
            continue;
        if (what.arrive)
            what.arrive(arguments.value(4));
        const platform::ScopedFaults faults([&](platform::FileOperation, const QString &) {
            if (left-- == 0)
                ::kill(::getpid(), SIGKILL);
            return 0;
        });
        what.act(arguments.value(4));
        return 0;
    }
    return 2;
}

} // namespace tarnwick::testing

/// The main() of a test whose operations are interrupted; `cases` names a function that gives them.
#define TARNWICK_FAULT_LOOP_MAIN(TestClass, cases)                                                 \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        QCoreApplication application(argc, argv);                                                  \
        if (const auto status =                                                                    \
                tarnwick::testing::runAsVictim(QCoreApplication::arguments(), cases()))            \
            return *status;                                                                        \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
