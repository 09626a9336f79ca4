#pragma once

#include "screens/safety/library_safety_figures.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The steps to a first change, and which of them are done.
class SafetyStepModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { TitleRole = Qt::UserRole, DetailRole, DoneRole, SnapshotRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setStanding(const LibrarySafetyFigures::Standing &standing);

private:
    LibrarySafetyFigures::Standing m_standing;
};

} // namespace tarnwick
