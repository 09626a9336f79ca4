#pragma once

#include "analysis/gig_check.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The findings of one tier, at most four.
class GigFindingModel : public KeyedListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's presenter makes it.")

public:
    enum Role { CountRole = Qt::UserRole, TitleRole };

    using KeyedListModel::KeyedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setFindings(const QList<GigCheck::Check> &findings);
    /// Where the finding of a row is mended.
    Screen jumpOf(int row) const { return m_findings.at(row).jump; }

private:
    QList<GigCheck::Check> m_findings;
};

} // namespace tarnwick
