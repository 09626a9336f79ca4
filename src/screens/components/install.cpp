#include "screens/components/install.h"

#include "screens/components/icon_provider.h"
#include "screens/components/shadow_provider.h"

#include <QQmlEngine>

using namespace Qt::StringLiterals;

namespace tarnwick {

void installComponents(QQmlEngine &engine)
{
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.addImageProvider(QString::fromLatin1(IconProvider::id), new IconProvider);
    engine.addImageProvider(QString::fromLatin1(ShadowProvider::id), new ShadowProvider);
}

} // namespace tarnwick
