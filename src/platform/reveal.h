#pragma once

#include <QString>

#include <functional>

namespace tarnwick::platform {

/// Shows an item in the desktop's file manager, with its folder open and the item selected where
/// the file manager can do that. Returns at once. A desktop without a file manager shows nothing.
void revealInFileManager(const QString &path);

/// Takes all that is to be shown in the guard's life. For tests.
class ScopedFileManager
{
public:
    using Shown = std::function<void(const QString &path)>;

    explicit ScopedFileManager(Shown shown);
    ~ScopedFileManager();
    ScopedFileManager(const ScopedFileManager &) = delete;
    ScopedFileManager &operator=(const ScopedFileManager &) = delete;

private:
    Shown m_before;
};

/// What a system does of it. Waits for the file manager: for the background alone.
void revealAndWait(const QString &path);

} // namespace tarnwick::platform
