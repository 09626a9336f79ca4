#include "safety/held_item.h"

#include "foundation/dates.h"
#include "foundation/json_record.h"

namespace tarnwick {

bool HeldItem::isExpired(const QDateTime &now) const
{
    return now >= expiresAt;
}

int HeldItem::daysLeft(const QDateTime &now) const
{
    return wholeDaysBetween(now, expiresAt);
}

// The keys are frozen: they stand in the manifests of all users. In ascending order.

bool HeldItem::read(JsonReader &json, HeldItem &item, bool *hasWrittenForm)
{
    const JsonField fields[] = {
        {"date", &item.date},
        {"expiresAt", &item.expiresAt},
        {"heldPath", &item.heldPath},
        {"id", &item.id},
        {"originalPath", &item.originalPath},
        {"reason", &item.reason},
        {"restored", &item.restored},
    };
    return readRecord(json, fields, hasWrittenForm);
}

void HeldItem::write(JsonWriter &json) const
{
    json.beginObject();
    json.member(u"date", isoSeconds(date));
    json.member(u"expiresAt", isoSeconds(expiresAt));
    json.member(u"heldPath", heldPath);
    json.member(u"id", id);
    json.member(u"originalPath", originalPath);
    json.member(u"reason", reason);
    json.member(u"restored", restored);
    json.endObject();
}

} // namespace tarnwick
