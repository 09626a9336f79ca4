#include "screens/shell/toast_presenter.h"

namespace tarnwick {

ToastPresenter::ToastPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    connect(&app, &AppState::toastChanged, this, &ToastPresenter::readToast);
    readToast();
}

void ToastPresenter::readToast()
{
    if (m_app.toast())
        m_last = *m_app.toast();
    Q_EMIT changed();
}

} // namespace tarnwick
