#include "platform/data_folder.h"

#include "foundation/paths.h"
#include "platform/environment.h"

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

QString applicationSupportFolder()
{
#ifdef Q_OS_MACOS
    return joinedPath(homeFolder(), u"Library/Application Support"_s);
#else
    // A relative path in this variable is to be ignored, as the Base Directory rules say.
    const QString configured = environmentVariable("XDG_DATA_HOME").value_or(QString());
    return configured.startsWith(u'/') ? configured : joinedPath(homeFolder(), u".local/share"_s);
#endif
}

} // namespace

QString dataFolder()
{
    return joinedPath(applicationSupportFolder(), u"Tarnwick"_s);
}

} // namespace tarnwick::platform
