#pragma once

#include "analysis/scan_result.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <span>

namespace tarnwick {

/// The lane of a track: its genre, or where it has none, the band of its tempo.
QString laneOf(const SeratoTrack &track);

/// The lanes of the tracks on disk, each once, in ascending order, behind "All".
QStringList lanesOf(std::span<const ScannedTrack> tracks);

/// The lane of every track, on disk or not, by its absolute path; of equal paths the later counts.
QHash<QString, QString> laneMapOf(std::span<const ScannedTrack> tracks);

/// By what Signal servers know the tracks on disk.
QSet<QString> ownedKeysOf(std::span<const ScannedTrack> tracks);

/// What a chart is held against. Takes longer than a frame for a large library.
struct OwnedMusic
{
    QStringList lanes;
    QSet<QString> keys;
};

OwnedMusic ownedMusicOf(std::span<const ScannedTrack> tracks);

} // namespace tarnwick
