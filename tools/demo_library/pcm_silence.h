#pragma once

#include <QByteArray>

namespace tarnwick::demo {

/// A WAV file of silence, 16 bit stereo. A tag that isn't empty goes into a chunk behind the audio.
QByteArray wavSilence(int samples, int sampleRate, const QByteArray &tag);

/// The same as AIFF.
QByteArray aiffSilence(int samples, int sampleRate, const QByteArray &tag);

} // namespace tarnwick::demo
