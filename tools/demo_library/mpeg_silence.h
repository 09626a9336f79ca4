#pragma once

#include <QByteArray>

namespace tarnwick::demo {

/// Size in bytes of an MPEG 1 Layer III frame without padding.
int mpegFrameSize(int kbps, int sampleRate);

/// `frames` valid stereo frames of silence. The bit rate must be one of Layer III's, the sample
/// rate 44100 or 48000.
QByteArray mpegSilence(int frames, int kbps, int sampleRate);

} // namespace tarnwick::demo
