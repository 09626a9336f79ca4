#pragma once

#include <QByteArrayList>
#include <QStringList>

#include <cerrno>
#include <csignal>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace tarnwick::testing {

/// A process that ends with this object at the latest, with the environment and the channels of
/// this one unless its output is kept. Started by the system's own call, since a `QProcess` shares
/// its parent's memory for a moment: after that the thread sanitizer is blind to what the parent
/// hands between threads.
class ChildProcess
{
public:
    enum class Output { Shared, Kept };

    explicit ChildProcess(const QStringList &command, Output output = Output::Shared)
    {
        QByteArrayList words;
        for (const QString &word : command)
            words.append(word.toUtf8());
        std::vector<char *> arguments;
        for (QByteArray &word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        int pipe[2] = {-1, -1};
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        if (output == Output::Kept) {
            if (::pipe2(pipe, O_CLOEXEC) != 0)
                qFatal("no pipe");
            ::posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
        }
        if (::posix_spawn(&m_id, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
            qFatal("can't start a process");
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(pipe[1]);
        m_output = pipe[0];
    }
    ~ChildProcess()
    {
        ::close(m_output);
        if (m_id == 0)
            return;
        ::kill(m_id, SIGKILL);
        (void)exitCode();
    }
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    pid_t id() const { return m_id; }

    /// Waits for the end; nothing where the process was killed. To be called once.
    std::optional<int> exitCode()
    {
        int status = 0;
        while (::waitpid(m_id, &status, 0) < 0 && errno == EINTR) {
        }
        m_id = 0;
        return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
    }

    /// The next line of the output that is kept, without its end. Waits for it.
    QByteArray readLine()
    {
        QByteArray line;
        char byte = 0;
        while (::read(m_output, &byte, 1) == 1 && byte != '\n')
            line += byte;
        return line;
    }

private:
    pid_t m_id = 0;
    int m_output = -1;
};

} // namespace tarnwick::testing
