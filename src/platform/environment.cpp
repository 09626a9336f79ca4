#include "platform/environment.h"

#include <array>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

QString homeInUserDatabase()
{
    std::array<char, 16384> texts; // bytes; far more than the texts of an entry take
    passwd user;
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &user, texts.data(), texts.size(), &found) != 0 || !found)
        return u"/"_s;
    return QString::fromLocal8Bit(found->pw_dir);
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
