#pragma once

#include <QColor>
#include <QHash>
#include <QObject>
#include <QQuickImageProvider>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <future>

namespace tarnwick {

/// The addresses under which `IconProvider` knows its pictures.
class Icons : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Heavy lines stand beside bold text.
    enum Lines { Plain, Heavy };
    Q_ENUM(Lines)

    /// Empty for an empty symbol.
    Q_INVOKABLE static QUrl url(const QString &symbol, const QColor &color, int lines);
    /// The drawing of a symbol, as a resource.
    static QString drawing(const QString &symbol);
};

/// Draws symbols of the icon set in one colour, at the very size asked for. An unknown symbol gives
/// no picture, which the image that asked for it reports.
class IconProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "tarnwick-icon";
    using Drawings = QHash<QString, QImage>; ///< by symbol

    /// Symbols in plain lines of one size. May be called on any thread.
    static Drawings drawings(const QStringList &symbols, int side);

    /// `prepared` is being made on another thread, for requests in plain lines of that size,
    /// whatever the colour: these wait for it.
    explicit IconProvider(std::shared_future<Drawings> prepared = {});

    /// `address` is what `Icons::url` puts behind the provider's name. Without a requested size the
    /// picture is 24 pixels wide and high.
    QImage requestImage(const QString &address, QSize *size, const QSize &requested) override;

private:
    const std::shared_future<Drawings> m_prepared;
};

} // namespace tarnwick
