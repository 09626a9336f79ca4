#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// Takes the keyboard through the rows of a ListView: a stop of Tab in the list's header, which
/// hands the keyboard on to the row where it was last.
///
/// 1. Tab and Backtab go through the controls of a row, then to the next row that has some, then
///    out of the list. The arrow keys, the keys of a page, Home and End go from row to row and keep
///    to the same control of the row; without a control in a row they scroll.
/// 2. A view makes and reuses its rows as it needs them, in any order. So their controls must be no
///    stops of Tab themselves (`activeFocusOnTab: false`); the order is kept here.
/// 3. Where the row that has the keyboard goes away, the row that takes its place gets it; where
///    only its control goes, the next row that has one.
///
/// A model with a role "acts" says by it which rows have controls; else all are taken to have some.
class RowKeys : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// The ListView.
    Q_PROPERTY(QQuickItem *list READ list WRITE setList REQUIRED)

public:
    explicit RowKeys(QQuickItem *parent = nullptr);

    QQuickItem *list() const { return m_list; }
    void setList(QQuickItem *list) { m_list = list; }

    /// To be called with each key that nothing in the list has taken; false where it means nothing
    /// here.
    Q_INVOKABLE bool press(int key);
    /// Scrolls by the keys of a page; false for all other keys.
    Q_INVOKABLE bool scroll(int key);
    /// To be called when rows have come or gone, or read otherwise than before.
    Q_INVOKABLE void rowsChanged();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void followFocus();
    void giveBack();
    /// The row in which an item lies; null for none.
    QQuickItem *rowOf(QQuickItem *item) const;
    int count() const;
    QQuickItem *showRow(int row);
    QList<QQuickItem *> controlsOf(int row);
    /// Which control of the current row has the keyboard; -1 for none.
    int focusedControl();
    bool acts(int row) const;
    /// The next row that acts, itself included; -1 for none.
    int actingRow(int from, int step) const;
    bool focusControl(int row, int control, Qt::FocusReason reason);
    bool tab(int step);
    bool moveBy(int key);
    Qt::FocusReason entryReason(Qt::FocusReason reason);
    void leave(bool forward);
    void takeUp();

    QQuickItem *m_list = nullptr;
    QPointer<QQuickWindow> m_watched;
    QPointer<QQuickItem> m_before; ///< what had the keyboard before the list moved it
    Qt::FocusReason m_beforeReason = Qt::OtherFocusReason;
    Qt::FocusReason m_entryReason = Qt::OtherFocusReason; ///< within one turn of the event loop
    int m_lastControl = 0;
    Qt::FocusReason m_lastReason = Qt::OtherFocusReason;
};

} // namespace tarnwick
