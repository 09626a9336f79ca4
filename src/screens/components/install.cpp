#include "screens/components/install.h"

#include "screens/components/fonts.h"
#include "screens/components/icon_provider.h"
#include "screens/components/shadow_provider.h"

#include <QGuiApplication>
#include <QKeySequence>
#include <QQmlEngine>

#include <future>

/// Declared by Qt for its documentation alone.
Q_GUI_EXPORT void qt_set_sequence_auto_mnemonic(bool b);

using namespace Qt::StringLiterals;

namespace tarnwick {

void installComponents(QQmlEngine &engine, const QStringList &firstSymbols)
{
    // "Drum & Bass" on a button is a genre and no shortcut.
    qt_set_sequence_auto_mnemonic(false);
    // Reading the list of fonts and drawing icons is a good part of a start: that happens while the
    // views load. The engine waits for it when it goes, since there is no list of fonts without an
    // application.
    constexpr int usualSize = 16;
    const int side = qRound(usualSize * qGuiApp->devicePixelRatio());
    auto prepared = std::async(std::launch::async, [firstSymbols, side] {
        (void)Fonts::hasArchivo();
        return IconProvider::drawings(firstSymbols, side);
    });
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.addImageProvider(QString::fromLatin1(IconProvider::id),
                            new IconProvider(prepared.share()));
    engine.addImageProvider(QString::fromLatin1(ShadowProvider::id), new ShadowProvider);
}

} // namespace tarnwick
