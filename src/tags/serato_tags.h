#pragma once

#include <QString>

#include <optional>

/// The quick, read-only probe that the scan runs on every track. It searches the raw bytes of a
/// leading ID3v2 tag for a handful of patterns and parses no frames.
namespace tarnwick::SeratoTags {

/// What the probe found in one file.
struct Presence
{
    bool hasMarkers = false;    ///< cue points: "Serato Markers2"
    bool hasBeatGrid = false;   ///< "Serato BeatGrid"
    bool hasGain = false;       ///< a ReplayGain text or Serato's analysis tag
    bool hasReplayGain = false; ///< a ReplayGain text
    /// Decibels, from Serato's analysis tag; always finite.
    std::optional<double> autogain = std::nullopt;

    bool operator==(const Presence &) const = default;
};

/// True for the extensions that are probed at all: mp3, aif, aiff and wav, in any letter case.
bool isSupported(const QString &path);

/// What the tag at the start of a file holds; nothing if the tag could not be read.
std::optional<Presence> presence(const QString &path);

/// The same for a path that the caller has just found to be a regular file: asks the system no more
/// than it must. Any other kind of file may be read from.
std::optional<Presence> presenceInRegularFile(const QString &path);

} // namespace tarnwick::SeratoTags
