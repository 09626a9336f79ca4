#pragma once

#include "analysis/scan_result.h"
#include "export/export_records.h"
#include "platform/fault_gate.h"
#include "serato/loaded_crate.h"

/// The words in which the tests of the exporters speak of a library, of its reports and of a disk
/// that fails.
namespace tarnwick::testing {

inline ScannedTrack onDisk(const QString &relativePath)
{
    ScannedTrack scanned;
    scanned.track.relativePath = relativePath;
    scanned.existsOnDisk = true;
    return scanned;
}

inline ScannedTrack onDisk(const QString &relativePath, const QString &artist, const QString &title)
{
    ScannedTrack scanned = onDisk(relativePath);
    scanned.track.artist = artist;
    scanned.track.title = title;
    return scanned;
}

inline ScannedTrack missing(const QString &relativePath)
{
    ScannedTrack scanned = onDisk(relativePath);
    scanned.existsOnDisk = false;
    return scanned;
}

/// So many tracks on disk: "Music/1.mp3" and on.
inline std::vector<ScannedTrack> tracksOnDisk(int count)
{
    std::vector<ScannedTrack> tracks;
    for (int number = 1; number <= count; ++number)
        tracks.push_back(onDisk(QStringLiteral("Music/%1.mp3").arg(number)));
    return tracks;
}

inline LoadedCrate crate(const QString &name, const QStringList &paths)
{
    return {.name = name, .url = {}, .paths = paths};
}

/// Keeps every report of an export, as "phase written/total".
struct ProgressLog
{
    QStringList reports;

    ExportProgressFunction function()
    {
        return [this](const ExportProgress &progress) {
            reports.append(QStringLiteral("%1 %2/%3")
                               .arg(progress.phase)
                               .arg(progress.written)
                               .arg(progress.total));
        };
    }
};

inline void ignoreProgress(const ExportProgress &) {}

/// Lets the n-th operation on files fail, counted from 1, with an errno value.
class FailingDisk
{
public:
    FailingDisk(int failingCall, int error)
        : m_faults([this, failingCall, error](platform::FileOperation, const QString &) {
            return ++m_calls == failingCall ? error : 0;
        })
    {}

    /// The operations asked for so far.
    int calls() const { return m_calls; }

private:
    int m_calls = 0;
    platform::ScopedFaults m_faults;
};

} // namespace tarnwick::testing
