#include "screens/duplicates/duplicate_model.h"

#include "screens/components/track_line_figures.h"
#include "screens/duplicates/duplicate_figures.h"

#include <algorithm>

namespace tarnwick {

DuplicateModel::DuplicateModel(const AppState &app, QObject *parent)
    : KeyedListModel(parent)
    , m_app(app)
{}

QVariant DuplicateModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    const auto derived = m_app.derived();
    if (place < 0 || !derived)
        return {};
    const Row &row = m_rows[size_t(place)];
    const DuplicateGroup &group = derived->duplicateGroups[row.group];
    switch (role) {
    case KindRole:
        return row.kind;
    case GroupRole:
        return group.key;
    case PlaceRole:
        return row.member;
    case CopiesRole:
        return row.kind == Head ? DuplicateFigures::copies(group) : QString();
    case ReclaimableRole:
        return row.kind == Head ? DuplicateFigures::reclaimable(group) : QString();
    case ActsRole:
        return row.kind != Head;
    default:
        return memberData(group, row, role);
    }
}

QVariant DuplicateModel::memberData(const DuplicateGroup &group, const Row &row, int role) const
{
    const ScannedTrack *member = row.kind == Member
                                     ? &group.members[row.member]
                                     : (group.members.empty() ? nullptr : &group.members.front());
    switch (role) {
    case FirstRole:
        return member ? TrackLineText::first(member->track) : QString();
    case SecondRole:
        return row.kind == Member ? TrackLineText::second(member->track) : QString();
    case PathRole:
        return row.kind == Member ? member->track.absolutePath() : QString();
    case TagsRole:
        return row.kind == Member ? DuplicateFigures::tagsOf(*member) : QStringList();
    case KeptRole:
        return row.kind == Member && member->id() == keeperOf(group);
    default:
        return {};
    }
}

QHash<int, QByteArray> DuplicateModel::roleNames() const
{
    return {{KindRole, "kind"},     {GroupRole, "group"}, {PlaceRole, "place"},
            {CopiesRole, "copies"}, {FirstRole, "first"}, {ReclaimableRole, "reclaimable"},
            {SecondRole, "second"}, {TagsRole, "tags"},   {KeptRole, "kept"},
            {PathRole, "path"},     {ActsRole, "acts"}};
}

void DuplicateModel::readLibrary()
{
    m_rows.clear();
    QStringList keys;
    if (const auto derived = m_app.derived()) {
        for (quint32 g = 0; g < derived->duplicateGroups.size(); ++g) {
            const DuplicateGroup &group = derived->duplicateGroups[g];
            m_rows.push_back({Head, g, 0});
            keys.append(u'h' + group.key);
            for (quint32 m = 0; m < group.members.size(); ++m) {
                m_rows.push_back({Member, g, m});
                keys.append(u'm' + group.members[m].track.relativePath);
            }
            m_rows.push_back({Foot, g, 0});
            keys.append(u'f' + group.key);
        }
    }
    setKeys(keys);
}

const DuplicateGroup *DuplicateModel::groupOf(const QString &key) const
{
    const auto derived = m_app.derived();
    if (!derived)
        return nullptr;
    const auto found =
        std::find_if(derived->duplicateGroups.begin(), derived->duplicateGroups.end(),
                     [&](const DuplicateGroup &group) { return group.key == key; });
    return found == derived->duplicateGroups.end() ? nullptr : &*found;
}

QUuid DuplicateModel::keeperOf(const DuplicateGroup &group) const
{
    return m_keepers.value(group.id, group.members.empty() ? QUuid() : group.members.front().id());
}

void DuplicateModel::setKeeper(const DuplicateGroup &group, const QUuid &member)
{
    m_keepers.insert(group.id, member);
    touchAll({KeptRole});
}

} // namespace tarnwick
