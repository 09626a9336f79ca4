#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// Keeps the control that has the keyboard in view: a child of a Flickable, it moves the content
/// when the focus goes to something inside it that is scrolled out of sight.
class FocusKeeper : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// The Flickable.
    Q_PROPERTY(QQuickItem *area MEMBER m_area REQUIRED)
    /// What stays visible above and below the control.
    Q_PROPERTY(qreal margin MEMBER m_margin)

public:
    explicit FocusKeeper(QQuickItem *parent = nullptr);

protected:
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void keepInView();

    QQuickItem *m_area = nullptr;
    qreal m_margin = 12;
    QPointer<QQuickWindow> m_watched;
};

} // namespace tarnwick
