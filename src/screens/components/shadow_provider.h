#pragma once

#include <QColor>
#include <QObject>
#include <QQuickImageProvider>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The addresses under which `ShadowProvider` knows its pictures, and how such a picture is cut: in
/// nine parts, of which only the middle ones are stretched.
class Shadows : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// How far the shadow of a blur reaches beyond the shape that casts it.
    Q_INVOKABLE static int reach(qreal blur);
    /// How much of the picture stays unstretched at each end of a side of the shape.
    Q_INVOKABLE static int edge(qreal blur, qreal corner, qreal side);
    /// The picture for a shape of this size, the same for all sizes that a picture can be
    /// stretched to.
    Q_INVOKABLE static QUrl url(const QColor &color, qreal blur, qreal corner, qreal width,
                                qreal height);

    /// The least length of a side that shows all there is to the shadow, or `side` if that is less.
    static int drawnSide(qreal blur, qreal corner, qreal side);
};

/// Draws the shadow of a rectangle with round corners, so that shadows are the same with and
/// without a graphics card.
class ShadowProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "tarnwick-shadow";

    ShadowProvider();

    /// `address` is what `Shadows::url` puts behind the provider's name.
    QImage requestImage(const QString &address, QSize *size, const QSize &requested) override;
};

} // namespace tarnwick
