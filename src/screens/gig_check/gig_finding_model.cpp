#include "screens/gig_check/gig_finding_model.h"

namespace tarnwick {

QVariant GigFindingModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0)
        return {};
    const GigCheck::Check &finding = m_findings.at(place);
    switch (role) {
    case CountRole:
        return QString::number(finding.count);
    case TitleRole:
        return finding.title;
    default:
        return {};
    }
}

QHash<int, QByteArray> GigFindingModel::roleNames() const
{
    return {{CountRole, "count"}, {TitleRole, "title"}};
}

void GigFindingModel::setFindings(const QList<GigCheck::Check> &findings)
{
    m_findings = findings;
    QStringList keys;
    for (const GigCheck::Check &finding : findings)
        keys.append(finding.title);
    setKeys(keys);
}

} // namespace tarnwick
