#include "screens/versions/version_model.h"

#include "screens/components/tint.h"
#include "screens/components/track_line_figures.h"
#include "screens/versions/version_figures.h"

namespace tarnwick {

VersionModel::VersionModel(const AppState &app, QObject *parent)
    : KeyedListModel(parent)
    , m_app(app)
{}

QVariant VersionModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0 || !m_app.hasVersions())
        return {};
    const Row &row = m_rows[size_t(place)];
    const VersionGroup &group = groupAt(row.group);
    switch (role) {
    case KindRole:
        return row.kind;
    case GroupRole:
        return keyOf(row.group);
    case PlaceRole:
        return row.member;
    case BaseRole:
        return group.base;
    case CountRole:
        return VersionFigures::cuts(group);
    case ActsRole:
        return row.kind != Head;
    default:
        return memberData(group, row, role);
    }
}

QVariant VersionModel::memberData(const VersionGroup &group, const Row &row, int role) const
{
    const VersionMember &member = group.members[row.member];
    switch (role) {
    case CutRole:
        return member.cut;
    case FirstRole:
        return TrackLineText::first(member.track.track);
    case SecondRole:
        return TrackLineText::second(member.track.track);
    case PathRole:
        return row.kind == Member ? member.track.track.absolutePath() : QString();
    case PlaysRole:
        return VersionFigures::plays(member.plays());
    case PlaysTintRole:
        return member.plays() > 0 ? Tint::Ink : Tint::InkFaint;
    case KeptRole:
        return member.id() == keeperOf(group);
    default:
        return {};
    }
}

QHash<int, QByteArray> VersionModel::roleNames() const
{
    return {{KindRole, "kind"},   {GroupRole, "group"},         {PlaceRole, "place"},
            {BaseRole, "base"},   {CountRole, "count"},         {CutRole, "cut"},
            {FirstRole, "first"}, {SecondRole, "second"},       {PlaysRole, "plays"},
            {KeptRole, "kept"},   {PlaysTintRole, "playsTint"}, {ActsRole, "acts"},
            {PathRole, "path"}};
}

QString VersionModel::keyOf(quint32 group) const
{
    const int first = m_app.versions()->at(group).first;
    return m_app.result()->tracks[size_t(first)].id().toString();
}

void VersionModel::readLibrary()
{
    m_rows.clear();
    m_drawn.clear();
    QStringList keys;
    if (const auto songs = m_app.versions()) {
        for (quint32 g = 0; g < songs->size(); ++g) {
            const VersionPlaces &song = (*songs)[g];
            const QString key = keyOf(g);
            m_rows.push_back({Head, g, 0});
            keys.append(key);
            for (quint32 m = 0; m < song.cuts.size(); ++m) {
                m_rows.push_back({Member, g, m});
                keys.append(m_app.result()->tracks[size_t(song.cuts[m].place)].track.relativePath);
            }
            m_rows.push_back({Foot, g, 0});
            keys.append(key + u'f');
        }
    }
    setKeys(keys);
}

const VersionGroup &VersionModel::groupAt(quint32 number) const
{
    auto found = m_drawn.find(number);
    if (found == m_drawn.end()) {
        const VersionPlaces &song = m_app.versions()->at(number);
        found = m_drawn.emplace(number, versionGroupAt(m_app.result()->tracks, song)).first;
    }
    return found->second;
}

const VersionGroup *VersionModel::groupOf(const QString &key) const
{
    const qsizetype place = keys().indexOf(key);
    return place < 0 ? nullptr : &groupAt(m_rows[size_t(place)].group);
}

QUuid VersionModel::keeperOf(const VersionGroup &group) const
{
    return m_keepers.value(group.id, VersionFigures::suggestedKeeper(group));
}

/// A choice counts for the drawing in which it was made, and itself makes the next one. So the most
/// played cut is always the one that is kept.
void VersionModel::setKeeper(const VersionGroup &group, const QUuid &member)
{
    m_keepers.insert(group.id, member);
    m_drawn.clear();
    touchAll({KeptRole});
}

} // namespace tarnwick
