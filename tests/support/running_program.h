#pragma once

#include "support/child_process.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

namespace tarnwick::testing {

/// A real process of exactly this name, alive for the guard's life.
class RunningProgram
{
public:
    explicit RunningProgram(const QString &name)
    {
        const QString program = m_folder.filePath(name);
        if (!QFile::copy(QStringLiteral("/bin/sleep"), program))
            qFatal("can't make a program of that name");
        m_process.emplace(QStringList{program, QStringLiteral("60")});
        if (!hasTakenItsName(name))
            qFatal("can't start a program of that name");
    }
    RunningProgram(const RunningProgram &) = delete;
    RunningProgram &operator=(const RunningProgram &) = delete;

private:
    /// A started child bears its parent's name until it has loaded its own program.
    bool hasTakenItsName(const QString &name)
    {
#ifdef Q_OS_LINUX
        QFile comm(QStringLiteral("/proc/%1/comm").arg(m_process->id()));
        return QTest::qWaitFor([&] {
            comm.close();
            return comm.open(QIODevice::ReadOnly) &&
                   comm.readAll().trimmed() == name.toUtf8().first(qMin(name.toUtf8().size(), 15));
        });
#else
        Q_UNUSED(name)
        return true;
#endif
    }

    QTemporaryDir m_folder;
    std::optional<ChildProcess> m_process;
};

} // namespace tarnwick::testing
