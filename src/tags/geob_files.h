#pragma once

#include "foundation/result.h"

#include <QByteArray>
#include <QMap>
#include <QString>

/// The only changes ever made inside audio files: putting cue frames back, writing a gain, and
/// taking cue frames out.
///
/// 1. A file is read whole, its tag is rebuilt in memory, and the file is replaced by
///    `platform::replaceFile`: the path leads to the old bytes or to the new, at every moment.
/// 2. The audio, that is all behind the tag, stays byte for byte.
/// 3. Every frame that could be read stays, with its flags and its place. Padding goes, and so does
///    whatever of the tag could not be read.
/// 4. A file without a tag that can be edited gets none: it stays as it is.
///
/// Nothing is kept between calls. Two calls on one file at a time are for the caller to rule out.
namespace tarnwick::SeratoGEOB {

/// Whole payloads of general objects by their description.
using CueFrames = QMap<QString, QByteArray>;

/// The cue frames of a file, of which only the tag is read. Empty where there are none, where
/// anything fails, and for a tag of eight million bytes or more. Of two frames of one description
/// the later counts.
CueFrames captureCueFrames(const QString &path);

/// Puts frames back: each over the first of its description, or behind all others if there is none.
/// New ones are appended in the order of `cueDescriptors`.
Done restoreCueFrames(const CueFrames &frames, const QString &path);

/// Writes the track gain in decibels, with two decimals, over the first that stands there, or
/// behind all other frames.
Done writeReplayGain(double gain, const QString &path);

/// Takes all cue frames out. Does nothing, and succeeds, where there is no tag that can be edited.
Done stripCueFrames(const QString &path);

} // namespace tarnwick::SeratoGEOB
