#include "screens/components/row_keys.h"

#include <QAbstractItemModel>
#include <QQuickWindow>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr int contain = 4; ///< ListView.Contain
constexpr int rowsOfAPage = 8;
constexpr qreal line = 48;

void collectControls(QQuickItem *item, QList<QQuickItem *> &found)
{
    for (QQuickItem *child : item->childItems()) {
        if (!child->isVisible())
            continue;
        if (child->inherits("QQuickAbstractButton")) {
            if (child->isEnabled())
                found += child;
        } else {
            collectControls(child, found);
        }
    }
}

QAbstractItemModel *modelOf(const QQuickItem *list)
{
    return list ? list->property("model").value<QAbstractItemModel *>() : nullptr;
}

} // namespace

RowKeys::RowKeys(QQuickItem *parent)
    : QQuickItem(parent)
{
    setActiveFocusOnTab(true);
}

int RowKeys::count() const
{
    return m_list ? m_list->property("count").toInt() : 0;
}

QQuickItem *RowKeys::showRow(int row)
{
    m_list->setProperty("currentIndex", row);
    QMetaObject::invokeMethod(m_list, "positionViewAtIndex", Q_ARG(int, row), Q_ARG(int, contain));
    return m_list->property("currentItem").value<QQuickItem *>();
}

QList<QQuickItem *> RowKeys::controlsOf(int row)
{
    QList<QQuickItem *> found;
    if (auto *item = m_list->property("currentIndex").toInt() == row
                         ? m_list->property("currentItem").value<QQuickItem *>()
                         : showRow(row))
        collectControls(item, found);
    return found;
}

int RowKeys::focusedControl()
{
    QQuickItem *focused = window() ? window()->activeFocusItem() : nullptr;
    const int current = m_list->property("currentIndex").toInt();
    const auto *item = m_list->property("currentItem").value<QQuickItem *>();
    if (focused && item && item->isAncestorOf(focused))
        return int(controlsOf(current).indexOf(focused));
    return -1;
}

bool RowKeys::acts(int row) const
{
    const QAbstractItemModel *model = modelOf(m_list);
    if (!model)
        return true;
    const int role = model->roleNames().key("acts", -1);
    return role < 0 || model->index(row, 0).data(role).toBool();
}

int RowKeys::actingRow(int from, int step) const
{
    for (int row = from; row >= 0 && row < count(); row += step) {
        if (acts(row))
            return row;
    }
    return -1;
}

bool RowKeys::focusControl(int row, int control, Qt::FocusReason reason)
{
    if (row < 0)
        return false;
    showRow(row);
    const QList<QQuickItem *> controls = controlsOf(row);
    if (controls.isEmpty())
        return false;
    controls.at(std::clamp(control, 0, int(controls.size()) - 1))->forceActiveFocus(reason);
    m_lastControl = control;
    return true;
}

/// The keyboard's way to this item goes on once it has been handed on, and leads here a second
/// time, without a reason. For that the reason of the first counts.
Qt::FocusReason RowKeys::entryReason(Qt::FocusReason reason)
{
    if (reason != Qt::OtherFocusReason) {
        m_entryReason = reason;
        QMetaObject::invokeMethod(
            this, [this] { m_entryReason = Qt::OtherFocusReason; }, Qt::QueuedConnection);
    }
    return m_entryReason;
}

void RowKeys::focusInEvent(QFocusEvent *event)
{
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = entryReason(event->reason());
    const bool back = reason == Qt::BacktabFocusReason;
    const int current =
        std::clamp(m_list->property("currentIndex").toInt(), 0, std::max(0, count() - 1));
    int row = actingRow(current, 1);
    if (row < 0)
        row = actingRow(current, -1);
    if (!focusControl(row, back ? int(INT_MAX) : 0, reason))
        leave(!back);
}

/// Moves on along the window's chain, past this item.
void RowKeys::leave(bool forward)
{
    QQuickItem *next = nextItemInFocusChain(forward);
    if (next && next != this)
        next->forceActiveFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

bool RowKeys::tab(int step)
{
    const int control = focusedControl();
    if (control < 0)
        return false;
    const auto reason = step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason;
    const int row = m_list->property("currentIndex").toInt();
    const int next = control + step;
    if (next >= 0 && next < controlsOf(row).size())
        return focusControl(row, next, reason);
    if (!focusControl(actingRow(row + step, step), step > 0 ? 0 : INT_MAX, reason))
        leave(step > 0);
    return true;
}

bool RowKeys::moveBy(int key)
{
    const int control = focusedControl();
    if (control < 0)
        return false;
    const int row = m_list->property("currentIndex").toInt();
    const int last = count() - 1;
    int next = -1;
    switch (key) {
    case Qt::Key_Down:
        next = actingRow(row + 1, 1);
        break;
    case Qt::Key_Up:
        next = actingRow(row - 1, -1);
        break;
    case Qt::Key_PageDown:
        next = actingRow(std::min(last, row + rowsOfAPage), -1);
        break;
    case Qt::Key_PageUp:
        next = actingRow(std::max(0, row - rowsOfAPage), 1);
        break;
    case Qt::Key_Home:
        next = actingRow(0, 1);
        break;
    case Qt::Key_End:
        next = actingRow(last, -1);
        break;
    default:
        return false;
    }
    // At the ends the header and the foot come into view.
    if (next < 0 || next == row || !focusControl(next, control, Qt::TabFocusReason))
        scroll(key);
    return true;
}

bool RowKeys::scroll(int key)
{
    const qreal origin = m_list->property("originY").toReal();
    const qreal page = m_list->height();
    const qreal last = origin + std::max(0.0, m_list->property("contentHeight").toReal() - page);
    qreal y = m_list->property("contentY").toReal();
    switch (key) {
    case Qt::Key_Down:
        y += line;
        break;
    case Qt::Key_Up:
        y -= line;
        break;
    case Qt::Key_PageDown:
        y += page - line;
        break;
    case Qt::Key_PageUp:
        y -= page - line;
        break;
    case Qt::Key_Home:
        QMetaObject::invokeMethod(m_list, "positionViewAtBeginning");
        return true;
    case Qt::Key_End:
        QMetaObject::invokeMethod(m_list, "positionViewAtEnd");
        return true;
    default:
        return false;
    }
    m_list->setProperty("contentY", std::clamp(y, origin, last));
    return true;
}

bool RowKeys::press(int key)
{
    switch (key) {
    case Qt::Key_Tab:
        return tab(1);
    case Qt::Key_Backtab:
        return tab(-1);
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
    case Qt::Key_Home:
    case Qt::Key_End:
        return moveBy(key) || scroll(key);
    default:
        return false;
    }
}

void RowKeys::rowsChanged()
{
    // The view has not yet made the rows that move up.
    QMetaObject::invokeMethod(this, &RowKeys::takeUp, Qt::QueuedConnection);
}

void RowKeys::takeUp()
{
    if (!m_list)
        return;
    // Where as many rows come as go, the view has yet to see it.
    QMetaObject::invokeMethod(m_list, "forceLayout");
    QQuickItem *focused = window() ? window()->activeFocusItem() : nullptr;
    if (!focused || count() == 0)
        return;
    QQuickItem *row = rowOf(focused);
    // The list gives the keyboard to its current row as a whole, which can't be pressed; and a
    // control keeps it where it is no longer shown.
    const bool lost = focused == m_list || focused == row || (row && !focused->isVisible()) ||
                      (row && row != m_list->property("currentItem").value<QQuickItem *>());
    if (!lost)
        return;
    const int current = std::clamp(m_list->property("currentIndex").toInt(), 0, count() - 1);
    int next = actingRow(current, 1);
    if (next < 0)
        next = actingRow(current, -1);
    if (!focusControl(next, m_lastControl, m_lastReason))
        leave(false);
}

void RowKeys::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange && m_watched != value.window) {
        if (m_watched)
            disconnect(m_watched, nullptr, this, nullptr);
        m_watched = value.window;
        if (m_watched)
            connect(m_watched, &QQuickWindow::activeFocusItemChanged, this, &RowKeys::followFocus);
    }
    QQuickItem::itemChange(change, value);
}

QQuickItem *RowKeys::rowOf(QQuickItem *item) const
{
    const auto *content = m_list->property("contentItem").value<QQuickItem *>();
    const auto *header = m_list->property("headerItem").value<QQuickItem *>();
    while (item && item->parentItem() != content)
        item = item->parentItem();
    return item == header ? nullptr : item;
}

/// A list hands the keyboard to its current row whenever that becomes another one, also from a
/// control in its header, which then gets it back.
void RowKeys::giveBack()
{
    const QPointer<QQuickItem> before = m_before;
    if (!before || !m_list->isAncestorOf(before) || rowOf(before))
        return;
    QMetaObject::invokeMethod(
        this,
        [before, reason = m_beforeReason] {
            if (before && before->isVisible() && before->isEnabled())
                before->forceActiveFocus(reason);
        },
        Qt::QueuedConnection);
}

/// The row that has the keyboard is the list's current one, which it never puts away.
void RowKeys::followFocus()
{
    QQuickItem *focused = m_watched ? m_watched->activeFocusItem() : nullptr;
    QQuickItem *row = focused && m_list && m_list->isAncestorOf(focused) ? rowOf(focused) : nullptr;
    if (focused && focused == row)
        return giveBack();
    m_before = focused;
    m_beforeReason =
        focused ? Qt::FocusReason(focused->property("focusReason").toInt()) : Qt::OtherFocusReason;
    if (!row)
        return;
    int index = -1;
    const QPointF middle(row->x() + row->width() / 2, row->y() + row->height() / 2);
    QMetaObject::invokeMethod(m_list, "indexAt", Q_RETURN_ARG(int, index), Q_ARG(qreal, middle.x()),
                              Q_ARG(qreal, middle.y()));
    if (index < 0)
        return;
    m_list->setProperty("currentIndex", index);
    const int control = focusedControl();
    if (control < 0)
        return;
    m_lastControl = control;
    m_lastReason = Qt::FocusReason(focused->property("focusReason").toInt());
}

} // namespace tarnwick
