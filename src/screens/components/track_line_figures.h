#pragma once

#include "serato/serato_track.h"

/// The two lines by which a list shows a track.
namespace tarnwick::TrackLineText {

/// Artist and title; the title alone without an artist.
QString first(const SeratoTrack &track);

/// Bitrate, tempo and key as far as they are known, and always the file's name.
QString second(const SeratoTrack &track);

} // namespace tarnwick::TrackLineText
