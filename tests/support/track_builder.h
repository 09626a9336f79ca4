#pragma once

#include "analysis/scan_result.h"

namespace tarnwick::testing {

/// Builds a ScannedTrack word by word:
/// `onDisk(u"Adele"_s, u"Hello"_s).genre(u"Pop"_s).bytes(100)`.
class TrackBuilder
{
public:
    TrackBuilder() = default;
    TrackBuilder(const QString &artist, const QString &title)
    {
        m_scanned.track.artist = artist;
        m_scanned.track.title = title;
    }

    TrackBuilder &path(const QString &text) { return with(m_scanned.track.relativePath, text); }
    TrackBuilder &genre(const QString &text) { return with(m_scanned.track.genre, text); }
    TrackBuilder &key(const QString &text) { return with(m_scanned.track.key, text); }
    TrackBuilder &bpm(const QString &text) { return with(m_scanned.track.bpm, text); }
    TrackBuilder &bitrate(const QString &text) { return with(m_scanned.track.bitrateText, text); }
    TrackBuilder &plays(quint64 count) { return with(m_scanned.track.playCount, count); }
    TrackBuilder &flaggedMissing() { return with(m_scanned.track.flaggedMissing, true); }
    TrackBuilder &exists() { return with(m_scanned.existsOnDisk, true); }
    TrackBuilder &bytes(quint64 count) { return with(m_scanned.onDiskSizeBytes, count); }
    TrackBuilder &tagsRead() { return with(m_scanned.tagsRead, true); }
    TrackBuilder &markers() { return with(m_scanned.hasMarkers, true); }
    TrackBuilder &grid() { return with(m_scanned.hasBeatGrid, true); }
    TrackBuilder &gain() { return with(m_scanned.hasGain, true); }
    TrackBuilder &autogain(double decibels)
    {
        return with(m_scanned.autogain, std::optional(decibels));
    }

    operator ScannedTrack() const { return m_scanned; }

private:
    template <typename Field, typename Value>
    TrackBuilder &with(Field &field, const Value &value)
    {
        field = value;
        return *this;
    }

    ScannedTrack m_scanned;
};

/// A track whose file is there.
inline TrackBuilder onDisk(const QString &artist = {}, const QString &title = {})
{
    return TrackBuilder(artist, title).exists();
}

/// A track whose file is gone.
inline TrackBuilder lost(const QString &artist = {}, const QString &title = {})
{
    return TrackBuilder(artist, title);
}

inline std::shared_ptr<const ScanResult> scanOf(std::vector<ScannedTrack> tracks)
{
    return std::make_shared<ScanResult>(ScanResult{{}, {}, std::move(tracks)});
}

} // namespace tarnwick::testing
