#include "platform/runtime_folder.h"

#include <QByteArray>

#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick::platform {

namespace {

constexpr auto variable = "XDG_RUNTIME_DIR";

/// A folder that no one else may enter, as sessions make it.
bool isPrivateFolder(const QByteArray &path)
{
    struct stat status = {};
    return ::lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & 0777) == 0700;
}

} // namespace

void preferRuntimeFolder()
{
    if (qEnvironmentVariableIsSet(variable))
        return;
    const QByteArray user = QByteArray::number(::geteuid());
    const QByteArray ofSession = "/run/user/" + user;
    if (isPrivateFolder(ofSession)) {
        qputenv(variable, ofSession);
        return;
    }
    const QByteArray own = "/tmp/tarnwick-runtime-" + user;
    ::mkdir(own.constData(), 0700);
    if (isPrivateFolder(own))
        qputenv(variable, own);
}

} // namespace tarnwick::platform
