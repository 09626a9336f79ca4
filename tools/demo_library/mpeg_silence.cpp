#include "mpeg_silence.h"

#include <algorithm>
#include <iterator>

namespace tarnwick::demo {

namespace {

constexpr int layerThreeRates[] = {0,   32,  40,  48,  56,  64,  80, 96,
                                   112, 128, 160, 192, 224, 256, 320};

int rateIndex(int kbps)
{
    const auto rate = std::ranges::find(layerThreeRates, kbps);
    return static_cast<int>(std::distance(std::begin(layerThreeRates), rate));
}

} // namespace

int mpegFrameSize(int kbps, int sampleRate)
{
    return 144 * kbps * 1000 / sampleRate;
}

QByteArray mpegSilence(int frames, int kbps, int sampleRate)
{
    // Side information and main data of nothing but zeros are a granule without any spectrum.
    QByteArray frame(mpegFrameSize(kbps, sampleRate), '\0');
    frame[0] = '\xFF';
    frame[1] = '\xFB'; // sync, MPEG 1, Layer III, no checksum
    frame[2] = static_cast<char>(rateIndex(kbps) << 4 | (sampleRate == 48000 ? 1 : 0) << 2);
    frame[3] = '\x04'; // stereo, original
    return frame.repeated(frames);
}

} // namespace tarnwick::demo
