#include "platform/environment.h"

#include <QDir>

namespace tarnwick::platform {

std::optional<QString> environmentVariable(const char *name)
{
    if (!qEnvironmentVariableIsSet(name))
        return std::nullopt;
    return qEnvironmentVariable(name);
}

QString homeFolder()
{
    return QDir::homePath();
}

} // namespace tarnwick::platform
