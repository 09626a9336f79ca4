#include "screens/shell/guide.h"

#include "platform/files.h"

#include <QCoreApplication>
#include <QDesktopServices> // platform: allowed, needs Qt Gui
#include <QUrl>

namespace tarnwick {

bool showGuide()
{
    const QString page = platform::absolutePath(QCoreApplication::applicationDirPath() + u'/' +
                                                QString::fromUtf16(guidePlace));
    if (!platform::isRegularFile(page))
        return false;
    // The window's library alone knows the desktop's programs, and tests can answer for them.
    QDesktopServices::openUrl(QUrl::fromLocalFile(page)); // platform: allowed, needs Qt Gui
    return true;
}

} // namespace tarnwick
