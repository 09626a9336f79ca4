#include "screens/components/icon_provider.h"

#include <QFile> // platform: allowed, the drawings lie in the program itself
#include <QPainter>
#include <QSvgRenderer>

#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int naturalSize = 24;
constexpr auto plainLines = R"(stroke-width="1.8")";
constexpr auto heavyLines = R"(stroke-width="2.5")";

QByteArray drawingOf(const QString &symbol, int lines)
{
    QFile file(Icons::drawing(symbol)); // platform: allowed, the drawings lie in the program itself
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray drawing = file.readAll();
    return lines == Icons::Heavy ? drawing.replace(plainLines, heavyLines) : drawing;
}

/// The symbol in whatever colour; nothing if there is no such drawing.
QImage drawn(const QString &symbol, int lines, const QSize &requested)
{
    QSvgRenderer renderer(drawingOf(symbol, lines));
    if (!renderer.isValid())
        return {};
    const QSize natural(naturalSize, naturalSize);
    QImage image(requested.isEmpty() ? natural : requested, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

void paintOver(QImage &image, const QColor &color)
{
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
}

} // namespace

QUrl Icons::url(const QString &symbol, const QColor &color, int lines)
{
    if (symbol.isEmpty())
        return {};
    QUrl url;
    url.setScheme(u"image"_s);
    url.setHost(QString::fromLatin1(IconProvider::id));
    url.setPath(u"/%1/%2/%3"_s.arg(symbol, color.name(QColor::HexArgb).mid(1)).arg(lines));
    return url;
}

QString Icons::drawing(const QString &symbol)
{
    return u":/qt/qml/Tarnwick/Components/icons/%1.svg"_s.arg(symbol);
}

IconProvider::Drawings IconProvider::drawings(const QStringList &symbols, int side)
{
    Drawings drawings;
    for (const QString &symbol : symbols)
        drawings.insert(symbol, drawn(symbol, Icons::Plain, {side, side}));
    return drawings;
}

IconProvider::IconProvider(std::shared_future<Drawings> prepared)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_prepared(std::move(prepared))
{}

QImage IconProvider::requestImage(const QString &address, QSize *size, const QSize &requested)
{
    const QStringList parts = address.split(u'/');
    if (parts.size() != 3)
        return {};
    const int lines = parts[2].toInt();
    QImage image;
    if (lines == Icons::Plain && m_prepared.valid())
        image = m_prepared.get().value(parts[0]);
    if (image.isNull() || image.size() != requested)
        image = drawn(parts[0], lines, requested);
    if (image.isNull())
        return {};
    paintOver(image, QColor(u'#' + parts[1]));
    *size = image.size();
    return image;
}

} // namespace tarnwick
