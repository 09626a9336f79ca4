#pragma once

#include <QString>

#include <chrono>
#include <memory>

namespace tarnwick::platform {

class OpenFile;

/// Keeps other processes of this program from changing what lies in a folder for as long as it
/// lives: for a change that reads first and writes then. Nobody else is kept from anything.
///
/// Waits for another process, but not for ever: once its patience ends, or where the folder can't
/// be locked at all, it lets its owner go on without. Threads of one process wait for each other
/// too.
class FolderLock
{
public:
    enum class Kind { Shared, Exclusive };

    FolderLock(const QString &folder, Kind kind,
               std::chrono::milliseconds patience = std::chrono::seconds(10));
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    bool isHeld() const { return m_error == 0; }
    /// Surely: a folder that can't be locked is nobody's.
    bool isHeldByAnother() const;

private:
    std::unique_ptr<OpenFile> m_folder; ///< null where it can't be opened
    int m_error = 0;
};

} // namespace tarnwick::platform
