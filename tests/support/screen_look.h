#pragma once

#include "support/qml_fixture.h"

#include <QColor>

/// What things on screen look like, and where they stand.
namespace tarnwick::testing {

/// As #aarrggbb.
inline QString colorOf(const QQuickItem *item)
{
    return item->property("color").value<QColor>().name(QColor::HexArgb);
}

inline QRectF placeOf(const QQuickItem *item)
{
    return item->mapRectToScene(item->boundingRect());
}

/// Every visible item from `root` on for which that is so, in drawing order.
template <typename Wanted>
QList<QQuickItem *> itemsWhere(QQuickItem *root, Wanted wanted)
{
    QList<QQuickItem *> found;
    if (!root->isVisible())
        return found;
    if (wanted(root))
        found += root;
    for (QQuickItem *child : root->childItems())
        found += itemsWhere(child, wanted);
    return found;
}

/// Whether a list only keeps an item in store, to show it when it comes into view. Until then it
/// stands anywhere, calls itself visible and isn't drawn.
inline bool isKeptInStore(QQuickItem *item)
{
    QQuickItem *list = item->parentItem() ? item->parentItem()->parentItem() : nullptr;
    if (!list || !list->inherits("QQuickListView") ||
        !QByteArray(item->metaObject()->className()).contains("Row_QML"))
        return false;
    QQuickItem *shown = nullptr;
    QMetaObject::invokeMethod(list, "itemAt", Q_RETURN_ARG(QQuickItem *, shown),
                              Q_ARG(qreal, item->x() + 1), Q_ARG(qreal, item->y() + 1));
    return shown != item;
}

/// As `itemsWhere`, without what lists keep in store.
template <typename Wanted>
QList<QQuickItem *> shownWhere(QQuickItem *root, Wanted wanted)
{
    QList<QQuickItem *> found;
    if (!root->isVisible() || isKeptInStore(root))
        return found;
    if (wanted(root))
        found += root;
    for (QQuickItem *child : root->childItems())
        found += shownWhere(child, wanted);
    return found;
}

/// Those of a QML type, or of a C++ type by its whole name.
inline QList<QQuickItem *> itemsOfType(QQuickItem *root, const QByteArray &type)
{
    return itemsWhere(root, [&](const QQuickItem *item) {
        const QByteArray name = item->metaObject()->className();
        return name == type || name.startsWith(type + "_QML");
    });
}

/// The first item that draws this symbol; null if there is none.
inline QQuickItem *iconOf(QQuickItem *root, const QString &symbol)
{
    return itemsWhere(root,
                      [&](const QQuickItem *item) {
                          return item->property("symbol").toString() == symbol &&
                                 item->property("density").isValid();
                      })
        .value(0);
}

/// The names of all buttons, in the order of a screen reader.
inline QStringList buttonsOf(QQuickItem *root)
{
    QStringList names;
    for (QQuickItem *item : accessibleItems(root)) {
        if (accessibleRole(item) == QAccessible::Button)
            names += accessibleName(item);
    }
    return names;
}

/// Every figure with its colour: "12 #ff2f7d55".
inline QStringList figuresOf(QQuickItem *root)
{
    QStringList all;
    for (const QQuickItem *figure : itemsOfType(root, "Figure"))
        all += figure->property("text").toString() + u' ' + colorOf(figure);
    return all;
}

} // namespace tarnwick::testing
