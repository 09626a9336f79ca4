#pragma once

#include "repair/relink_candidates.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The places where a missing file might be: six at most.
class CandidateModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's presenter makes it.")

public:
    enum Role { BadgeRole = Qt::UserRole, TintRole, FileRole, PathRole, SourceRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const RepairEngine::Candidate &candidateAt(int row) const { return m_candidates.at(row); }
    void setCandidates(const QList<RepairEngine::Candidate> &candidates);

private:
    QList<RepairEngine::Candidate> m_candidates;
};

} // namespace tarnwick
