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
        installComponents(engine, {u"tag"_s});
        QVERIFY(engine.importPathList().contains(u"qrc:/qt/qml"_s));
        QVERIFY(engine.imageProvider(QString::fromLatin1(IconProvider::id)));
        QVERIFY(engine.imageProvider(QString::fromLatin1(ShadowProvider::id)));
        auto *icons = static_cast<IconProvider *>(
            engine.imageProvider(QString::fromLatin1(IconProvider::id)));
        const QString address = Icons::url(u"tag"_s, Qt::black, Icons::Plain).path().mid(1);
        QSize size;
        QVERIFY(!icons->requestImage(address, &size, {16, 16}).isNull());
    }
};

} // namespace tarnwick

QTEST_MAIN(tarnwick::InstallTest)
#include "install_test.moc"
