#pragma once

#include "platform/fault_gate.h"
#include "platform/running_programs.h"
#include "support/child_process.h"
#include "support/power_cut.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <functional>
#include <optional>

#include <unistd.h>

/// Interrupts an operation on files at every one of its system calls, and looks at what it left.
///
/// For a writer of any kind: describe the operation as an Interruption in a function `cases()` of
/// the test, run `interruptInEveryWay` on it from a test function, and end the file with
/// TARNWICK_FAULT_LOOP_MAIN instead of Qt's macro, since a killed run is a process of its own: the
/// test's executable, started once more.
///
/// A killed run is looked at twice and more: as the process left its files, and as a disk has them
/// that forgot, when the power went at that moment, what was not flushed.
///
/// Each call is interrupted in each run of the tests, by a failure, by a disk that goes away and by
/// an end of the process. With TARNWICK_FAULTS=long it fails in all ways, not in one of them.
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
    /// The same as `trouble` where one call failed and all others went well; may be empty.
    std::function<QString(const QString &folder)> troubleIfFailed = nullptr;
};

/// Of all runs of the process.
inline int interruptionCount = 0;

/// What the disk has lost while a run is looked at.
inline std::optional<Loss> presentLoss;

/// Whether what is written plainly may be whole in its youngest file alone. No flush orders the
/// files of a snapshot, of which the record is the youngest.
inline bool mayPlainFilesLackBytes()
{
    return presentLoss == Loss::OlderBytes;
}

/// The paths at which calls failed in the run that is looked at; empty where the process was
/// killed.
inline QStringList failedPaths;

/// Whether a call failed at a path that holds these words.
inline bool hasFailedAt(const QString &words)
{
    return !failedPaths.filter(words).isEmpty();
}

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

/// What a call fails with.
inline const QList<int> &faultErrors()
{
    static const QList<int> errors = {EIO, ENOSPC, EACCES, EROFS};
    return errors;
}

/// Whether everything is tried, which takes minutes.
inline bool isLongForm()
{
    return qEnvironmentVariable("TARNWICK_FAULTS") == QStringLiteral("long");
}

/// Lets the n-th call fail, for n = 1, 2, 3 … until the operation has no more, with one of the
/// errno values after the other.
inline FaultReport failAtEachCall(const Interruption &what, const QList<int> &errors,
                                  Fault fault = Fault::Once)
{
    FaultReport report;
    for (;; ++report.calls) {
        const int error = errors.at(report.calls % errors.size());
        QTemporaryDir folder(placeForRuns());
        failedPaths.clear();
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
                    if (fails)
                        failedPaths << path;
                    return fails ? error : 0;
                });
            what.act(folder.path());
        }
        if (call.isEmpty())
            return report;
        ++interruptionCount;
        const bool isMild = fault == Fault::Once && what.troubleIfFailed;
        report.trouble = (isMild ? what.troubleIfFailed : what.trouble)(folder.path());
        if (!report.trouble.isEmpty()) {
            report.trouble += QStringLiteral(" (after a failed %1: errno %2)").arg(call).arg(error);
            return report;
        }
    }
}

inline FaultReport failAtEachCall(const Interruption &what, int error, Fault fault = Fault::Once)
{
    return failAtEachCall(what, QList<int>{error}, fault);
}

namespace detail {

/// What is wrong where a process was killed ahead of its n-th call, on a disk that keeps all and on
/// one that doesn't.
inline QString troubleOfKilled(const Interruption &what, const QString &folder, int call)
{
    namespace fs = std::filesystem;
    const Unflushed unflushed = takeUnflushed(folder);
    const fs::path place = folder.toStdString();
    const fs::path kept = place.string() + ".kept";
    const bool losesNothing = unflushed.isNothing(treeOf(folder));
    if (!losesNothing)
        fs::copy(place, kept, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    QString trouble = what.trouble(folder);
    ++interruptionCount;
    for (int i = 0; i < allLosses().size() && !losesNothing && trouble.isEmpty(); ++i) {
        if (!isLongForm() && i != call % allLosses().size())
            continue;
        fs::remove_all(place);
        fs::copy(kept, place, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
        loseUnflushed(folder, unflushed, allLosses().at(i));
        presentLoss = allLosses().at(i);
        trouble = what.trouble(folder);
        presentLoss.reset();
        ++interruptionCount;
        if (!trouble.isEmpty())
            trouble += QStringLiteral(" (the power went, loss %1)").arg(i);
    }
    fs::remove_all(kept);
    return trouble;
}

} // namespace detail

/// Ends the process without warning ahead of the n-th call, for n = 1, 2, 3 … likewise, and takes
/// the power away with it.
inline FaultReport killAtEachCall(const Interruption &what)
{
    FaultReport report;
    for (;; ++report.calls) {
        QTemporaryDir folder(placeForRuns());
        failedPaths.clear();
        what.prepare(folder.path());
        ChildProcess victim({QCoreApplication::applicationFilePath(), QStringLiteral("--killed-at"),
                             QString::number(report.calls), what.name, folder.path()});
        const std::optional<int> exitCode = victim.exitCode();
        if (exitCode == 0)
            return report;
        report.trouble = exitCode ? QStringLiteral("the victim ended by itself, in trouble")
                                  : detail::troubleOfKilled(what, folder.path(), report.calls);
        if (!report.trouble.isEmpty()) {
            report.trouble += QStringLiteral(" (killed ahead of call %1)").arg(report.calls + 1);
            return report;
        }
    }
}

/// Interrupts every call in every way. The reports of what was tried; the last may tell of trouble.
inline QList<FaultReport> interruptInEveryWay(const Interruption &what)
{
    QList<std::function<FaultReport()>> ways;
    const auto addFailures = [&](const QList<int> &errors, Fault fault) {
        if (!isLongForm())
            ways << [&what, errors, fault] { return failAtEachCall(what, errors, fault); };
        for (const int error : isLongForm() ? errors : QList<int>())
            ways << [&what, error, fault] { return failAtEachCall(what, error, fault); };
    };
    addFailures(faultErrors(), Fault::Once);
    addFailures({ENODEV, ENOSPC, EROFS}, Fault::Lasting);
    ways << [&what] { return killAtEachCall(what); };
    QList<FaultReport> reports;
    for (const auto &way : ways) {
        reports << way();
        if (!reports.last().trouble.isEmpty())
            break;
    }
    return reports;
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
        FlushWatch watch(arguments.value(4));
        const platform::ScopedFaults faults(
            [&](platform::FileOperation operation, const QString &path) {
                if (left-- == 0) {
                    tellUnflushed(arguments.value(4), watch.unflushed());
                    ::kill(::getpid(), SIGKILL);
                }
                watch.note(operation, path);
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
        const tarnwick::platform::ScopedOwnPrograms programs;                                      \
        if (const auto status =                                                                    \
                tarnwick::testing::runAsVictim(QCoreApplication::arguments(), cases()))            \
            return *status;                                                                        \
        TestClass test;                                                                            \
        const int status = QTest::qExec(&test, argc, argv);                                        \
        std::printf("%d interruptions\n", tarnwick::testing::interruptionCount);                   \
        return status;                                                                             \
    }
