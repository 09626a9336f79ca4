#include "platform/end_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <utility>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tarnwick::platform {

namespace {

/// Written by the signal's handler, which may do little else, and read by the event loop.
std::array<int, 2> wire = {-1, -1};

void passOn(int)
{
    const int before = errno;
    const char mark = '!';
    [[maybe_unused]] const ssize_t written = ::write(wire[0], &mark, 1);
    errno = before;
}

} // namespace

void onEndSignal(std::function<void()> end)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, wire.data()) != 0)
        return; // a signal ends the process then, as it would any other
    for (const int side : wire)
        ::fcntl(side, F_SETFD, FD_CLOEXEC);
    auto *ear = new QSocketNotifier(wire[1], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(ear, &QSocketNotifier::activated, ear, [end = std::move(end)] {
        char mark = 0;
        if (::read(wire[1], &mark, 1) == 1)
            end();
    });
    struct sigaction action = {};
    action.sa_handler = passOn;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
}

} // namespace tarnwick::platform
