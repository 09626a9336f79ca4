#pragma once

#include "analysis/crate_hygiene.h"
#include "analysis/crate_tracks.h"
#include "analysis/derived.h"
#include "analysis/library_scanner.h"
#include "app/phase.h"
#include "app/toast.h"
#include "export/export_records.h"
#include "foundation/result.h"
#include "foundation/screen.h"
#include "platform/background.h"
#include "repair/gain_item.h"
#include "safety/change_log.h"
#include "safety/cue_vault.h"
#include "safety/holding_folder.h"
#include "safety/snapshot.h"
#include "serato/loaded_crate.h"
#include "serato/serato_library.h"
#include "signal/lanes.h"
#include "signal/signal_config.h"
#include "signal/signal_records.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

class WriteRun;

/// Everything that the screens show and every command that they offer. One for the life of the
/// process; lives on the main thread. Every change of a field is told by its signal.
///
/// Does not look at tracks one by one or at files itself: it drives what does.
class AppState : public QObject
{
    Q_OBJECT

public:
    using Phase = tarnwick::Phase;

    /// While one lives, the views are not told what commands change: they are told once, at the
    /// end. For several commands in a row.
    class Gathering
    {
    public:
        explicit Gathering(AppState &app)
            : m_app(app)
        {
            ++m_app.m_gatherings;
        }
        ~Gathering() { m_app.endGathering(); }
        Gathering(const Gathering &) = delete;
        Gathering &operator=(const Gathering &) = delete;

    private:
        AppState &m_app;
    };

    /// Whether the `TARNWICK_…` environment variables act.
    enum class Environment { Ignored, Read };

    /// The launch: loads the stores, looks for libraries and for Serato, and starts the first scan
    /// where the environment asks for it.
    explicit AppState(Environment environment, QObject *parent = nullptr);
    ~AppState() override;

    const Phase &phase() const { return m_phase; }
    const QList<SeratoLibrary::Location> &locations() const { return m_locations; }
    /// The last finished scan, with what the commands have changed since; null before the first.
    std::shared_ptr<const ScanResult> result() const { return m_result; }
    Screen selection() const { return m_selection; }
    /// As last looked at: when this object was made, and when the window appeared.
    bool isSeratoRunning() const { return m_seratoRunning; }
    const std::optional<Toast> &toast() const { return m_toast; }
    /// Newest first. Empty until the log has been read, a moment after the launch; the same holds
    /// for `cueProtected`.
    QList<ChangeEntry> changeEntries() const;
    const ChangeLog &changeLog() const { return m_changeLog; }
    const HoldingFolder &holding() const { return m_holding; }
    const QList<HeldItem> &heldItems() const { return m_holding.items(); }
    /// Newest first, as last looked at.
    const QList<Snapshot> &snapshots() const { return m_snapshots; }
    /// How many tracks the cue vault protects.
    int cueProtected() const { return m_cueProtected; }
    /// The crates of the scanned library, by name; those of the last reading of them.
    const QList<LoadedCrate> &crates() const { return m_crates; }
    /// What a long command that is under way is called; nothing while none is.
    const std::optional<QString> &busy() const { return m_busy; }
    /// How far a running export has come; nothing while none runs.
    const std::optional<ExportProgress> &exporting() const { return m_exporting; }
    /// What the last export has written; nothing from the start of the next on.
    const std::optional<ExportOutcome> &lastExport() const { return m_lastExport; }
    /// The settings for Signal, as they stand in memory.
    const SignalConfig &signal() const { return m_signal; }
    /// The chart as last fetched. It stays where a later fetch fails.
    const QList<LandingTrack> &landing() const { return m_landing; }
    /// Why the last fetch of the chart failed; nothing if it didn't.
    const std::optional<QString> &landingError() const { return m_landingError; }
    /// Whether the chart is being fetched or plays are being contributed.
    bool signalBusy() const { return m_signalBusy; }
    const std::optional<SignalClient::PoolStats> &poolStats() const { return m_poolStats; }
    /// How many plays of this DJ's the pool holds, as the server last said.
    qint64 youFeed() const { return m_youFeed; }
    /// The track keys of all that was played, as read after the last scan.
    const QSet<QString> &playedKeys() const { return m_playedKeys; }
    /// Duplicate groups that the user called none; forgotten with the process.
    const QSet<QString> &ignoredDupeKeys() const { return m_ignoredDupeKeys; }

    /// Whether the write commands are offered. A write checks afresh at its own moment.
    bool canWrite() const { return !m_seratoRunning && m_result; }
    /// All figures of the present library; null before the first scan. Kept until the library
    /// changes: take it anew after each change, and rely on no id in it beyond that.
    std::shared_ptr<const Derived> derived() const;
    /// What could be tidied about crates and genres; null before the first scan. Kept until the
    /// library or the crates change, with ids that last no longer.
    std::shared_ptr<const CrateHygiene> hygiene() const;
    /// The songs of the present library in more than one cut, by the places of their tracks in
    /// `result`; null before the first scan. Kept until the library changes.
    std::shared_ptr<const std::vector<VersionPlaces>> versions() const;
    /// Whether hygiene and versions are there already: on a large library either takes longer to
    /// work out than a view may take to open.
    bool hasHygiene() const { return bool(m_hygiene.value); }
    bool hasVersions() const { return bool(m_versions.value); }
    /// Work them out in the background, where there is a library and they aren't there yet;
    /// `figuresPrepared` tells, also where the library has changed meanwhile.
    void prepareHygiene();
    void prepareVersions();
    /// The present library's tracks by path; empty before the first scan. Good until the library
    /// changes.
    const TrackMap &trackMap() const;
    /// The set that these crates make up, each track once; see tracksInCrates.
    std::vector<ScannedTrack> tracksInCrates(const QSet<QString> &names) const;
    /// The lanes of the present library's tracks on disk, in order, behind "All". Kept until the
    /// library changes, as are `ownedKeys`.
    const QStringList &lanes() const { return ownedMusic().lanes; }
    /// The track keys of the present library's tracks on disk.
    const QSet<QString> &ownedKeys() const { return ownedMusic().keys; }
    /// Whether the two are at hand. Else to ask for them takes longer than a frame.
    bool hasOwnedMusic() const { return bool(m_ownedMusic); }
    /// Works them out in the background where they are not at hand; `signalChanged` tells the end.
    void prepareOwnedMusic(platform::Priority priority = platform::Priority::UserInitiated);
    /// The library that a scan without a choice takes: the home library, with or without a
    /// database, else the first one online with a database.
    std::optional<SeratoLibrary::Location> defaultLocation() const;

    void setSelection(Screen screen);

    /// Looks again for libraries and for Serato. The window calls it once, when it appears.
    void refreshEnvironment();
    /// Scans in the background. No scan is ever cancelled: of two, the later finish wins.
    void startScan(const SeratoLibrary::Location &location,
                   LibraryScanner::ReadTags readTags = LibraryScanner::ReadTags::Yes);
    /// Scans the present library again, else the default one; nothing where there is neither.
    void rescan();
    /// Copies what can change of the library, in the background. Needs no closed Serato.
    void takeSnapshot(const QString &reason);

    /// Exports the present library to a folder, in the background; nothing before the first scan. A
    /// failure is told by a toast, and what was written until then stays.
    void runExport(ExportTarget target, const QString &folder);
    /// How far the present library and an earlier export in the folder have come apart; nothing
    /// where there is nothing to compare. Reads the whole export: not for every frame.
    std::optional<ExportDrift> drift(ExportTarget target, const QString &folder) const;

    /// Changes the settings for Signal in memory alone.
    void setSignal(const SignalConfig &config);
    void saveSignal();
    /// Fetches the chart in the background. A lane or a city of "All" doesn't filter.
    void refreshLanding(int windowDays, const std::optional<QString> &lane,
                        const std::optional<QString> &city);
    /// Shares all plays of the history, in the background, where the user has turned sharing on.
    void contributePlays();
    /// Has all plays of this DJ's erased, in the background, and turns sharing off once they are.
    void leaveSignal();

    /// Shows a message for 4.2 seconds, in the place of the one on show.
    void showToast(const QString &message, Reversible reversible = Reversible::No);

    // The write commands. All do nothing without a scan result, or say why they refuse; all take a
    // snapshot first, keep `result` in step with the disk, and add to the change log. What goes
    // wrong is told in a toast.

    /// Points the record of a track at the file, which is not looked at.
    void relink(const ScannedTrack &track, const QUrl &file);
    /// Takes the record of a track out of the database; no file is touched.
    void dropFromLibrary(const ScannedTrack &track);
    /// Moves the files of all members but the keeper into holding, and drops their records.
    void resolveDuplicates(const DuplicateGroup &group, const QUuid &keeperId);
    /// Leaves the group out of the figures until the process ends. Writes nothing.
    void markNotDuplicate(const DuplicateGroup &group);
    /// Without a toast of its own where all goes well.
    void setGenre(const ScannedTrack &track, const QString &genre,
                  const std::optional<QString> &snapshotReason = std::nullopt);
    void setGenreBatch(const std::vector<ScannedTrack> &tracks, const QString &genre);
    /// Writes a gain in decibels into the tag of the track's file.
    void normalizeLoudness(const ScannedTrack &track, double gain);
    void normalizeAllLoudness(const std::vector<GainItem> &items);
    /// Files all cuts of the group but the keeper into the crate "Archive". They stay in their
    /// other crates and in the library. Does not read the crates again.
    void archiveVersions(const VersionGroup &group, const QUuid &keeperId);
    /// Adds the tracks of the smaller crate to the larger one, and holds the smaller one's file.
    void mergeCrates(const CrateHygiene::Overlap &overlap);
    /// Files the paths into the crate "Unsorted".
    void fileOrphans(const QStringList &paths);
    /// Sets the genre of all tracks that spell it otherwise to the canon.
    void unifyGenre(const CrateHygiene::GenreVariant &variant);
    /// Puts all saved cue frames of the track back into its file.
    void restoreCues(const CueVault::Loss &loss);
    void restoreAllCues();

    /// What the files of the library have lost since the vault last saw them.
    QList<CueVault::Loss> cueLosses() const;

    /// Takes a change back as far as its kind can be, and marks the entry.
    void undo(const ChangeEntry &entry);
    /// Undoes what is reversible now, newest first, and says so whatever became of it.
    void undoEverything();
    /// Puts the snapshot over the present library in the background, then scans it again.
    void restoreSnapshot(const Snapshot &snapshot);

    /// The number of background tasks whose result is still to come.
    int pendingTasks() const { return m_pendingTasks; }

Q_SIGNALS:
    void phaseChanged();
    void locationsChanged();
    void libraryChanged(); ///< the scan result, or what the figures leave out of it
    void cratesChanged();
    void figuresPrepared(); ///< hygiene or versions have come from the background
    void selectionChanged();
    void seratoRunningChanged();
    void toastChanged();
    void busyChanged();
    void exportingChanged(); ///< also for each report of a running export
    void lastExportChanged();
    void signalChanged(); ///< the settings, the chart, its error or what goes with them
    void safetyChanged(); ///< snapshots, change log, holding folder or cue vault
    /// One for each toast, also where two follow each other within one turn of the event loop.
    void toastRaised(const tarnwick::Toast &toast);
    /// Every report of a running scan, in order.
    void progressReported(const tarnwick::ScanProgress &progress);
    void scanFinished();
    void scanFailed(const QString &reason);
    /// No background task is left.
    void becameIdle();

private:
    friend class WriteRun;

    /// A scan that has ended well, with its figures and crates: they take too long to be worked out
    /// and read between two frames.
    struct FinishedScan
    {
        std::shared_ptr<ScanResult> result;
        QSet<QString> ignoredDupeKeys; ///< as they stood when the figures were worked out
        std::shared_ptr<const Derived> derived;
        int crateWrites = 0; ///< of this process, when the crates were read
        QList<LoadedCrate> crates;
    };

    /// Whether a write command may go on. Says so where Serato keeps it from that; without a
    /// library it is silent.
    bool mayWrite(const QString &refusal);
    /// The same, but says so without a library too.
    bool mayWriteOrRefuse(const QString &refusal);
    /// A toast that tells of a refusal or a failure.
    void showProblem(const QString &message);
    void show(const Toast &toast);
    /// Adds the paths to a crate of the present library; see CrateWriter.
    Result<int> addToCrate(const QStringList &paths, const QString &name);
    /// The scan result for a change, apart from what others still hold of it.
    ScanResult &changedResult();

    /// A figure that is kept until what it rests on changes.
    template <typename T>
    struct Kept
    {
        std::shared_ptr<const T> value;
        int drops = 0;         ///< tells one that was worked out too early
        bool underWay = false; ///< being worked out in the background, from what is so now

        void drop() { *this = Kept{.value = nullptr, .drops = drops + 1}; }
    };
    template <typename T, typename Work>
    void prepare(Kept<T> AppState::*figure, Work work);

    void endGathering();

    void setPhase(Phase phase);
    void setBusy(const std::optional<QString> &label);
    /// To be called after each change of the result or of the ignored keys. `derived` are the new
    /// figures, where they are known already.
    void libraryHasChanged(std::shared_ptr<const Derived> derived = nullptr);
    /// Forgets all that was worked out from the library.
    void dropFigures();
    const OwnedMusic &ownedMusic() const;
    void setCrates(const QList<LoadedCrate> &crates);
    /// Reads the present library's crates again; nothing before the first scan.
    void reloadCrates();
    /// Brings what the views see of the stores up to date.
    void syncSafety(); ///< once all gatherings have ended
    void syncSafetyOnceLoaded();
    void captureCueVault();
    void didSnapshot(const Snapshot &snapshot);
    void didRollBack(const Snapshot &snapshot, const SeratoLibrary::Location &location);

    void updateProgress(const ScanProgress &progress);
    void finishScan(FinishedScan scan);
    void failScan(const Failure &reason);
    void setExporting(const std::optional<ExportProgress> &progress);
    void setLastExport(const std::optional<ExportOutcome> &outcome);
    void finishExport(const ExportOutcome &outcome);
    void failExport(const Failure &reason);
    void loadPlayedKeys();
    void setSignalBusy(bool busy);
    void applyEnvironmentAfterScan();
    std::optional<QString> environmentValue(const char *name) const;

    /// The one way into the background: counted, so that `becameIdle` can be waited for.
    template <typename Work, typename Then>
    void runInBackground(platform::Priority priority, Work work, Then then)
    {
        ++m_pendingTasks;
        platform::runInBackground(priority, this, std::move(work), [this, then](auto &&value) {
            then(std::forward<decltype(value)>(value));
            taskEnded();
        });
    }
    void taskEnded();

    const Environment m_environment;
    Phase m_phase;
    QList<SeratoLibrary::Location> m_locations;
    std::shared_ptr<ScanResult> m_result;
    Screen m_selection = Screen::LibraryScore;
    bool m_seratoRunning = false;
    std::optional<Toast> m_toast;
    ChangeLog m_changeLog;
    HoldingFolder m_holding;
    const std::shared_ptr<CueVault> m_cueVault = std::make_shared<CueVault>();
    QList<Snapshot> m_snapshots;
    int m_cueProtected = 0;
    QList<LoadedCrate> m_crates;
    int m_crateWrites = 0; ///< crate files that commands have written or moved
    std::optional<QString> m_busy;
    std::optional<ExportProgress> m_exporting;
    std::optional<ExportOutcome> m_lastExport;
    SignalConfig m_signal = SignalConfig::loadOrCreate();
    QList<LandingTrack> m_landing;
    std::optional<QString> m_landingError;
    bool m_signalBusy = false;
    std::optional<SignalClient::PoolStats> m_poolStats;
    qint64 m_youFeed = 0;
    QSet<QString> m_playedKeys;
    QSet<QString> m_ignoredDupeKeys;

    int m_gatherings = 0;
    bool m_libraryToTell = false;
    bool m_safetyToSync = false;

    mutable std::shared_ptr<const Derived> m_derived;
    mutable Kept<CrateHygiene> m_hygiene;
    mutable Kept<std::vector<VersionPlaces>> m_versions;
    mutable std::optional<TrackMap> m_trackMap;
    mutable std::optional<OwnedMusic> m_ownedMusic;
    const ScanResult *m_ownedMusicOf = nullptr; ///< what it is being worked out of just now
    int m_pendingTasks = 0;
};

} // namespace tarnwick
