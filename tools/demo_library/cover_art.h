#pragma once

#include <QByteArray>

namespace tarnwick::demo {

/// A square PNG picture of soft stripes, uncompressed: three bytes a pixel and little more. The
/// colours follow from the seed.
QByteArray coverArt(int width, quint32 seed);

} // namespace tarnwick::demo
