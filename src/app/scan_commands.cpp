// The road of a scan through AppState: its start, its reports and its two ends.

#include "app/app_state.h"
#include "serato/crate_store.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace tarnwick {

void AppState::startScan(const SeratoLibrary::Location &location, LibraryScanner::ReadTags readTags)
{
    setPhase(Scanning{});
    const QPointer<AppState> self(this);
    const auto report = [self](const ScanProgress &progress) {
        platform::callOnMainThread([self, progress] {
            if (self)
                self->updateProgress(progress);
        });
    };
    const auto work = [location, readTags, report, ignored = m_ignoredDupeKeys,
                       crateWrites = m_crateWrites] {
        return LibraryScanner::scan(location, readTags, report).map([&](ScanResult &&result) {
            auto shared = std::make_shared<ScanResult>(std::move(result));
            auto derived = std::make_shared<const Derived>(shared, ignored);
            // The first question for a genre counts the whole library: asked here, no screen waits.
            (void)derived->genreSuggestion({});
            return FinishedScan{.result = shared,
                                .ignoredDupeKeys = ignored,
                                .derived = derived,
                                .crateWrites = crateWrites,
                                .crates = CrateStore::load(location)};
        });
    };
    runInBackground(platform::Priority::UserInitiated, work, [this](Result<FinishedScan> outcome) {
        if (outcome)
            finishScan(std::move(*outcome));
        else
            failScan(outcome.error());
    });
}

void AppState::rescan()
{
    if (m_result)
        startScan(m_result->location);
    else if (const auto location = defaultLocation())
        startScan(*location);
}

void AppState::updateProgress(const ScanProgress &progress)
{
    // A report that comes in after the scan has ended must not bring its view back.
    if (!std::holds_alternative<Scanning>(m_phase))
        return;
    setPhase(Scanning{progress});
    Q_EMIT progressReported(progress);
}

void AppState::finishScan(FinishedScan scan)
{
    m_result = std::move(scan.result);
    libraryHasChanged(scan.ignoredDupeKeys == m_ignoredDupeKeys ? scan.derived : nullptr);
    setPhase(Ready{});
    setSelection(Screen::LibraryScore);
    // What a command wrote while the scan was under way may have been read in its old state.
    if (scan.crateWrites == m_crateWrites)
        setCrates(scan.crates);
    else
        reloadCrates();
    captureCueVault();
    loadPlayedKeys();
    prepareOwnedMusic(platform::Priority::Utility);
    applyEnvironmentAfterScan();
    Q_EMIT scanFinished();
}

/// Read anew after every scan of the process, not only the first.
void AppState::applyEnvironmentAfterScan()
{
    if (const auto wanted = environmentValue("TARNWICK_SCREEN")) {
        if (const auto screen = screenFromRawValue(*wanted))
            setSelection(*screen);
    }
    if (environmentValue("TARNWICK_SNAPSHOT") == u"1"_s)
        takeSnapshot(u"First snapshot"_s);
    if (environmentValue("TARNWICK_SIGNAL_CONTRIBUTE") == u"1"_s)
        contributePlays();
}

void AppState::failScan(const Failure &reason)
{
    setPhase(ChooseLibrary{});
    showProblem(u"Couldn't read that library: %1"_s.arg(reason.message));
    Q_EMIT scanFailed(reason.message);
}

} // namespace tarnwick
