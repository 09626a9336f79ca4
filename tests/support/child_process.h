#pragma once

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QStringList>

#include <cerrno>
#include <csignal>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace tarnwick::testing {

/// A process that ends with this object at the latest, with the environment and the channels of
/// this one unless its output is kept. No `QProcess`: the thread sanitizer takes that one's way of
/// starting a child for a fork of its own, and is blind to what the parent hands between threads
/// from then on.
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
            if (::pipe(pipe) != 0)
                qFatal("no pipe");
            for (const int end : pipe)
                ::fcntl(end, F_SETFD, FD_CLOEXEC);
            ::posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
        }
        if (::posix_spawn(&m_id, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
            qFatal("can't start %s", arguments[0]);
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
        for (QDeadlineTimer patience(60'000);; ::usleep(100)) {
            const pid_t ended = ::waitpid(m_id, &status, WNOHANG);
            if (ended == m_id)
                break;
            if (patience.hasExpired() || (ended < 0 && errno != EINTR))
                qFatal("a process doesn't end");
        }
        m_id = 0;
        return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
    }

    /// The next line of the output that is kept, without its end; what there is of it where the
    /// process goes on without a word.
    QByteArray readLine()
    {
        QByteArray line;
        char byte = 0;
        pollfd output{m_output, POLLIN, 0};
        while (::poll(&output, 1, 60'000) == 1 && ::read(m_output, &byte, 1) == 1 && byte != '\n')
            line += byte;
        return line;
    }

private:
    pid_t m_id = 0;
    int m_output = -1;
};

} // namespace tarnwick::testing
