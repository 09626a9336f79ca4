#include "screens/gig_run/gig_run_figures.h"

#include "export/export_util.h"
#include "foundation/numbers.h"
#include "screens/loudness/loudness_figures.h"

#include <QSet>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick::GigRunFigures {

namespace {

Outcome done(const QString &text)
{
    return StepDone{text};
}

Outcome skipped(const QString &text)
{
    return StepSkipped{text};
}

/// `found` with its count put in, or `none` for a count of 0.
Outcome counted(qsizetype count, const QString &found, const QString &none)
{
    return count > 0 ? skipped(found.arg(count)) : done(none);
}

qsizetype withoutGrid(const ScanResult &result)
{
    return std::count_if(
        result.tracks.begin(), result.tracks.end(), [](const ScannedTrack &scanned) {
            return scanned.existsOnDisk && scanned.tagsRead && !scanned.hasBeatGrid;
        });
}

std::vector<LoudnessFigures::Standing> uneven(const Derived &derived)
{
    return LoudnessFigures::outliers(LoudnessFigures::tracksInLibraryOrder(derived));
}

QString lengthText(qint64 seconds)
{
    const qint64 minutes = seconds / 60;
    if (seconds < 3600)
        return u"%1m"_s.arg(minutes);
    return u"%1h %2m"_s.arg(minutes / 60).arg(minutes % 60);
}

/// Lambdas as one visitor of a variant.
template <typename... Cases>
struct Overloaded : Cases...
{
    using Cases::operator()...;
};
// As the standard has it by itself, but not every compiler of its time.
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

QString wholeTempo(double tempo)
{
    return QString::number(std::trunc(tempo), 'f', 0);
}

QString tempoPath(const std::vector<double> &tempos)
{
    if (tempos.empty())
        return {};
    const auto [slowest, fastest] = std::minmax_element(tempos.begin(), tempos.end());
    return wholeTempo(*slowest) + u"–"_s + wholeTempo(*fastest);
}

} // namespace

const QStringList &titles()
{
    static const QStringList all = {
        u"Relink"_s,     u"Analyze grids"_s, u"Detect keys"_s,        u"Level"_s,
        u"Dedupe set"_s, u"Render stems"_s,  u"Write Engine stick"_s, u"Verify"_s};
    return all;
}

StepState stateOf(const Outcome &outcome)
{
    return std::visit([](const auto &ended) -> StepState { return ended; }, outcome);
}

bool isDone(const Outcome &outcome)
{
    return std::holds_alternative<StepDone>(outcome);
}

QString statusOf(const StepState &state)
{
    return std::visit(Overloaded{[](const StepPending &) { return u"Waiting"_s; },
                                 [](const StepRunning &) { return u"Working…"_s; },
                                 [](const auto &ended) { return ended.text; }},
                      state);
}

QString symbolOf(const StepState &state)
{
    return std::visit(Overloaded{[](const StepPending &) { return QString(); },
                                 [](const StepRunning &) { return u"arrow.clockwise"_s; },
                                 [](const StepDone &) { return u"checkmark"_s; },
                                 [](const StepSkipped &) { return u"clock"_s; }},
                      state);
}

QString summary(int tracks, qsizetype crates)
{
    return u"%1 tracks · %2 crates"_s.arg(tracks).arg(crates);
}

QString runTitle(bool running)
{
    return running ? u"Running…"_s : u"Run gig prep"_s;
}

Outcome findings(Step step, const Derived &derived)
{
    switch (step) {
    case Step::Relink:
        return counted(derived.missing, u"%1 need relinking"_s, u"All files present"_s);
    case Step::Grids:
        return counted(withoutGrid(derived.result()), u"%1 without a grid"_s,
                       u"Every track gridded"_s);
    case Step::Keys:
        return counted(derived.total - derived.withKey, u"%1 without a key"_s, u"All keyed"_s);
    case Step::Level:
        return counted(qsizetype(uneven(derived).size()), u"%1 off by ≥1.5 dB"_s, u"Levels even"_s);
    case Step::Dedupe:
        return counted(qsizetype(derived.duplicateGroups.size()), u"%1 dupe groups"_s,
                       u"No duplicates"_s);
    case Step::Stems:
        return skipped(u"Stems arrive in a later phase"_s);
    case Step::EngineStick:
        return skipped(u"Engine export arrives in Phase 5"_s);
    case Step::Verify:
        return done(u"Set sheet ready"_s);
    }
    Q_UNREACHABLE();
}

std::vector<GainItem> levelling(const Derived &derived)
{
    return LoudnessFigures::levelling(derived, uneven(derived));
}

QString levelled(size_t tracks)
{
    return u"Levelled %1 tracks (tags)"_s.arg(tracks);
}

QString deduplicated(int copies)
{
    return u"Held %1 duplicate copies"_s.arg(copies);
}

SetSheet setSheet(const ScanResult &result, int crateCount)
{
    SetSheet sheet;
    sheet.crates = crateCount;
    quint64 seconds = 0; // wraps, as all sums of what files state
    std::vector<double> tempos;
    QSet<QString> keys;
    for (const ScannedTrack &scanned : result.tracks) {
        if (!scanned.existsOnDisk)
            continue;
        ++sheet.tracks;
        seconds += quint64(ExportUtil::seconds(scanned.track.lengthText));
        if (const double tempo = parseTempo(scanned.track.bpm).value_or(0); tempo > 0)
            tempos.push_back(tempo);
        if (scanned.track.hasKey())
            keys.insert(scanned.track.key);
    }
    sheet.length = lengthText(qint64(seconds));
    sheet.tempoPath = tempoPath(tempos);
    sheet.keys = int(keys.size());
    return sheet;
}

} // namespace tarnwick::GigRunFigures
