#include "safety/change_entry.h"

#include "foundation/dates.h"
#include "foundation/json_record.h"

#include <iterator>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The raw values are frozen: they stand in the logs of all users. So are the keys further down.
struct KindTexts
{
    ChangeEntry::Kind kind;
    const char16_t *rawValue;
    const char16_t *label;
};

constexpr KindTexts kinds[] = {
    {ChangeEntry::Kind::Snapshot, u"snapshot", u"Snapshot"},
    {ChangeEntry::Kind::Rollback, u"rollback", u"Rollback"},
    {ChangeEntry::Kind::Relink, u"relink", u"Relink"},
    {ChangeEntry::Kind::Dedupe, u"dedupe", u"Duplicate → holding"},
    {ChangeEntry::Kind::RestoreCues, u"restoreCues", u"Restore cues"},
    {ChangeEntry::Kind::Tag, u"tag", u"Tag"},
    {ChangeEntry::Kind::Gain, u"gain", u"Loudness tag"},
    {ChangeEntry::Kind::Archive, u"archive", u"Archive version"},
};

const KindTexts &textsOf(ChangeEntry::Kind kind)
{
    return kinds[size_t(kind)];
}

void writeOptional(JsonWriter &json, QStringView key, const std::optional<QString> &value)
{
    if (value)
        json.member(key, *value);
}

} // namespace

bool ChangeEntry::isReversible(const QDateTime &now) const
{
    return !reversed && reversibleUntil && now < *reversibleUntil;
}

QString ChangeEntry::label(Kind kind)
{
    return QString::fromUtf16(textsOf(kind).label);
}

QString ChangeEntry::rawValue(Kind kind)
{
    return QString::fromUtf16(textsOf(kind).rawValue);
}

std::optional<ChangeEntry::Kind> ChangeEntry::kindOf(QStringView rawValue)
{
    for (const KindTexts &texts : kinds) {
        if (QStringView(texts.rawValue) == rawValue)
            return texts.kind;
    }
    return std::nullopt;
}

QList<ChangeEntry::Kind> ChangeEntry::allKinds()
{
    QList<Kind> all;
    for (const KindTexts &texts : kinds)
        all.append(texts.kind);
    return all;
}

bool ChangeEntry::read(JsonReader &json, ChangeEntry &entry, bool *hasWrittenForm)
{
    QString kindText;
    const JsonField fields[] = {
        {"after", &entry.after},
        {"before", &entry.before},
        {"date", &entry.date},
        {"detail", &entry.detail},
        {"holdingID", &entry.holdingId},
        {"id", &entry.id},
        {"kind", &kindText},
        {"reversed", &entry.reversed},
        {"reversibleUntil", &entry.reversibleUntil},
        {"snapshotID", &entry.snapshotId},
        {"target", &entry.target},
    };
    if (!readRecord(json, fields, hasWrittenForm))
        return false;
    const auto known = kindOf(kindText);
    entry.kind = known.value_or(Kind::Snapshot);
    return known.has_value();
}

void ChangeEntry::write(JsonWriter &json) const
{
    json.beginObject();
    writeOptional(json, u"after", after);
    writeOptional(json, u"before", before);
    json.member(u"date", isoSeconds(date));
    json.member(u"detail", detail);
    writeOptional(json, u"holdingID", holdingId);
    json.member(u"id", id);
    json.member(u"kind", rawValue(kind));
    json.member(u"reversed", reversed);
    if (reversibleUntil)
        json.member(u"reversibleUntil", isoSeconds(*reversibleUntil));
    writeOptional(json, u"snapshotID", snapshotId);
    json.member(u"target", target);
    json.endObject();
}

} // namespace tarnwick
