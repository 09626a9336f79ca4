#include "platform/folder_lock.h"

#include "platform/open_file.h"

#include <fcntl.h>

namespace tarnwick::platform {

namespace {

constexpr std::chrono::seconds patience(10);

} // namespace

FolderLock::FolderLock(const QString &folder, Kind kind)
{
    auto opened = OpenFile::open(folder.toUtf8(), O_RDONLY | O_DIRECTORY);
    if (!opened)
        return;
    m_folder = std::make_unique<OpenFile>(std::move(*opened));
    m_isHeld =
        m_folder->lock(kind == Kind::Shared ? OpenFile::Lock::Shared : OpenFile::Lock::Exclusive,
                       patience) == 0;
}

FolderLock::~FolderLock() = default;

} // namespace tarnwick::platform
