#include "screens/gig_run/run_step_model.h"

#include "screens/components/tint.h"

namespace tarnwick {

using namespace GigRunFigures;

namespace {

Tint::Value tintOf(const StepState &state)
{
    // In the order of the variant.
    static constexpr Tint::Value tints[] = {Tint::Neutral, Tint::Accent, Tint::Good, Tint::Warn};
    static_assert(std::size(tints) == std::variant_size_v<StepState>);
    return tints[state.index()];
}

} // namespace

int RunStepModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : stepCount;
}

QVariant RunStepModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const StepState &state = m_states[size_t(index.row())];
    switch (role) {
    case NumberRole:
        return QString::number(index.row() + 1);
    case TitleRole:
        return titles().at(index.row());
    case StatusRole:
        return statusOf(state);
    case SymbolRole:
        return symbolOf(state);
    case TintRole:
        return int(tintOf(state));
    case RunningRole:
        return std::holds_alternative<StepRunning>(state);
    default:
        return {};
    }
}

QHash<int, QByteArray> RunStepModel::roleNames() const
{
    return {{NumberRole, "number"}, {TitleRole, "title"}, {StatusRole, "status"},
            {SymbolRole, "symbol"}, {TintRole, "tint"},   {RunningRole, "running"}};
}

void RunStepModel::reset()
{
    m_states.fill(StepPending{});
    Q_EMIT dataChanged(index(0), index(stepCount - 1));
}

void RunStepModel::setState(int step, const StepState &state)
{
    m_states[size_t(step)] = state;
    Q_EMIT dataChanged(index(step), index(step));
}

} // namespace tarnwick
