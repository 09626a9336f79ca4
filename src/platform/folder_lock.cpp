#include "platform/folder_lock.h"

#include "platform/open_file.h"

#include <cerrno>

#include <fcntl.h>

namespace tarnwick::platform {

FolderLock::FolderLock(const QString &folder, Kind kind, std::chrono::milliseconds patience)
{
    auto opened = OpenFile::open(folder.toUtf8(), O_RDONLY | O_DIRECTORY);
    if (!opened) {
        m_error = opened.error();
        return;
    }
    m_folder = std::make_unique<OpenFile>(std::move(*opened));
    m_error = m_folder->lock(
        kind == Kind::Shared ? OpenFile::Lock::Shared : OpenFile::Lock::Exclusive, patience);
}

bool FolderLock::isHeldByAnother() const
{
    return m_error == EWOULDBLOCK;
}

FolderLock::~FolderLock() = default;

} // namespace tarnwick::platform
