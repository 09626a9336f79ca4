#pragma once

#include "screens/health/health_figures.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The bars of a profile, a handful of them.
class BarModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's presenter makes it.")
    Q_PROPERTY(int most READ most NOTIFY mostChanged)

public:
    enum Role { LabelRole = Qt::UserRole, CountRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The highest count; 0 without bars.
    int most() const;
    void setBars(const QList<HealthFigures::Bar> &bars);

Q_SIGNALS:
    void mostChanged();

private:
    QList<HealthFigures::Bar> m_bars;
};

} // namespace tarnwick
