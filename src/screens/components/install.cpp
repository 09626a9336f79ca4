#include "screens/components/install.h"

#include "screens/components/fonts.h"
#include "screens/components/icon_provider.h"
#include "screens/components/shadow_provider.h"

#include <QGuiApplication>
#include <QKeySequence>
#include <QQmlEngine>
#include <QThreadPool>

/// Declared by Qt for its documentation alone.
Q_GUI_EXPORT void qt_set_sequence_auto_mnemonic(bool b);

using namespace Qt::StringLiterals;

namespace tarnwick {

void installComponents(QQmlEngine &engine, const QStringList &firstSymbols)
{
    // "Drum & Bass" on a button is a genre and no shortcut.
    qt_set_sequence_auto_mnemonic(false);
    // Reading the list of fonts and drawing icons is a good part of a start: that happens while the
    // views load. The pool waits when the engine goes, since there is no list of fonts without an
    // application.
    auto *pool = new QThreadPool(&engine);
    pool->setMaxThreadCount(1);
    pool->start([] { (void)Fonts::hasArchivo(); });
    auto *icons = new IconProvider;
    constexpr int usualSize = 16;
    icons->prepare(pool, firstSymbols, qRound(usualSize * qGuiApp->devicePixelRatio()));
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.addImageProvider(QString::fromLatin1(IconProvider::id), icons);
    engine.addImageProvider(QString::fromLatin1(ShadowProvider::id), new ShadowProvider);
}

} // namespace tarnwick
