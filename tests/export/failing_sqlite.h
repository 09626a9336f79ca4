#pragma once

#include <QtGlobal>

#include <cerrno>

#include <sqlite3.h>
#include <unistd.h>

namespace tarnwick::testing {

/// A device that is full for so many writes of SQLite, from the n-th on, counted from 1.
class FullDeviceForSqlite
{
public:
    explicit FullDeviceForSqlite(int firstFailingWrite, int failingWrites = 1'000'000'000)
    {
        s_writes = 0;
        s_firstFailing = firstFailingWrite;
        s_failing = failingWrites;
        setCalls(asCall(&failingWrite), asCall(&failingPlacedWrite));
    }
    ~FullDeviceForSqlite() { setCalls(nullptr, nullptr); }
    FullDeviceForSqlite(const FullDeviceForSqlite &) = delete;
    FullDeviceForSqlite &operator=(const FullDeviceForSqlite &) = delete;

    /// The writes asked for so far.
    int writes() const { return s_writes; }

private:
    static bool isFull()
    {
        if (++s_writes < s_firstFailing || s_writes - s_firstFailing >= s_failing)
            return false;
        errno = ENOSPC;
        return true;
    }
    static ssize_t failingWrite(int file, const void *bytes, size_t count)
    {
        return isFull() ? -1 : ::write(file, bytes, count);
    }
    static ssize_t failingPlacedWrite(int file, const void *bytes, size_t count, off_t offset)
    {
        return isFull() ? -1 : ::pwrite(file, bytes, count, offset);
    }

    template <typename Function>
    static sqlite3_syscall_ptr asCall(Function function)
    {
        return reinterpret_cast<sqlite3_syscall_ptr>(function);
    }
    /// Null sets the system's own call back. Which of the three SQLite uses was chosen when it was
    /// built.
    static void setCalls(sqlite3_syscall_ptr write, sqlite3_syscall_ptr placedWrite)
    {
        sqlite3_vfs *system = sqlite3_vfs_find(nullptr);
        system->xSetSystemCall(system, "write", write);
        system->xSetSystemCall(system, "pwrite", placedWrite);
        system->xSetSystemCall(system, "pwrite64", placedWrite);
    }

    static inline int s_writes = 0;
    static inline int s_firstFailing = 0;
    static inline int s_failing = 0;
};

} // namespace tarnwick::testing
