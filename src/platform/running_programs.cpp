#include "platform/running_programs.h"

#include <QCoreApplication>

#include <atomic>

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

namespace {

std::atomic<int> guardsForOwnPrograms = 0;

bool countsOwnProgramsOnly()
{
    return guardsForOwnPrograms > 0;
}

} // namespace

ScopedOwnPrograms::ScopedOwnPrograms()
{
    ++guardsForOwnPrograms;
}

ScopedOwnPrograms::~ScopedOwnPrograms()
{
    --guardsForOwnPrograms;
}

#ifdef Q_OS_LINUX

namespace {

bool isProcessFolder(const dirent &entry)
{
    return entry.d_name[0] >= '1' && entry.d_name[0] <= '9';
}

/// The start of what the kernel tells of a process; empty if that has gone meanwhile.
QByteArray told(int processes, const QByteArray &path)
{
    const int file = ::openat(processes, path.constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {};
    char text[64];
    const ssize_t count = ::read(file, text, sizeof text);
    ::close(file);
    return count > 0 ? QByteArray(text, count) : QByteArray();
}

QByteArray nameOfProcess(int processes, const QByteArray &id)
{
    const QByteArray name = told(processes, id + "/comm");
    return name.endsWith('\n') ? name.chopped(1) : name;
}

bool isOwnProcess(int processes, const QByteArray &id)
{
    // "1234 (its name) S 1230 …", where the last number is that of the parent.
    const QByteArray status = told(processes, id + "/stat");
    const QByteArrayList behindName = status.sliced(status.lastIndexOf(')') + 1).split(' ');
    return behindName.value(2).toLongLong() == QCoreApplication::applicationPid();
}

} // namespace

bool isAnyProgramRunning(const QStringList &names)
{
    QByteArrayList wanted;
    for (const QString &name : names)
        wanted.append(name.toUtf8());
    wanted.removeAll(QByteArray()); // what a process is called that ends at this moment
    const auto close = [](DIR *folder) { ::closedir(folder); };
    const std::unique_ptr<DIR, decltype(close)> processes(::opendir("/proc"), close);
    if (!processes)
        return false;
    // cppcheck-suppress readdirCalled ; no other thread has this stream
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    while (const dirent *entry = ::readdir(processes.get())) {
        const int folder = ::dirfd(processes.get());
        if (isProcessFolder(*entry) && wanted.contains(nameOfProcess(folder, entry->d_name)) &&
            (!countsOwnProgramsOnly() || isOwnProcess(folder, entry->d_name)))
            return true;
    }
    return false;
}

#else

bool isAnyProgramRunning(const QStringList &names)
{
    constexpr int patience = 5000; // milliseconds; the main thread never waits for ever
    QProcess list;
    list.start(u"/bin/ps"_s, {u"-Aco"_s, u"ppid,command"_s});
    if (!list.waitForFinished(patience))
        return false;
    const QString output = QString::fromUtf8(list.readAllStandardOutput());
    for (const QStringView line : QStringView(output).split(u'\n', Qt::SkipEmptyParts)) {
        const QStringView process = trimmedBlanks(line);
        const QStringView parent = process.first(qMax<qsizetype>(process.indexOf(u' '), 0));
        const bool isOwn = parent.toLongLong() == QCoreApplication::applicationPid();
        const QStringView name = trimmedBlanks(process.sliced(parent.size()));
        if (!name.isEmpty() && names.contains(name) && (!countsOwnProgramsOnly() || isOwn))
            return true;
    }
    return false;
}

#endif

} // namespace tarnwick::platform
