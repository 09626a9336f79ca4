#pragma once

#include "screens/shell/sidebar_presenter.h"
#include "screens/shell/toast_presenter.h"
#include "screens/shell/views.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The whole window: the sidebar, the toast bar, and which view the content area shows.
class WindowPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")
    Q_PROPERTY(tarnwick::SidebarPresenter *sidebar READ sidebar CONSTANT)
    Q_PROPERTY(tarnwick::ToastPresenter *toast READ toast CONSTANT)
    Q_PROPERTY(QUrl view READ view NOTIFY viewChanged)
    Q_PROPERTY(QObject *viewPresenter READ viewPresenter NOTIFY viewChanged)

public:
    explicit WindowPresenter(AppState &app, QObject *parent = nullptr);

    SidebarPresenter *sidebar() { return &m_sidebar; }
    ToastPresenter *toast() { return &m_toast; }
    /// The QML of the content area, and the presenter that goes with it.
    QUrl view() const { return sourceOf(m_key); }
    // cppcheck-suppress CastIntegerToAddressAtReturn ; a QPointer is no integer
    QObject *viewPresenter() const { return m_viewPresenter; }

    /// To be called when the window first shows something: looks at the machine again.
    void contentAppeared();
    /// Shows the user's guide outside the window.
    Q_INVOKABLE void openGuide();

Q_SIGNALS:
    void viewChanged();

private:
    void chooseView();

    AppState &m_app;
    SidebarPresenter m_sidebar;
    ToastPresenter m_toast;
    ViewKey m_key;
    QPointer<QObject> m_viewPresenter;
    bool m_appeared = false;
};

} // namespace tarnwick
