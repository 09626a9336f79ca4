#include "screens/missing/candidate_model.h"

#include "screens/components/tint.h"
#include "screens/missing/missing_figures.h"

namespace tarnwick {

namespace {

Tint::Value tintOf(int confidence)
{
    switch (MissingFigures::surenessOf(confidence)) {
    case MissingFigures::Sureness::Sure:
        return Tint::Good;
    case MissingFigures::Sureness::Likely:
        return Tint::Warn;
    case MissingFigures::Sureness::Vague:
        return Tint::Neutral;
    }
    Q_UNREACHABLE();
}

} // namespace

int CandidateModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_candidates.size());
}

QVariant CandidateModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const RepairEngine::Candidate &candidate = m_candidates.at(index.row());
    switch (role) {
    case BadgeRole:
        return MissingFigures::badge(candidate.confidence);
    case TintRole:
        return tintOf(candidate.confidence);
    case FileRole:
        return candidate.url.fileName();
    case PathRole:
        return candidate.url.toLocalFile();
    case SourceRole:
        return MissingFigures::source(candidate);
    default:
        return {};
    }
}

QHash<int, QByteArray> CandidateModel::roleNames() const
{
    return {{BadgeRole, "badge"},
            {TintRole, "tint"},
            {FileRole, "file"},
            {PathRole, "path"},
            {SourceRole, "source"}};
}

void CandidateModel::setCandidates(const QList<RepairEngine::Candidate> &candidates)
{
    beginResetModel();
    m_candidates = candidates;
    endResetModel();
}

} // namespace tarnwick
