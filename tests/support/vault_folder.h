#pragma once

#include "safety/cue_vault.h"
#include "support/safety_records.h"
#include "support/tag_builder.h"
#include "tags/serato_tags.h"

#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace tarnwick::testing {

inline const QByteArray markersName = "Serato Markers2";
inline const QByteArray gridName = "Serato BeatGrid";

using Tracks = std::vector<ScannedTrack>;

/// A folder for audio files with a data folder for the vault's file, for a test to inherit.
class VaultFolder
{
protected:
    /// Starts with empty folders; for `init`.
    void renew()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        keepDataIn(m_folder->path());
    }

    /// Where the vault keeps its file.
    QString file() const { return dataIn(m_folder->path(), QStringLiteral("cuevault.json")); }
    QString path(const QString &name) const { return m_folder->filePath(name); }

    /// A file as the scan sees it now.
    ScannedTrack scanned(const QString &name) const
    {
        ScannedTrack track;
        track.track.relativePath = path(name).sliced(1);
        const QFileInfo info(path(name));
        track.existsOnDisk = info.isFile();
        track.onDiskSizeBytes = quint64(info.size());
        if (const auto presence = SeratoTags::presence(path(name))) {
            track.hasMarkers = presence->hasMarkers;
            track.hasBeatGrid = presence->hasBeatGrid;
            track.tagsRead = true;
        }
        return track;
    }

    ScannedTrack write(const QString &name, const QByteArray &content) const
    {
        put(path(name), content);
        return scanned(name);
    }

    /// Writes a file with cues and a grid.
    ScannedTrack cued(const QString &name, const QByteArray &data = "cues") const
    {
        return write(name, TagBuilder().object(markersName, data).object(gridName, "grid").file());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

} // namespace tarnwick::testing
