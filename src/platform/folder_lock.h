#pragma once

#include <QString>

#include <memory>

namespace tarnwick::platform {

class OpenFile;

/// Keeps other processes of this program from changing what lies in a folder for as long as it
/// lives: for a change that reads first and writes then. Nobody else is kept from anything.
///
/// Waits for another process, but not for ever: after ten seconds, or where the folder can't be
/// locked at all, it lets its owner go on without. Threads of one process wait for each other too.
class FolderLock
{
public:
    enum class Kind { Shared, Exclusive };

    FolderLock(const QString &folder, Kind kind);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    bool isHeld() const { return m_isHeld; }

private:
    std::unique_ptr<OpenFile> m_folder; ///< null where it can't be opened
    bool m_isHeld = false;
};

} // namespace tarnwick::platform
