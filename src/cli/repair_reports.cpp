// The commands that tell what there is to repair, and how.

#include "cli/repair_reports.h"

#include "cli/json_lists.h"
#include "cli/session.h"
#include "cli/text_table.h"
#include "repair/relink_candidates.h"
#include "screens/fix_queue/fix_queue_figures.h"
#include "screens/health/health_figures.h"
#include "screens/loudness/loudness_figures.h"
#include "screens/track_id/track_id_figures.h"
#include "screens/versions/version_figures.h"

#include <span>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

using FixQueueFigures::FilterInfo;
using FixQueueFigures::Issue;
using LoudnessFigures::Standing;

void writeBars(Output &out, QStringView name, QStringView labelName,
               const QList<HealthFigures::Bar> &bars)
{
    writeObjects(out, name, bars, [&](JsonWriter &json, const HealthFigures::Bar &bar) {
        json.member(labelName, bar.label);
        json.member(u"count", bar.count);
    });
}

void writeHealth(Output &out, const Derived &derived)
{
    out.json().beginObject();
    writeObjects(out, u"steps", HealthFigures::steps(derived),
                 [](JsonWriter &json, const HealthFigures::Step &step) {
                     json.member(u"title", step.title);
                     json.member(u"detail", step.detail);
                     json.member(u"jump", infoOf(step.jump).rawValue);
                 });
    writeBars(out, u"topGenres", u"genre", HealthFigures::topGenres(derived));
    writeBars(out, u"bpmBands", u"label", HealthFigures::bpmBands(derived));
    out.json().endObject();
}

void printBars(Output &out, const QString &title, const QList<HealthFigures::Bar> &bars)
{
    out.line();
    out.line(title);
    TextTable table;
    table.alignRight(1);
    for (const HealthFigures::Bar &bar : bars)
        table.addRow({u"  "_s + bar.label, QString::number(bar.count)});
    out.list(table);
}

void printHealth(Output &out, const Derived &derived)
{
    out.line(u"Do this first"_s);
    const QList<HealthFigures::Step> steps = HealthFigures::steps(derived);
    if (steps.isEmpty())
        out.line(u"  Nothing urgent. Your library is in good shape."_s);
    for (const HealthFigures::Step &step : steps) {
        out.line(u"  "_s + step.title);
        out.line(u"    "_s + step.detail);
    }
    printBars(out, u"Genres"_s, HealthFigures::topGenres(derived));
    printBars(out, u"BPM range"_s, HealthFigures::bpmBands(derived));
}

std::optional<FixQueueFigures::Filter> filterNamed(const QString &name)
{
    for (const FilterInfo &info : FixQueueFigures::filters()) {
        if (info.name == name)
            return info.filter;
    }
    return std::nullopt;
}

std::vector<Issue> passing(const std::vector<Issue> &issues, FixQueueFigures::Filter filter)
{
    std::vector<Issue> kept;
    for (const Issue &issue : issues) {
        if (FixQueueFigures::passes(issue, filter))
            kept.push_back(issue);
    }
    return kept;
}

void writeIssue(JsonWriter &json, const Issue &issue, const Derived &derived)
{
    const FixQueueFigures::Texts texts = FixQueueFigures::textsOf(issue, derived);
    json.member(u"kind", FixQueueFigures::rawValue(issue.kind));
    json.member(u"severity", issue.severity);
    json.member(u"typeLabel", FixQueueFigures::typeLabel(issue.kind));
    json.member(u"track", texts.track);
    json.member(u"problem", texts.problem);
    json.member(u"plan", texts.plan);
    json.member(u"safe", issue.safe);
    json.member(u"fixable", FixQueueFigures::isFixable(issue, derived));
    json.member(u"jump", infoOf(FixQueueFigures::jumpOf(issue)).rawValue);
}

void printIssues(Output &out, const std::vector<Issue> &issues, const Derived &derived)
{
    TextTable table;
    for (const Issue &issue : issues) {
        const FixQueueFigures::Texts texts = FixQueueFigures::textsOf(issue, derived);
        table.addRow({FixQueueFigures::typeLabel(issue.kind),
                      out.toned(Tone::Good, issue.safe ? u"safe"_s : u""_s), texts.track,
                      u"%1 → "_s.arg(texts.problem) + texts.plan});
    }
    out.list(table);
}

void writeVersions(Output &out, const std::vector<VersionGroup> &groups)
{
    out.json().beginObject();
    writeObjects(out, u"groups", groups, [&](JsonWriter &json, const VersionGroup &group) {
        json.member(u"base", group.base);
        writeObjects(out, u"members", group.members,
                     [](JsonWriter &one, const VersionMember &member) {
                         one.member(u"path", member.track.track.relativePath);
                         one.member(u"cut", member.cut);
                         one.member(u"plays", member.plays());
                     });
    });
    out.json().endObject();
}

void printVersions(Output &out, const std::vector<VersionGroup> &groups)
{
    out.line(u"%1 songs in more than one cut"_s.arg(groups.size()));
    const size_t shown = size_t(out.shownRows(qsizetype(groups.size())));
    for (const VersionGroup &group : std::span(groups).first(shown)) {
        out.line();
        out.line(group.base);
        TextTable table;
        table.alignRight(1);
        for (const VersionMember &member : group.members)
            table.addRow({u"  "_s + member.cut, VersionFigures::plays(member.plays()),
                          member.track.track.relativePath});
        out.list(table);
        out.passOn();
    }
    out.tellRest(qsizetype(groups.size()));
}

QString pathOf(const Derived &derived, size_t index)
{
    return derived.result().tracks[index].track.relativePath;
}

void writeGenres(Output &out, const Derived &derived)
{
    const auto untagged = TrackIdFigures::untagged(derived);
    QStringList paths;
    for (const TrackIdFigures::Untagged &one : untagged)
        paths.append(pathOf(derived, one.index));
    out.json().beginObject();
    writeTexts(out.json(), u"untagged", paths);
    writeObjects(out, u"suggestions", TrackIdFigures::suggestions(untagged),
                 [&](JsonWriter &json, const TrackIdFigures::Untagged &one) {
                     json.member(u"path", pathOf(derived, one.index));
                     json.member(u"genre", one.suggestion->genre);
                     json.member(u"confidence", one.suggestion->confidence);
                 });
    out.json().endObject();
}

void printGenres(Output &out, const Derived &derived)
{
    const auto untagged = TrackIdFigures::untagged(derived);
    const auto suggestions = TrackIdFigures::suggestions(untagged);
    out.line(
        u"%1 tracks without a genre, %2 with a suggestion, %3 of them sure"_s.arg(untagged.size())
            .arg(suggestions.size())
            .arg(TrackIdFigures::ready(suggestions).size()));
    TextTable table;
    table.alignRight(0);
    for (const TrackIdFigures::Untagged &one : suggestions)
        table.addRow({u"%1%"_s.arg(one.suggestion->confidence), one.suggestion->genre,
                      pathOf(derived, one.index)});
    out.list(table);
}

void writeLoudness(Output &out, const Derived &derived)
{
    const auto tracks = LoudnessFigures::tracks(derived);
    QStringList outliers;
    for (const Standing &one : LoudnessFigures::outliers(tracks))
        outliers.append(pathOf(derived, one.index));
    out.json().beginObject();
    out.json().member(u"avgAutogain", derived.avgAutogain());
    writeObjects(out, u"tracks", tracks, [&](JsonWriter &json, const Standing &one) {
        const ScannedTrack &scanned = derived.result().tracks[one.index];
        json.member(u"path", scanned.track.relativePath);
        json.member(u"autogain", scanned.autogain);
        json.member(u"deviation", derived.loudnessDeviation(scanned));
        json.member(u"gain", derived.normalizingGain(scanned));
        json.member(u"hasReplayGain", scanned.hasReplayGain);
    });
    writeTexts(out.json(), u"outliers", outliers);
    out.json().endObject();
}

void printLoudness(Output &out, const Derived &derived)
{
    const auto tracks = LoudnessFigures::tracks(derived);
    out.line(u"%1 tracks analysed, average autogain %2, %3 off by 1.5 dB or more"_s.arg(
        QString::number(tracks.size()), LoudnessFigures::averageText(derived),
        QString::number(LoudnessFigures::outliers(tracks).size())));
    TextTable table;
    table.alignRight(0);
    for (const Standing &one : tracks) {
        const bool tagged = derived.result().tracks[one.index].hasReplayGain;
        table.addRow({LoudnessFigures::deviationText(one.deviation), tagged ? u"tagged"_s : u""_s,
                      pathOf(derived, one.index)});
    }
    out.list(table);
}

void writeCandidates(Output &out, const QList<RepairEngine::Candidate> &candidates)
{
    out.json().beginObject();
    writeObjects(out, u"candidates", candidates,
                 [](JsonWriter &json, const RepairEngine::Candidate &candidate) {
                     json.member(u"file", candidate.url.toLocalFile());
                     json.member(u"confidence", candidate.confidence);
                     json.member(u"reason", candidate.reason);
                     json.member(u"drive", candidate.drive());
                 });
    out.json().endObject();
}

void printCandidates(Output &out, const QList<RepairEngine::Candidate> &candidates)
{
    if (candidates.isEmpty())
        out.line(u"Nothing of that name found on any disk."_s);
    TextTable table;
    table.alignRight(0);
    for (const RepairEngine::Candidate &candidate : candidates)
        table.addRow({u"%1%"_s.arg(candidate.confidence), candidate.reason, candidate.drive(),
                      candidate.url.toLocalFile()});
    out.list(table);
}

/// Runs one of a pair: the JSON form or the readable one.
template <typename Write, typename Print, typename Figures>
Status show(Session &session, Write write, Print print, const Figures &figures)
{
    if (session.wantsJson())
        write(session.out(), figures);
    else
        print(session.out(), figures);
    return Status::Done;
}

} // namespace

Status runHealth(Session &session)
{
    return show(session, writeHealth, printHealth, *session.app().derived());
}

Done checkQueue(const CommandLine &line)
{
    if (!line.has(u"filter"_s) || filterNamed(line.value(u"filter"_s)))
        return {};
    QStringList names;
    for (const FilterInfo &info : FixQueueFigures::filters())
        names.append(info.name);
    return failure(
        u"unknown filter '%1' (known: %2)"_s.arg(line.value(u"filter"_s), names.join(u", "_s)));
}

Status runQueue(Session &session)
{
    const auto derived = session.app().derived();
    const std::vector<Issue> all = FixQueueFigures::issuesOf(*derived);
    const int safe = FixQueueFigures::safeCount(all);
    const std::vector<Issue> kept =
        passing(all, *filterNamed(session.line().value(u"filter"_s, u"all"_s)));
    if (!session.wantsJson()) {
        session.out().line(
            u"%1 issues, %2 safe to fix in the whole queue"_s.arg(kept.size()).arg(safe));
        printIssues(session.out(), kept, *derived);
        return Status::Done;
    }
    session.out().json().beginObject();
    session.out().json().member(u"safeCount", safe);
    writeObjects(session.out(), u"issues", kept,
                 [&](JsonWriter &json, const Issue &issue) { writeIssue(json, issue, *derived); });
    session.out().json().endObject();
    return Status::Done;
}

Status runVersions(Session &session)
{
    return show(session, writeVersions, printVersions, session.app().derived()->versionGroups());
}

Status runGenres(Session &session)
{
    return show(session, writeGenres, printGenres, *session.app().derived());
}

Status runLoudness(Session &session)
{
    return show(session, writeLoudness, printLoudness, *session.app().derived());
}

Status runCandidates(Session &session)
{
    const QString path = session.line().arguments[0];
    const ScannedTrack *track = session.trackAt(path);
    if (!track)
        return Session::namesNothing(u"no track lies at '%1'"_s.arg(path));
    return show(session, writeCandidates, printCandidates,
                RepairEngine::relinkCandidates(track->track));
}

} // namespace tarnwick::cli
