#include "platform/running_programs.h"

#ifdef Q_OS_LINUX
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>
#else
#include "foundation/text.h"

#include <QProcess>
#endif

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

#ifdef Q_OS_LINUX

namespace {

bool isProcessFolder(const dirent &entry)
{
    return entry.d_name[0] >= '1' && entry.d_name[0] <= '9';
}

/// The program's name as the kernel keeps it; empty if the process has gone meanwhile.
QByteArray nameOfProcess(int processes, const char *id)
{
    const QByteArray path = QByteArray(id) + "/comm";
    const int file = ::openat(processes, path.constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {};
    char text[64];
    const ssize_t count = ::read(file, text, sizeof text);
    ::close(file);
    if (count <= 0)
        return {};
    const QByteArray name(text, count);
    return name.endsWith('\n') ? name.chopped(1) : name;
}

} // namespace

bool isAnyProgramRunning(const QStringList &names)
{
    QByteArrayList wanted;
    for (const QString &name : names)
        wanted.append(name.toUtf8());
    const auto close = [](DIR *folder) { ::closedir(folder); };
    const std::unique_ptr<DIR, decltype(close)> processes(::opendir("/proc"), close);
    if (!processes)
        return false;
    while (const dirent *entry = ::readdir(processes.get())) {
        if (isProcessFolder(*entry) &&
            wanted.contains(nameOfProcess(::dirfd(processes.get()), entry->d_name)))
            return true;
    }
    return false;
}

#else

bool isAnyProgramRunning(const QStringList &names)
{
    constexpr int patience = 5000; // milliseconds; the main thread never waits for ever
    QProcess list;
    list.start(u"/bin/ps"_s, {u"-Aco"_s, u"command"_s});
    if (!list.waitForFinished(patience))
        return false;
    const QString output = QString::fromUtf8(list.readAllStandardOutput());
    for (const QStringView line : QStringView(output).split(u'\n', Qt::SkipEmptyParts)) {
        if (names.contains(trimmedBlanks(line)))
            return true;
    }
    return false;
}

#endif

} // namespace tarnwick::platform
