#pragma once

#include "platform/fault_gate.h"

#include <QFileInfo>

#include <cerrno>
#include <new>
#include <utility>

#include <sqlite3.h>

namespace tarnwick::testing {

/// Lets what SQLite asks of the system pass the fault gate, as far as it changes files or waits for
/// their bytes, so that the loops over all calls and the watch over flushes see it too. Locks are
/// left alone. For the guard's life, over the files that are opened then.
class SqliteBehindGate
{
public:
    SqliteBehindGate()
    {
        s_system = sqlite3_vfs_find(nullptr);
        m_gated = *s_system; // what is not asked for here is the system's own
        m_gated.zName = "gated";
        m_gated.pNext = nullptr;
        m_gated.szOsFile = int(sizeof(File)) + s_system->szOsFile;
        m_gated.xOpen = open;
        m_gated.xDelete = remove;
        m_gated.xAccess = access;
        sqlite3_vfs_register(&m_gated, 1);
    }
    ~SqliteBehindGate() { sqlite3_vfs_unregister(&m_gated); }
    SqliteBehindGate(const SqliteBehindGate &) = delete;
    SqliteBehindGate &operator=(const SqliteBehindGate &) = delete;

private:
    using Operation = platform::FileOperation;

    /// In front of the system's own of the same file.
    struct File
    {
        sqlite3_file base;
        const char *path;
        bool flushesName; ///< with the first flush, as a new journal does

        sqlite3_file *system() { return reinterpret_cast<sqlite3_file *>(this + 1); }
        const sqlite3_io_methods &calls() { return *system()->pMethods; }
    };

    static File &asFile(sqlite3_file *file) { return *reinterpret_cast<File *>(file); }

    static int faultAt(Operation operation, const char *path)
    {
        return platform::faultFor(operation, QString::fromUtf8(path ? path : ""));
    }

    /// SQLite takes no notice where it fails.
    static void noteFlushOfNames(const char *path)
    {
        const QString folder = QFileInfo(QString::fromUtf8(path)).path();
        (void)platform::faultFor(Operation::Flush, folder + QStringLiteral("/."));
    }

    static int open(sqlite3_vfs *, const char *path, sqlite3_file *file, int flags, int *outFlags)
    {
        constexpr int newJournal = SQLITE_OPEN_CREATE | SQLITE_OPEN_MAIN_JOURNAL;
        File *gated = new (file) File{{nullptr}, path, (flags & newJournal) == newJournal};
        if (faultAt(Operation::Open, path) != 0)
            return SQLITE_CANTOPEN;
        const int result = s_system->xOpen(s_system, path, gated->system(), flags, outFlags);
        if (gated->system()->pMethods)
            gated->base.pMethods = &gatedCalls();
        return result;
    }

    static int remove(sqlite3_vfs *, const char *path, int flushesNames)
    {
        if (faultAt(Operation::Remove, path) != 0)
            return SQLITE_IOERR_DELETE;
        const int result = s_system->xDelete(s_system, path, flushesNames);
        if (result == SQLITE_OK && flushesNames)
            noteFlushOfNames(path);
        return result;
    }

    static int access(sqlite3_vfs *, const char *path, int what, int *answer)
    {
        if (faultAt(Operation::Stat, path) != 0)
            return SQLITE_IOERR_ACCESS;
        return s_system->xAccess(s_system, path, what, answer);
    }

    static int close(sqlite3_file *file)
    {
        return asFile(file).calls().xClose(asFile(file).system());
    }

    static int read(sqlite3_file *file, void *bytes, int count, sqlite3_int64 offset)
    {
        File &gated = asFile(file);
        if (faultAt(Operation::Read, gated.path) != 0)
            return SQLITE_IOERR_READ;
        return gated.calls().xRead(gated.system(), bytes, count, offset);
    }

    static int write(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 offset)
    {
        File &gated = asFile(file);
        if (const int fault = faultAt(Operation::Write, gated.path))
            return fault == ENOSPC ? SQLITE_FULL : SQLITE_IOERR_WRITE;
        return gated.calls().xWrite(gated.system(), bytes, count, offset);
    }

    static int truncate(sqlite3_file *file, sqlite3_int64 size)
    {
        File &gated = asFile(file);
        if (faultAt(Operation::Write, gated.path) != 0)
            return SQLITE_IOERR_TRUNCATE;
        return gated.calls().xTruncate(gated.system(), size);
    }

    static int sync(sqlite3_file *file, int flags)
    {
        File &gated = asFile(file);
        if (faultAt(Operation::Flush, gated.path) != 0)
            return SQLITE_IOERR_FSYNC;
        const int result = gated.calls().xSync(gated.system(), flags);
        if (result == SQLITE_OK && std::exchange(gated.flushesName, false))
            noteFlushOfNames(gated.path);
        return result;
    }

    static int size(sqlite3_file *file, sqlite3_int64 *size)
    {
        File &gated = asFile(file);
        if (faultAt(Operation::Stat, gated.path) != 0)
            return SQLITE_IOERR_FSTAT;
        return gated.calls().xFileSize(gated.system(), size);
    }

    static int lock(sqlite3_file *file, int kind)
    {
        return asFile(file).calls().xLock(asFile(file).system(), kind);
    }
    static int unlock(sqlite3_file *file, int kind)
    {
        return asFile(file).calls().xUnlock(asFile(file).system(), kind);
    }
    static int isReserved(sqlite3_file *file, int *answer)
    {
        return asFile(file).calls().xCheckReservedLock(asFile(file).system(), answer);
    }
    static int control(sqlite3_file *file, int what, void *argument)
    {
        return asFile(file).calls().xFileControl(asFile(file).system(), what, argument);
    }
    static int sectorSize(sqlite3_file *file)
    {
        return asFile(file).calls().xSectorSize(asFile(file).system());
    }
    static int characteristics(sqlite3_file *file)
    {
        return asFile(file).calls().xDeviceCharacteristics(asFile(file).system());
    }

    static const sqlite3_io_methods &gatedCalls()
    {
        static const sqlite3_io_methods calls = [] {
            sqlite3_io_methods gated = {};
            gated.iVersion = 1; // files are not mapped into memory, past the gate
            gated.xClose = close;
            gated.xRead = read;
            gated.xWrite = write;
            gated.xTruncate = truncate;
            gated.xSync = sync;
            gated.xFileSize = size;
            gated.xLock = lock;
            gated.xUnlock = unlock;
            gated.xCheckReservedLock = isReserved;
            gated.xFileControl = control;
            gated.xSectorSize = sectorSize;
            gated.xDeviceCharacteristics = characteristics;
            return gated;
        }();
        return calls;
    }

    static inline sqlite3_vfs *s_system = nullptr;
    sqlite3_vfs m_gated = {};
};

} // namespace tarnwick::testing
