#pragma once

#include "screens/gig_run/gig_run_figures.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <array>

namespace tarnwick {

/// The steps of a gig run, always the same, and how each stands.
class RunStepModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        NumberRole = Qt::UserRole, ///< counted from 1
        TitleRole,
        StatusRole,
        SymbolRole, ///< empty where the number stands for it
        TintRole,
        RunningRole,
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// All steps are to come.
    void reset();
    void setState(int step, const GigRunFigures::StepState &state);

private:
    std::array<GigRunFigures::StepState, GigRunFigures::stepCount> m_states;
};

} // namespace tarnwick
