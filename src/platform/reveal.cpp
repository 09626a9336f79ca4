#include "platform/reveal.h"

#include "platform/background.h"

#include <utility>

namespace tarnwick::platform {

namespace {

ScopedFileManager::Shown &currentManager()
{
    static ScopedFileManager::Shown manager;
    return manager;
}

} // namespace

void revealInFileManager(const QString &path)
{
    if (currentManager())
        currentManager()(path);
    else
        startInBackground(Priority::UserInitiated, [path] { revealAndWait(path); });
}

ScopedFileManager::ScopedFileManager(Shown shown)
    : m_before(std::exchange(currentManager(), std::move(shown)))
{}

ScopedFileManager::~ScopedFileManager()
{
    currentManager() = std::move(m_before);
}

} // namespace tarnwick::platform
