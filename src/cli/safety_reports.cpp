// The commands that tell of snapshots, of the change log, of held files and of lost cues.

#include "cli/safety_reports.h"

#include "cli/json_lists.h"
#include "cli/session.h"
#include "cli/text_table.h"
#include "foundation/byte_format.h"
#include "foundation/dates.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

void writeSnapshots(Output &out, const QList<Snapshot> &snapshots)
{
    out.json().beginObject();
    writeObjects(out, u"snapshots", snapshots, [](JsonWriter &json, const Snapshot &snapshot) {
        json.member(u"id", snapshot.id);
        json.member(u"date", isoSeconds(snapshot.date));
        json.member(u"reason", snapshot.reason);
        json.member(u"sourcePath", snapshot.sourcePath);
        json.member(u"fileCount", snapshot.fileCount);
        json.member(u"byteSize", snapshot.byteSize);
    });
    out.json().endObject();
}

void printSnapshots(Output &out, const QList<Snapshot> &snapshots)
{
    if (snapshots.isEmpty())
        out.line(u"No snapshots."_s);
    TextTable table;
    table.alignRight(2);
    for (const Snapshot &snapshot : snapshots)
        table.addRow({snapshot.id, snapshot.shortDate(), ByteFmt::string(snapshot.byteSize),
                      snapshot.reason});
    out.list(table);
}

std::optional<QString> isoOf(const std::optional<QDateTime> &moment)
{
    return moment ? std::optional(isoSeconds(*moment)) : std::nullopt;
}

void writeChanges(Output &out, const ChangeLog &log)
{
    JsonWriter &json = out.json();
    json.beginObject();
    json.member(u"changeCount", log.changeCount());
    json.member(u"activeCount", log.activeCount());
    json.member(u"filesDeleted", ChangeLog::filesDeleted);
    writeObjects(out, u"entries", log.entries(), [](JsonWriter &one, const ChangeEntry &entry) {
        one.member(u"id", entry.id);
        one.member(u"kind", ChangeEntry::rawValue(entry.kind));
        one.member(u"date", isoSeconds(entry.date));
        one.member(u"target", entry.target);
        one.member(u"detail", entry.detail);
        one.member(u"before", entry.before);
        one.member(u"after", entry.after);
        one.member(u"reversibleUntil", isoOf(entry.reversibleUntil));
        one.member(u"reversed", entry.reversed);
        one.member(u"snapshotID", entry.snapshotId);
        one.member(u"holdingID", entry.holdingId);
        one.member(u"isReversible", entry.isReversible());
    });
    json.endObject();
}

QString standingOf(const ChangeEntry &entry)
{
    if (entry.reversed)
        return u"undone"_s;
    return entry.isReversible() ? u"reversible"_s : u""_s;
}

void printChanges(Output &out, const ChangeLog &log)
{
    out.line(u"%1 changes, %2 active, %3 files deleted"_s.arg(log.changeCount())
                 .arg(log.activeCount())
                 .arg(ChangeLog::filesDeleted));
    TextTable table;
    for (const ChangeEntry &entry : log.entries())
        table.addRow({entry.id, dateForPeople(entry.date), ChangeEntry::label(entry.kind),
                      standingOf(entry), entry.target, entry.detail});
    out.list(table);
}

void writeHeld(Output &out, const HoldingFolder &holding)
{
    JsonWriter &json = out.json();
    json.beginObject();
    json.member(u"count", holding.count());
    json.member(u"totalBytes", holding.totalBytes());
    writeObjects(out, u"items", holding.items(), [](JsonWriter &one, const HeldItem &item) {
        one.member(u"id", item.id);
        one.member(u"originalPath", item.originalPath);
        one.member(u"heldPath", item.heldPath);
        one.member(u"reason", item.reason);
        one.member(u"date", isoSeconds(item.date));
        one.member(u"expiresAt", isoSeconds(item.expiresAt));
        one.member(u"restored", item.restored);
        one.member(u"isExpired", item.isExpired());
        one.member(u"daysLeft", item.daysLeft());
    });
    json.endObject();
}

void printHeld(Output &out, const HoldingFolder &holding)
{
    out.line(
        u"%1 files held, %2"_s.arg(holding.count()).arg(ByteFmt::string(holding.totalBytes())));
    TextTable table;
    table.alignRight(1);
    for (const HeldItem &item : holding.activeItems())
        table.addRow(
            {item.id, u"%1 days left"_s.arg(item.daysLeft()), item.reason, item.originalPath});
    out.list(table);
}

void writeCues(Output &out, int cueProtected, const QList<CueVault::Loss> &losses)
{
    JsonWriter &json = out.json();
    json.beginObject();
    json.member(u"protected", cueProtected);
    writeObjects(out, u"losses", losses, [](JsonWriter &one, const CueVault::Loss &loss) {
        one.member(u"path", loss.track.track.relativePath);
        one.member(u"lostMarkers", loss.lostMarkers);
        one.member(u"lostGrid", loss.lostGrid);
        one.member(u"what", loss.what());
        one.member(u"capturedAt", isoSeconds(loss.capturedAt));
    });
    json.endObject();
}

void printCues(Output &out, int cueProtected, const QList<CueVault::Loss> &losses)
{
    out.line(
        u"%1 tracks protected, %2 have lost cues or a grid"_s.arg(cueProtected).arg(losses.size()));
    TextTable table;
    for (const CueVault::Loss &loss : losses)
        table.addRow({loss.what(), u"saved "_s + dateForPeople(loss.capturedAt),
                      loss.track.track.relativePath});
    out.list(table);
}

} // namespace

Status runSnapshots(Session &session)
{
    if (session.wantsJson())
        writeSnapshots(session.out(), session.app().snapshots());
    else
        printSnapshots(session.out(), session.app().snapshots());
    return Status::Done;
}

Status runChanges(Session &session)
{
    if (session.wantsJson())
        writeChanges(session.out(), session.app().changeLog());
    else
        printChanges(session.out(), session.app().changeLog());
    return Status::Done;
}

Status runHeld(Session &session)
{
    if (session.wantsJson())
        writeHeld(session.out(), session.app().holding());
    else
        printHeld(session.out(), session.app().holding());
    return Status::Done;
}

Status runCues(Session &session)
{
    const QList<CueVault::Loss> losses = session.app().cueLosses();
    if (session.wantsJson())
        writeCues(session.out(), session.app().cueProtected(), losses);
    else
        printCues(session.out(), session.app().cueProtected(), losses);
    return Status::Done;
}

} // namespace tarnwick::cli
