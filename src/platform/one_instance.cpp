#include "platform/one_instance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarnwick::platform {

namespace {

/// By which a Wayland desktop lets a program come to the front that the user has just started.
constexpr auto tokenVariable = "XDG_ACTIVATION_TOKEN";
/// A message is this byte and the token; an answer is this byte.
constexpr char callMark = '!';
constexpr qsizetype longestMessage = 1024;
/// How long a later start waits for an answer before it tries the lock again, in milliseconds.
constexpr int roundTime = 100;

QByteArray lockPath(const QString &scope)
{
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    if (!folder.startsWith('/'))
        return {};
    const QByteArray name =
        QCryptographicHash::hash(scope.toUtf8(), QCryptographicHash::Sha256).toHex().first(16);
    return folder + "/tarnwick-" + name + ".lock";
}

QByteArray socketPath(const QByteArray &lock)
{
    return lock.chopped(5) + ".socket";
}

std::optional<sockaddr_un> addressOf(const QByteArray &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= qsizetype(sizeof address.sun_path))
        return std::nullopt;
    std::copy(path.begin(), path.end(), address.sun_path);
    return address;
}

/// A socket that messages can be sent to by its path; -1 where there can be none.
int socketAt(const QByteArray &path)
{
    const auto address = addressOf(path);
    if (!address)
        return -1;
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM, 0);
    if (socket < 0)
        return -1;
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    ::fcntl(socket, F_SETFL, O_NONBLOCK);
    // Left behind by a process of this name that was killed.
    ::unlink(path.constData());
    if (::bind(socket, reinterpret_cast<const sockaddr *>(&*address), sizeof *address) == 0)
        return socket;
    ::close(socket);
    return -1;
}

/// A later start that calls the first.
class Caller
{
public:
    explicit Caller(const QByteArray &lock)
        : m_path(socketPath(lock) + '.' + QByteArray::number(::getpid()))
        , m_first(addressOf(socketPath(lock)))
        , m_socket(socketAt(m_path))
    {}
    ~Caller()
    {
        if (m_socket < 0)
            return;
        ::close(m_socket);
        ::unlink(m_path.constData());
    }
    Caller(const Caller &) = delete;
    Caller &operator=(const Caller &) = delete;

    /// Sends a message and waits for a round. Several do no harm: they are answered as one.
    bool isAnswered()
    {
        const QByteArray message = (callMark + qgetenv(tokenVariable)).left(longestMessage);
        if (m_socket >= 0 && m_first)
            ::sendto(m_socket, message.constData(), size_t(message.size()), 0,
                     reinterpret_cast<const sockaddr *>(&*m_first), sizeof *m_first);
        pollfd answer = {m_socket, POLLIN, 0};
        return ::poll(&answer, 1, roundTime) == 1 && (answer.revents & POLLIN);
    }

private:
    QByteArray m_path;
    std::optional<sockaddr_un> m_first;
    int m_socket;
};

} // namespace

OneInstance::OneInstance(const QString &scope, std::chrono::milliseconds patience)
    : m_path(lockPath(scope))
{
    if (m_path.isEmpty())
        return;
    m_lock = ::open(m_path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    std::optional<Caller> caller;
    for (const QDeadlineTimer end(patience);;) {
        const Lock lock = tryLock();
        if (lock == Lock::Taken)
            m_socket = socketAt(socketPath(m_path));
        if (lock != Lock::HeldByOther)
            return;
        if (!caller)
            caller.emplace(m_path);
        if (caller->isAnswered()) {
            m_role = Role::HandedOver;
            return;
        }
        if (end.hasExpired()) {
            m_role = Role::Unanswered;
            return;
        }
    }
}

OneInstance::~OneInstance()
{
    leave();
}

void OneInstance::leave()
{
    m_notifier.reset();
    if (const int socket = std::exchange(m_socket, -1); socket >= 0) {
        ::unlink(socketPath(m_path).constData());
        ::close(socket);
    }
    // The file itself stays: who waits for it holds it open already.
    if (const int lock = std::exchange(m_lock, -1); lock >= 0)
        ::close(lock);
}

void OneInstance::answer(std::function<void()> called)
{
    m_called = std::move(called);
    if (m_socket < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { answerAll(); });
}

OneInstance::Lock OneInstance::tryLock()
{
    if (m_lock < 0)
        return Lock::Unknown;
    int result = 0;
    do
        result = ::flock(m_lock, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR);
    if (result == 0)
        return Lock::Taken;
    return errno == EWOULDBLOCK ? Lock::HeldByOther : Lock::Unknown;
}

void OneInstance::answerAll()
{
    std::array<char, size_t(longestMessage)> message;
    sockaddr_un sender = {};
    bool any = false;
    for (;;) {
        socklen_t size = sizeof sender;
        const ssize_t length = ::recvfrom(m_socket, message.data(), message.size(), 0,
                                          reinterpret_cast<sockaddr *>(&sender), &size);
        if (length < 0)
            break;
        if (length > 1)
            qputenv(tokenVariable, QByteArray(message.data() + 1, length - 1));
        ::sendto(m_socket, &callMark, 1, 0, reinterpret_cast<const sockaddr *>(&sender), size);
        any = true;
    }
    if (any)
        m_called();
}

} // namespace tarnwick::platform
