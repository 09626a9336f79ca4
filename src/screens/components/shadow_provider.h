#pragma once

#include <QColor>
#include <QObject>
#include <QQuickImageProvider>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The addresses under which `ShadowProvider` knows its pictures, and how such a picture is cut.
class Shadows : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// How far the shadow of a blur reaches beyond the shape that casts it.
    Q_INVOKABLE static int reach(qreal blur);
    /// The width of each edge of the picture; what lies between may be stretched.
    Q_INVOKABLE static int edge(qreal blur, qreal corner);
    Q_INVOKABLE static QUrl url(const QColor &color, qreal blur, qreal corner);
};

/// Draws the shadow of a rectangle with round corners as a picture of nine parts, so that shadows
/// are the same with and without a graphics card.
class ShadowProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "tarnwick-shadow";

    ShadowProvider();

    /// `address` is what `Shadows::url` puts behind the provider's name.
    QImage requestImage(const QString &address, QSize *size, const QSize &requested) override;
};

} // namespace tarnwick
