#include "platform/environment.h"

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

QString homeInUserDatabase()
{
    const passwd *user = ::getpwuid(::getuid());
    return user ? QString::fromLocal8Bit(user->pw_dir) : u"/"_s;
}

} // namespace

std::optional<QString> environmentVariable(const char *name)
{
    if (!qEnvironmentVariableIsSet(name))
        return std::nullopt;
    return qEnvironmentVariable(name);
}

QString homeFolder()
{
    QString home = environmentVariable("HOME").value_or(QString());
    if (home.isEmpty())
        home = homeInUserDatabase();
    while (home.size() > 1 && home.endsWith(u'/'))
        home.chop(1);
    return home;
}

} // namespace tarnwick::platform
