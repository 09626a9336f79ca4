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

/// One pass along the rows of a square of coverages, which comes back turned, so that two passes
/// blur both ways.
std::vector<double> blurredAndTurned(const std::vector<double> &from, int side,
                                     const std::vector<double> &weights)
{
    const int reach = int(weights.size()) / 2;
    std::vector<double> to(from.size());
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            double sum = 0;
            for (int i = std::max(-reach, -x); i <= std::min(reach, side - 1 - x); ++i)
                sum += from[size_t(y * side + x + i)] * weights[size_t(i + reach)];
            to[size_t(x * side + y)] = sum;
        }
    }
    return to;
}

std::vector<double> shape(int side, int reach, double corner)
{
    QImage mask(side, side, QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(mask.rect().adjusted(reach, reach, -reach, -reach), corner, corner);
    painter.end();
    std::vector<double> coverage;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            coverage.push_back(qAlpha(mask.pixel(x, y)) / 255.0);
    }
    return coverage;
}

QImage inColor(const std::vector<double> &coverage, int side, const QColor &color)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const double alpha = coverage[size_t(y * side + x)] * color.alphaF();
            image.setPixel(x, y,
                           qPremultiply(qRgba(color.red(), color.green(), color.blue(),
                                              int(std::lround(alpha * 255)))));
        }
    }
    return image;
}

QImage shadow(int side, double blur, double corner, const QColor &color)
{
    const int reach = Shadows::reach(blur);
    const auto weights = kernel(blur, reach);
    auto coverage = shape(side, reach, corner);
    for (int pass = 0; pass < 2; ++pass)
        coverage = blurredAndTurned(coverage, side, weights);
    return inColor(coverage, side, color);
}

} // namespace

int Shadows::reach(qreal blur)
{
    return int(std::ceil(blur * 2.5));
}

int Shadows::edge(qreal blur, qreal corner)
{
    return 2 * reach(blur) + int(std::ceil(corner));
}

QUrl Shadows::url(const QColor &color, qreal blur, qreal corner)
{
    QUrl url;
    url.setScheme(u"image"_s);
    url.setHost(QString::fromLatin1(ShadowProvider::id));
    url.setPath(u"/%1/%2/%3"_s.arg(color.name(QColor::HexArgb).mid(1)).arg(blur).arg(corner));
    return url;
}

ShadowProvider::ShadowProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{}

QImage ShadowProvider::requestImage(const QString &address, QSize *size, const QSize &)
{
    const QStringList parts = address.split(u'/');
    if (parts.size() != 3)
        return {};
    const double blur = parts[1].toDouble();
    const double corner = parts[2].toDouble();
    const int side = 2 * Shadows::edge(blur, corner) + 1;
    *size = QSize(side, side);
    const double shrink = std::max(1.0, blur / widestBlur);
    return shadow(int(std::lround(side / shrink)), blur / shrink, corner / shrink,
                  QColor(u'#' + parts[0]))
        .scaled(*size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace tarnwick
