#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace tarnwick::platform {

/// Keeps a program to one process for each scope, and lets later starts call the first.
///
/// 1. Who holds the lock on a file of the runtime folder is the first. The lock goes with its
///    process, however that ends, so nothing stale can stand in the way.
/// 2. The first owns a socket beside the file. A later start sends it one message and is answered.
/// 3. While no answer comes, a later start goes on trying for the lock: the first may be ending.
/// 4. Without a runtime folder, or where it knows no locks, every start counts as the first.
class OneInstance
{
public:
    enum class Role { First, HandedOver, Unanswered };

    /// Settles the role: at once for the first, else within `patience`. Needs no application object
    /// and no message bus. `scope` is any text, such as the folder that must have one writer.
    explicit OneInstance(const QString &scope,
                         std::chrono::milliseconds patience = std::chrono::seconds(3));
    ~OneInstance();
    OneInstance(const OneInstance &) = delete;
    OneInstance &operator=(const OneInstance &) = delete;

    Role role() const { return m_role; }

    /// From now on later starts are answered, in this thread's event loop, and each calls `called`.
    /// What the desktop granted them for coming to the front stands in the environment then.
    void answer(std::function<void()> called);

    /// From now on the next start is the first. For a process that ends without destructors.
    void leave();

private:
    enum class Lock { Taken, HeldByOther, Unknown };

    Lock tryLock();
    void answerAll();

    QByteArray m_path; ///< of the lock; empty without a runtime folder
    int m_lock = -1;
    int m_socket = -1;
    Role m_role = Role::First;
    std::function<void()> m_called;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tarnwick::platform
