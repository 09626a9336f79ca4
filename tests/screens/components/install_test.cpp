#include "screens/components/install.h"

#include "screens/components/icon_provider.h"
#include "screens/components/shadow_provider.h"

#include <QQmlEngine>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

class InstallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEngineFindsModulesAndPictures()
    {
        QQmlEngine engine;
        installComponents(engine);
        QVERIFY(engine.importPathList().contains(u"qrc:/qt/qml"_s));
        QVERIFY(engine.imageProvider(QString::fromLatin1(IconProvider::id)));
        QVERIFY(engine.imageProvider(QString::fromLatin1(ShadowProvider::id)));
    }
};

} // namespace tarnwick

QTEST_MAIN(tarnwick::InstallTest)
#include "install_test.moc"
