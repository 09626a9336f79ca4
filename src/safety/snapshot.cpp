#include "safety/snapshot.h"

#include "foundation/dates.h"
#include "foundation/json_record.h"
#include "foundation/paths.h"
#include "safety/store.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QString Snapshot::folderPath() const
{
    return joinedPath(Store::snapshots(), id);
}

QString Snapshot::shortDate() const
{
    return dateForPeople(date);
}

// The keys are frozen: they stand in the files of every snapshot ever taken. In ascending order.

bool Snapshot::read(JsonReader &json, Snapshot &snapshot, bool *hasWrittenForm)
{
    const JsonField fields[] = {
        {"byteSize", &snapshot.byteSize},   {"date", &snapshot.date},
        {"fileCount", &snapshot.fileCount}, {"id", &snapshot.id},
        {"reason", &snapshot.reason},       {"sourcePath", &snapshot.sourcePath},
    };
    return readRecord(json, fields, hasWrittenForm);
}

void Snapshot::write(JsonWriter &json) const
{
    json.beginObject();
    json.member(u"byteSize", byteSize);
    json.member(u"date", isoSeconds(date));
    json.member(u"fileCount", fileCount);
    json.member(u"id", id);
    json.member(u"reason", reason);
    json.member(u"sourcePath", sourcePath);
    json.endObject();
}

const QStringList &SnapshotSet::entries()
{
    static const QStringList names = {u"database V2"_s, u"Subcrates"_s, u"SmartCrates"_s,
                                      u"neworder.pref"_s, u"window.pref"_s};
    return names;
}

} // namespace tarnwick
