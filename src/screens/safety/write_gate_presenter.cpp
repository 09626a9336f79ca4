#include "screens/safety/write_gate_presenter.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

WriteGatePresenter::WriteGatePresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    connect(&app, &AppState::seratoRunningChanged, this, &WriteGatePresenter::changed);
}

QString WriteGatePresenter::symbol() const
{
    return m_app.isSeratoRunning() ? u"exclamationmark.triangle.fill"_s
                                   : u"checkmark.shield.fill"_s;
}

QString WriteGatePresenter::text() const
{
    return m_app.isSeratoRunning() ? u"Serato is running. Changes are blocked until you close it — "
                                     "reading stays available."_s
                                   : u"Safe to make changes — every fix takes a snapshot first and "
                                     "is reversible for 30 days."_s;
}

} // namespace tarnwick
