#pragma once

#include "analysis/scan_result.h"
#include "platform/shared_file.h"
#include "safety/cue_entry.h"
#include "safety/preloaded.h"

#include <QHash>
#include <QList>
#include <QUuid>

#include <memory>
#include <mutex>
#include <span>

namespace tarnwick {

/// Keeps a copy of the cue points and beat grids of every file, in "cuevault.json", so that a scan
/// can tell what a file has lost and a command can put it back.
///
/// 1. Every finished scan captures what is new. The one sign of something new is a size of the file
///    that the entry doesn't state; the content is never compared.
/// 2. A file in which the scan sees neither cues nor a grid leaves its entry alone: that is what
///    keeps the good copy alive after a loss.
/// 3. A new copy replaces the old one whole, also with a frame less than before.
/// 4. Entries are never removed.
/// 5. The file is written whole and plainly, at most once a capture. A write that fails is
///    ignored. A file that can't be read as a whole starts an empty vault and stays until the next
///    write.
/// 6. What another process has captured meanwhile is taken in ahead of the write: of two copies of
///    one file, the later.
///
/// The file is read in the background; whoever needs the entries first waits. `capture` works in
/// the background and swaps in a finished copy, so that the main thread always reads one whole
/// state, without waiting. A task that captures must share in owning the vault.
class CueVault
{
public:
    /// By a track's path as the database holds it.
    using Entries = QHash<QString, CueEntry>;

    /// What a file has lost. Made afresh for each question, never stored.
    struct Loss
    {
        QUuid id; ///< new at each evaluation
        ScannedTrack track;
        bool lostMarkers = false; ///< the vault holds markers and the file has none
        bool lostGrid = false;    ///< the vault holds a grid and the file has none
        QDateTime capturedAt;

        /// For the user: "Hot cues and beat grid", "Hot cues", "Beat grid" or "—".
        QString what() const;
    };

    CueVault();

    /// Copies the frames of files that are new or of another size than their entry states. Gives
    /// the number of entries made. Blocks, for as long as it takes to read the tags; two captures
    /// at a time follow each other.
    int capture(std::span<const ScannedTrack> tracks);

    std::shared_ptr<const Entries> entries() const;
    std::optional<CueEntry> entry(const QString &relativePath) const;
    /// Entries that hold at least one frame.
    int protectedCount() const;
    /// In the order of the tracks. Looks at presence alone, whatever the size.
    QList<Loss> losses(std::span<const ScannedTrack> tracks) const;

    /// False while a question would have to wait for the file.
    bool isLoaded() const;

private:
    /// One whole state of the vault.
    struct State
    {
        Entries entries;
        int protectedCount = 0;
        platform::FileState file; ///< that it was read from, or that holds it
    };

    static State load(const QString &path);
    static State stateOf(Entries entries, const platform::FileState &file);
    std::shared_ptr<const State> state() const;

    const QString m_path;
    Preloaded<const State> m_loaded;
    std::mutex m_capturing;                  ///< held by background tasks alone
    mutable std::mutex m_swapping;           ///< held for the copying of a pointer
    std::shared_ptr<const State> m_captured; ///< since the last capture; null before, when
                                             ///< `m_loaded` counts
};

} // namespace tarnwick
