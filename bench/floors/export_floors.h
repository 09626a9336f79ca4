#pragma once

#include "analysis/scan_result.h"
#include "serato/loaded_crate.h"

#include <QList>

#include <string>
#include <vector>

namespace tarnwick::bench {

/// A track in the form that an export would like best: texts in UTF-8, numbers as numbers.
struct PlainTrack
{
    std::string path;
    std::string fileName;
    std::string title;
    std::string artist;
    std::string album;
    std::string genre;
    std::string key;
    std::string fileType;
    double tempo = 0;
    int seconds = 0;
    int bitrate = 0; ///< kilobits a second
};

/// A crate with its entries as the numbers of tracks.
struct PlainCrate
{
    std::string name;
    std::vector<int> tracks;
};

/// What an export writes, with all work on texts, numbers and paths done ahead of it.
struct PlainLibrary
{
    std::vector<PlainTrack> tracks; ///< those on disk
    std::vector<PlainCrate> crates;
};

PlainLibrary plainLibrary(const std::vector<ScannedTrack> &tracks,
                          const QList<LoadedCrate> &crates);

/// What writing a collection for rekordbox can't do without: each byte of each text looked at once
/// and copied into one buffer, which is written, flushed and renamed.
void writeCollection(const PlainLibrary &library, const std::string &folder);

/// What writing an Engine database can't do without: SQLite's own work for the same statements and
/// the same cache. Without SQLite's copy of each text it would take about a tenth less.
void writeDatabase(const PlainLibrary &library, const std::string &folder);

} // namespace tarnwick::bench
