#pragma once

#include "support/screen_look.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

/// Whether all that is on screen has its place: nothing cut off, nothing over something else.
namespace tarnwick::testing {

namespace detail {

/// A text or a picture, and where it is in the window.
struct Mark
{
    const QQuickItem *item;
    QString words;     ///< what it says, or what it is
    QRectF painted;    ///< where it would be without an edge
    QRectF seen;       ///< what of that can be seen
    bool cut = false;  ///< by an edge that nothing scrolls to
    bool text = false; ///< read, and so kept apart from all others
};

/// Parts of a pixel are no fault.
constexpr qreal slack = 1.0;

inline bool inherits(const QQuickItem *item, const char *type)
{
    return item->inherits(type);
}

inline qreal number(const QQuickItem *item, const char *property)
{
    return item->property(property).toReal();
}

/// Where a text's letters stand within its item.
inline QRectF lettersOf(const QQuickItem *item)
{
    const QSizeF size(number(item, "contentWidth"), number(item, "contentHeight"));
    const qreal left = number(item, "leftPadding");
    const qreal top = number(item, "topPadding");
    const QSizeF room(item->width() - left - number(item, "rightPadding"),
                      item->height() - top - number(item, "bottomPadding"));
    const int across = item->property("effectiveHorizontalAlignment").toInt();
    const int down = item->property("verticalAlignment").toInt();
    const qreal x = across == Qt::AlignRight     ? room.width() - size.width()
                    : across == Qt::AlignHCenter ? (room.width() - size.width()) / 2
                                                 : 0;
    const qreal y = down == Qt::AlignBottom    ? room.height() - size.height()
                    : down == Qt::AlignVCenter ? (room.height() - size.height()) / 2
                                               : 0;
    return {QPointF(left + x, top + y), size};
}

/// What of a mark can be seen through all that it lies in.
inline void cutByEdges(Mark &mark)
{
    mark.seen = mark.painted;
    bool scrolls = false;
    for (const QQuickItem *at = mark.item->parentItem(); at; at = at->parentItem()) {
        const bool isWindow = !at->parentItem();
        const bool isScroller = inherits(at, "QQuickFlickable");
        scrolls = scrolls || isScroller;
        if (!at->clip() && !isWindow)
            continue;
        const QRectF edge = placeOf(at);
        const QRectF left = mark.seen & edge;
        const bool narrower = left.width() < mark.seen.width() - slack;
        const bool lower = left.height() < mark.seen.height() - slack;
        mark.cut = mark.cut || narrower || (lower && !scrolls);
        mark.seen = left;
    }
}

inline bool isOn(const QRectF &inner, const QRectF &outer)
{
    return outer.adjusted(-slack, -slack, slack, slack).contains(inner);
}

inline bool overlap(const QRectF &one, const QRectF &other)
{
    const QRectF both = one & other;
    return both.width() > slack && both.height() > slack;
}

/// The texts and the icons that are seen, at least in part.
inline QList<Mark> marksOf(QQuickItem *root)
{
    QList<Mark> marks;
    const auto isMark = [](const QQuickItem *item) {
        return inherits(item, "QQuickText") || inherits(item, "tarnwick::TabularText") ||
               inherits(item, "QQuickImage");
    };
    for (QQuickItem *item : shownWhere(root, isMark)) {
        Mark mark{item, item->property("text").toString(), placeOf(item), {}};
        mark.text = !inherits(item, "QQuickImage");
        if (mark.text && mark.words.isEmpty())
            continue;
        if (inherits(item, "QQuickText"))
            mark.painted = item->mapRectToScene(lettersOf(item));
        else if (mark.text)
            mark.painted =
                item->mapRectToScene({0, 0, item->implicitWidth(), item->implicitHeight()});
        else
            mark.words = item->parentItem()->property("symbol").toString();
        // A shadow is as large as what throws it, and more.
        if (mark.words.isEmpty())
            continue;
        cutByEdges(mark);
        if (mark.seen.height() > slack)
            marks += mark;
    }
    return marks;
}

/// The sheet, button or badge that a mark stands on, where it leaves that.
inline const QQuickItem *groundLeftBy(const Mark &mark)
{
    for (const QQuickItem *at = mark.item->parentItem(); at; at = at->parentItem()) {
        const bool isGround =
            inherits(at, "QQuickRectangle") || inherits(at, "QQuickAbstractButton");
        if (isGround && !isOn(mark.painted, placeOf(at)))
            return at;
        if (inherits(at, "QQuickFlickable"))
            break;
    }
    return nullptr;
}

inline QString told(const Mark &mark)
{
    const QRect place = mark.painted.toAlignedRect();
    return QStringLiteral("\"%1\" (%2,%3 %4x%5)")
        .arg(mark.words)
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

} // namespace detail

/// Whether a text may be cut short by dots.
enum class Eliding { Allowed, Wrong };

/// What has no place in a window, a line each; empty where all is well.
inline QStringList misfitsOf(QQuickItem *root, Eliding eliding)
{
    QStringList found;
    const QList<detail::Mark> marks = detail::marksOf(root);
    for (const detail::Mark &mark : marks) {
        const qreal width = detail::number(mark.item, "contentWidth");
        const bool tooWide =
            mark.item->inherits("QQuickText")
                ? width > mark.item->width() + detail::slack
                : mark.text && mark.item->implicitWidth() > mark.item->width() + detail::slack;
        if (mark.cut || tooWide)
            found += detail::told(mark) + QStringLiteral(" is cut off");
        if (eliding == Eliding::Wrong && mark.item->property("truncated").toBool())
            found += detail::told(mark) + QStringLiteral(" is cut short");
        if (const QQuickItem *ground = detail::groundLeftBy(mark))
            found += detail::told(mark) + QStringLiteral(" leaves its ") +
                     QString::fromLatin1(ground->metaObject()->className());
    }
    for (qsizetype i = 0; i < marks.size(); ++i) {
        for (qsizetype j = i + 1; j < marks.size(); ++j) {
            const bool read = marks[i].text || marks[j].text;
            if (read && detail::overlap(marks[i].seen, marks[j].seen))
                found +=
                    detail::told(marks[i]) + QStringLiteral(" lies over ") + detail::told(marks[j]);
        }
    }
    return found;
}

/// Buttons of which one lies over the other, a line for each pair.
inline QStringList crowdedButtonsOf(QQuickItem *root)
{
    QStringList found;
    const QRectF window = placeOf(root->window()->contentItem());
    const QList<QQuickItem *> buttons = shownWhere(root, [&](const QQuickItem *item) {
        return item->inherits("QQuickAbstractButton") && placeOf(item).intersects(window);
    });
    for (qsizetype i = 0; i < buttons.size(); ++i) {
        for (qsizetype j = i + 1; j < buttons.size(); ++j) {
            if (!buttons[i]->isAncestorOf(buttons[j]) &&
                detail::overlap(placeOf(buttons[i]), placeOf(buttons[j])) &&
                buttons[i]->parentItem() == buttons[j]->parentItem())
                found += QStringLiteral("\"%1\" lies over \"%2\"")
                             .arg(accessibleName(buttons[i]), accessibleName(buttons[j]));
        }
    }
    return found;
}

} // namespace tarnwick::testing
