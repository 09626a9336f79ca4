#include "screens/components/fonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

const QString archivo = u"Archivo"_s;

/// QFont takes whole pixels or broken points; the layout needs broken pixels.
qreal typographicPoints(qreal layoutPoints)
{
    constexpr qreal pointsPerInch = 72;
    const QScreen *screen = QGuiApplication::primaryScreen();
    const qreal dotsPerInch = screen ? screen->logicalDotsPerInchY() : pointsPerInch;
    return layoutPoints * pointsPerInch / dotsPerInch;
}

} // namespace

bool Fonts::hasArchivo()
{
    static const bool found = QFontDatabase::hasFamily(archivo);
    return found;
}

QString Fonts::archivoName(int weight)
{
    if (weight >= QFont::ExtraBold)
        return u"Archivo-Black"_s;
    switch (weight) {
    case QFont::Bold:
        return u"Archivo-Bold"_s;
    case QFont::DemiBold:
        return u"Archivo-SemiBold"_s;
    case QFont::Medium:
        return u"Archivo-Medium"_s;
    default:
        return u"Archivo-Regular"_s;
    }
}

QFont Fonts::font(qreal size, int weight, qreal tracking)
{
    return fontOf(hasArchivo(), size, weight, tracking);
}

QFont Fonts::capitals(qreal size, int weight, qreal tracking)
{
    QFont font = Fonts::font(size, weight, tracking);
    font.setCapitalization(QFont::AllUppercase);
    return font;
}

QFont Fonts::fontOf(bool inArchivo, qreal size, int weight, qreal tracking)
{
    QFont font;
    if (inArchivo) {
        const QString face = archivoName(weight).section(u'-', 1);
        font.setFamily(archivo);
        font.setStyleName(face);
        font.setWeight(face == u"Black"_s     ? QFont::Black
                       : face == u"Regular"_s ? QFont::Normal
                                              : QFont::Weight(weight));
    } else {
        font.setWeight(QFont::Weight(weight));
    }
    font.setPointSizeF(typographicPoints(size));
    if (tracking != 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    return font;
}

} // namespace tarnwick
