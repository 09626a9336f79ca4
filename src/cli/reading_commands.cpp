#include "cli/reading_commands.h"

#include "cli/session.h"
#include "cli/text_table.h"
#include "cli/track_json.h"
#include "foundation/byte_format.h"
#include "foundation/dates.h"
#include "screens/score/score_figures.h"

#include <span>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

void writeLocation(JsonWriter &json, const SeratoLibrary::Location &location)
{
    json.beginObject();
    json.member(u"volumeName", location.volumeName);
    json.member(u"folder", location.folderPath());
    json.member(u"isOnline", location.isOnline);
    json.member(u"hasDatabase", location.hasDatabase);
    json.endObject();
}

void writeLibraries(JsonWriter &json, const AppState &app)
{
    const auto chosen = app.defaultLocation();
    json.beginObject();
    json.member(u"seratoRunning", app.isSeratoRunning());
    json.member(u"default", chosen ? std::optional(chosen->folderPath()) : std::nullopt);
    json.key(u"libraries");
    json.beginArray();
    for (const SeratoLibrary::Location &location : app.locations())
        writeLocation(json, location);
    json.endArray();
    json.endObject();
}

void printLibraries(Output &out, const AppState &app)
{
    if (app.isSeratoRunning())
        out.line(u"Serato is running."_s);
    if (app.locations().isEmpty())
        out.line(u"No _Serato_ folder found."_s);
    const auto chosen = app.defaultLocation();
    TextTable table;
    for (const SeratoLibrary::Location &location : app.locations()) {
        table.addRow({chosen == location ? u"*"_s : u" "_s, location.volumeName,
                      location.hasDatabase ? u"database"_s : u"no database"_s,
                      location.folderPath()});
    }
    out.text(table.text());
}

void writeProgress(JsonWriter &json, const QList<ScanProgress> &reports)
{
    json.key(u"progress");
    json.beginArray();
    for (const ScanProgress &report : reports) {
        json.beginObject();
        json.member(u"phase", report.phase);
        json.member(u"processed", report.processed);
        json.member(u"total", report.total);
        json.member(u"filesOnDisk", report.filesOnDisk);
        json.member(u"missing", report.missing);
        json.endObject();
    }
    json.endArray();
}

void writeScan(Output &out, const ScanResult &result, const QList<ScanProgress> &reports)
{
    JsonWriter &json = out.json();
    json.beginObject();
    json.member(u"library", result.location.folderPath());
    json.member(u"volumeName", result.location.volumeName);
    json.member(u"scannedAt", isoSeconds(result.scannedAt));
    json.member(u"total", result.total());
    writeProgress(json, reports);
    json.key(u"tracks");
    json.beginArray();
    for (const ScannedTrack &track : result.tracks) {
        writeTrack(json, track);
        out.passOn();
    }
    json.endArray();
    json.endObject();
}

void printScan(Output &out, const ScanResult &result)
{
    const size_t shown = size_t(out.shownRows(result.total()));
    for (const ScannedTrack &scanned : std::span(result.tracks).first(shown)) {
        const QString place =
            scanned.isMissing() ? out.toned(Tone::Poor, u"missing"_s) : u"on disk"_s;
        out.line(place + u"  "_s + scanned.track.relativePath);
        out.passOn();
    }
    out.tellRest(result.total());
    out.line(u"%1 tracks in %2"_s.arg(result.total()).arg(result.location.folderPath()));
}

struct CountField
{
    QStringView name;
    int Derived::*field;
};

constexpr CountField countFields[] = {
    {u"total", &Derived::total},
    {u"onDisk", &Derived::onDisk},
    {u"missing", &Derived::missing},
    {u"withMarkers", &Derived::withMarkers},
    {u"withGrid", &Derived::withGrid},
    {u"withGain", &Derived::withGain},
    {u"withArtist", &Derived::withArtist},
    {u"withGenre", &Derived::withGenre},
    {u"withKey", &Derived::withKey},
    {u"withBPM", &Derived::withBpm},
    {u"tagsReadable", &Derived::tagsReadable},
    {u"duplicateExcess", &Derived::duplicateExcess},
};

void writeDuplicateGroup(JsonWriter &json, const DuplicateGroup &group)
{
    json.beginObject();
    json.member(u"key", group.key);
    json.key(u"members");
    json.beginArray();
    for (const ScannedTrack &member : group.members)
        json.value(member.track.relativePath);
    json.endArray();
    json.member(u"reclaimableBytes", group.reclaimableBytes);
    json.endObject();
}

void writeDimension(JsonWriter &json, const Dimension &dimension)
{
    json.beginObject();
    json.member(u"kind", dimension.id());
    json.member(u"score", dimension.score);
    json.member(u"detail", dimension.detail);
    json.member(u"jumpTitle", dimension.jumpTitle);
    json.endObject();
}

void writeScore(Output &out, const Derived &derived)
{
    JsonWriter &json = out.json();
    json.beginObject();
    for (const CountField &count : countFields)
        json.member(count.name, derived.*count.field);
    json.member(u"reclaimableBytes", derived.reclaimableBytes);
    json.member(u"onDiskBytes", derived.onDiskBytes);
    json.key(u"duplicateGroups");
    json.beginArray();
    for (const DuplicateGroup &group : derived.duplicateGroups) {
        writeDuplicateGroup(json, group);
        out.passOn();
    }
    json.endArray();
    json.key(u"dimensions");
    json.beginArray();
    for (const Dimension &dimension : derived.dimensions)
        writeDimension(json, dimension);
    json.endArray();
    json.member(u"score", derived.score);
    json.member(u"grade", derived.grade());
    json.member(u"worst", derived.worst().id());
    json.member(u"estimatedMinutes", derived.estimatedMinutes());
    json.member(u"reclaimable", ByteFmt::string(derived.reclaimableBytes));
    json.member(u"onDiskText", ByteFmt::string(derived.onDiskBytes));
    json.endObject();
}

Tone toneOf(int score)
{
    switch (ScoreFigures::bandOf(score)) {
    case ScoreFigures::Band::Good:
        return Tone::Good;
    case ScoreFigures::Band::Warn:
        return Tone::Warn;
    case ScoreFigures::Band::Poor:
        break;
    }
    return Tone::Poor;
}

/// Twenty places, as many of them filled as the score has fives.
QString bar(const Output &out, int score)
{
    const int filled = (score + 2) / 5;
    return out.toned(toneOf(score), QString(filled, u'█')) +
           out.toned(Tone::Faint, QString(20 - filled, u'░'));
}

void printScore(Output &out, const Derived &derived)
{
    out.line(u"Library score  %1/100"_s.arg(
        out.toned(toneOf(derived.score), QString::number(derived.score))));
    out.line(derived.grade());
    out.line();
    TextTable table;
    table.alignRight(1);
    for (const Dimension &dimension : derived.dimensions)
        table.addRow({dimension.id(), QString::number(dimension.score), bar(out, dimension.score),
                      dimension.detail});
    out.text(table.text());
    out.line();
    out.line(
        u"%1 tracks, %2 on disk, %3 to reclaim, about %4 min of clean-up"_s.arg(derived.total)
            .arg(ByteFmt::string(derived.onDiskBytes), ByteFmt::string(derived.reclaimableBytes))
            .arg(derived.estimatedMinutes()));
}

} // namespace

Status runLibraries(Session &session)
{
    if (session.wantsJson())
        writeLibraries(session.out().json(), session.app());
    else
        printLibraries(session.out(), session.app());
    return Status::Done;
}

Status runScan(Session &session)
{
    if (session.wantsJson())
        writeScan(session.out(), *session.app().result(), session.progress());
    else
        printScan(session.out(), *session.app().result());
    return Status::Done;
}

Status runScore(Session &session)
{
    if (session.wantsJson())
        writeScore(session.out(), *session.app().derived());
    else
        printScore(session.out(), *session.app().derived());
    return Status::Done;
}

} // namespace tarnwick::cli
