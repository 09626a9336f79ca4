#include "expectations.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

struct CountKey
{
    QLatin1StringView name;
    int Expectations::*count;
};

constexpr CountKey countKeys[] = {
    {"total"_L1, &Expectations::total},
    {"onDisk"_L1, &Expectations::onDisk},
    {"missing"_L1, &Expectations::missing},
    {"withMarkers"_L1, &Expectations::withMarkers},
    {"withGrid"_L1, &Expectations::withGrid},
    {"withGain"_L1, &Expectations::withGain},
    {"withArtist"_L1, &Expectations::withArtist},
    {"withGenre"_L1, &Expectations::withGenre},
    {"withKey"_L1, &Expectations::withKey},
    {"withBPM"_L1, &Expectations::withBpm},
    {"tagsReadable"_L1, &Expectations::tagsReadable},
    {"duplicateExcess"_L1, &Expectations::duplicateExcess},
    {"score"_L1, &Expectations::score},
    {"orphans"_L1, &Expectations::orphans},
    {"plays"_L1, &Expectations::plays},
};

QJsonArray groupsJson(const QList<ExpectedGroup> &groups)
{
    QJsonArray array;
    for (const ExpectedGroup &group : groups) {
        array.append(
            QJsonObject{{u"key"_s, group.key},
                        {u"members"_s, QJsonArray::fromStringList(group.members)},
                        {u"reclaimableBytes"_s, static_cast<qint64>(group.reclaimableBytes)}});
    }
    return array;
}

void addMissingFiles(QJsonObject &json, const QList<TrackPlan> &tracks)
{
    QJsonArray moved;
    QJsonArray gone;
    for (const TrackPlan &track : tracks) {
        if (track.fate == Fate::Moved) {
            moved.append(QJsonObject{{u"path"_s, track.path}, {u"nowAt"_s, track.movedTo}});
        } else if (track.fate == Fate::Gone) {
            gone.append(track.path);
        }
    }
    json[u"moved"_s] = moved;
    json[u"gone"_s] = gone;
}

} // namespace

QByteArray expectationsJson(const LibraryPlan &plan)
{
    const Expectations counts = expectationsOf(plan);
    QJsonObject json;
    for (const CountKey &key : countKeys) {
        json[key.name] = counts.*key.count;
    }
    json[u"duplicateGroups"_s] = static_cast<int>(counts.groups.size());
    json[u"duplicates"_s] = groupsJson(counts.groups);
    json[u"reclaimableBytes"_s] = static_cast<qint64>(counts.reclaimableBytes);
    json[u"onDiskBytes"_s] = static_cast<qint64>(counts.onDiskBytes);
    QJsonArray dimensions;
    for (const int dimension : counts.dimensions) {
        dimensions.append(dimension);
    }
    json[u"dimensions"_s] = dimensions;
    QJsonObject crates;
    for (const CratePlan &crate : plan.crates) {
        crates[crate.name] = static_cast<int>(crate.paths.size());
    }
    json[u"crates"_s] = crates;
    json[u"sessions"_s] = static_cast<int>(plan.sessions.size());
    addMissingFiles(json, plan.tracks);
    return QJsonDocument(json).toJson();
}

} // namespace tarnwick::demo
