#include "screens/components/focus_keeper.h"

#include <QQuickWindow>

namespace tarnwick {

FocusKeeper::FocusKeeper(QQuickItem *parent)
    : QQuickItem(parent)
{}

void FocusKeeper::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange && m_watched != value.window) {
        if (m_watched)
            disconnect(m_watched, nullptr, this, nullptr);
        m_watched = value.window;
        if (m_watched)
            connect(m_watched, &QQuickWindow::activeFocusItemChanged, this,
                    &FocusKeeper::keepInView);
    }
    QQuickItem::itemChange(change, value);
}

void FocusKeeper::keepInView()
{
    const QQuickItem *focused = m_watched ? m_watched->activeFocusItem() : nullptr;
    auto *content = m_area ? m_area->property("contentItem").value<QQuickItem *>() : nullptr;
    if (!focused || !content || !content->isAncestorOf(focused))
        return;
    const QRectF place = focused->mapRectToItem(content, focused->boundingRect())
                             .adjusted(0, -m_margin, 0, m_margin);
    // A list's content begins wherever its first row happens to lie.
    const qreal first = m_area->property("originY").toReal();
    const qreal top = m_area->property("contentY").toReal();
    const qreal last =
        first + qMax(0.0, m_area->property("contentHeight").toReal() - m_area->height());
    if (place.top() < top)
        m_area->setProperty("contentY", qMax(first, place.top()));
    else if (place.bottom() > top + m_area->height())
        m_area->setProperty("contentY", qMin(last, place.bottom() - m_area->height()));
}

} // namespace tarnwick
