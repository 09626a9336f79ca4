#include "screens/components/shadow_provider.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// A wider blur is worked out on a smaller picture: no eye can tell, and the first frame waits.
constexpr double widestBlur = 6;

/// The weights of a Gauss curve, from -reach to reach.
std::vector<double> kernel(double spread, int reach)
{
    std::vector<double> weights;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-double(i) * i / (2 * spread * spread)));
        sum += weights.back();
    }
    for (double &weight : weights)
        weight /= sum;
    return weights;
}

/// How much of each pixel a shape covers, 0 to 1, row by row.
struct Coverage
{
    int width;
    int height;
    std::vector<double> values;

    Coverage(int columns, int rows)
        : width(columns)
        , height(rows)
        , values(size_t(columns) * size_t(rows))
    {}
    double &at(int x, int y) { return values[size_t(y) * size_t(width) + size_t(x)]; }
    double at(int x, int y) const { return values[size_t(y) * size_t(width) + size_t(x)]; }
};

/// One pass along the rows, which come back as columns, so that two passes blur both ways.
Coverage blurredAndTurned(const Coverage &from, const std::vector<double> &weights)
{
    const int reach = int(weights.size()) / 2;
    const double *const middle = weights.data() + reach;
    Coverage to(from.height, from.width);
    for (int y = 0; y < from.height; ++y) {
        for (int x = 0; x < from.width; ++x) {
            double sum = 0;
            for (int i = std::max(-reach, -x); i <= std::min(reach, from.width - 1 - x); ++i)
                sum += from.at(x + i, y) * middle[i];
            to.at(y, x) = sum;
        }
    }
    return to;
}

Coverage coverageOf(const QSize &size, const QRectF &shape, double corner)
{
    QImage mask(size, QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(shape, corner, corner);
    painter.end();
    Coverage coverage(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            coverage.at(x, y) = qAlpha(mask.pixel(x, y)) / 255.0;
    }
    return coverage;
}

QImage inColor(const Coverage &coverage, const QColor &color)
{
    QImage image(coverage.width, coverage.height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < coverage.height; ++y) {
        for (int x = 0; x < coverage.width; ++x) {
            const int alpha = int(std::lround(coverage.at(x, y) * color.alphaF() * 255));
            image.setPixel(x, y,
                           qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha)));
        }
    }
    return image;
}

/// The shadow of a shape as large as `shape`, with as much room around it as the shadow takes.
QImage shadow(const QSizeF &shape, double room, double blur, double corner, const QColor &color)
{
    const QSize size((shape + QSizeF(2 * room, 2 * room)).toSize());
    Coverage coverage = coverageOf(size, QRectF(QPointF(room, room), shape), corner);
    const auto weights = kernel(blur, Shadows::reach(blur));
    for (int pass = 0; pass < 2; ++pass)
        coverage = blurredAndTurned(coverage, weights);
    return inColor(coverage, color);
}

} // namespace

int Shadows::reach(qreal blur)
{
    return int(std::ceil(blur * 2.5));
}

int Shadows::drawnSide(qreal blur, qreal corner, qreal side)
{
    const int whole = 2 * (reach(blur) + int(std::ceil(corner))) + 1;
    return std::min(whole, std::max(1, int(std::lround(side))));
}

int Shadows::edge(qreal blur, qreal corner, qreal side)
{
    return (drawnSide(blur, corner, side) + 2 * reach(blur) - 1) / 2;
}

QUrl Shadows::url(const QColor &color, qreal blur, qreal corner, qreal width, qreal height)
{
    QUrl url;
    url.setScheme(u"image"_s);
    url.setHost(QString::fromLatin1(ShadowProvider::id));
    const QStringList parts = {color.name(QColor::HexArgb).mid(1), QString::number(blur),
                               QString::number(corner),
                               QString::number(drawnSide(blur, corner, width)),
                               QString::number(drawnSide(blur, corner, height))};
    url.setPath(u"/"_s + parts.join(u'/'));
    return url;
}

ShadowProvider::ShadowProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{}

QImage ShadowProvider::requestImage(const QString &address, QSize *size, const QSize &)
{
    const QStringList parts = address.split(u'/');
    if (parts.size() != 5)
        return {};
    const double blur = parts[1].toDouble();
    const double corner = parts[2].toDouble();
    const QSize shape(parts[3].toInt(), parts[4].toInt());
    const int room = Shadows::reach(blur);
    *size = shape + QSize(2 * room, 2 * room);
    const double shrink = std::max(1.0, blur / widestBlur);
    return shadow(QSizeF(shape) / shrink, room / shrink, blur / shrink, corner / shrink,
                  QColor(u'#' + parts[0]))
        .scaled(*size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace tarnwick
