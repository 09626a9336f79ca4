#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// How well a text can be told from its ground, as the Web Content Accessibility Guidelines measure
/// it.
namespace tarnwick::testing {

/// What a colour with some opacity comes to over an opaque ground.
inline QColor over(const QColor &color, const QColor &ground, double opacity = 1)
{
    const double share = double(color.alphaF()) * opacity;
    const auto mixed = [share](float top, float below) {
        return float(double(top) * share + double(below) * (1 - share));
    };
    return QColor::fromRgbF(mixed(color.redF(), ground.redF()),
                            mixed(color.greenF(), ground.greenF()),
                            mixed(color.blueF(), ground.blueF()));
}

inline double luminance(const QColor &color)
{
    const auto linear = [](float channel) {
        const double value = double(channel);
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// From 1, for two of a kind, to 21.
inline double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace tarnwick::testing
