#include "screens/shell/window_presenter.h"

#include "screens/shell/guide.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

WindowPresenter::WindowPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_sidebar(app)
    , m_toast(app)
    , m_key(wantedView(app))
    , m_viewPresenter(makePresenter(m_key, app, this))
{
    // Queued: the end of a scan changes both, and a press that leads elsewhere comes from the very
    // view that goes away.
    connect(&app, &AppState::phaseChanged, this, &WindowPresenter::chooseView,
            Qt::QueuedConnection);
    connect(&app, &AppState::selectionChanged, this, &WindowPresenter::chooseView,
            Qt::QueuedConnection);
    // Ahead of the first look at their screens.
    connect(&app, &AppState::scanFinished, &app, &AppState::prepareHygiene);
    connect(&app, &AppState::scanFinished, &app, &AppState::prepareVersions);
}

void WindowPresenter::contentAppeared()
{
    if (std::exchange(m_appeared, true))
        return;
    m_app.refreshEnvironment();
}

void WindowPresenter::openGuide()
{
    if (!showGuide())
        m_app.showToast(u"The guide is not installed."_s);
}

void WindowPresenter::chooseView()
{
    const ViewKey wanted = wantedView(m_app);
    if (wanted == m_key)
        return;
    m_key = wanted;
    QObject *before = m_viewPresenter;
    m_viewPresenter = makePresenter(m_key, m_app, this);
    Q_EMIT viewChanged();
    // The view on show until now goes away with this turn of the event loop, and its presenter
    // must outlive it.
    before->deleteLater();
}

} // namespace tarnwick
