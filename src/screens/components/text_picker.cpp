#include "screens/components/text_picker.h"

#include "screens/components/tabular_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QQuickWindow>
#include <QStyleHints>

#include <utility>

namespace tarnwick {

namespace {

bool carriesPath(const QQuickItem *item)
{
    return !item->property("path").toString().isEmpty();
}

bool isText(const QQuickItem *item)
{
    return (item->inherits("QQuickText") || qobject_cast<const TabularText *>(item)) &&
           !item->property("text").toString().isEmpty();
}

/// Whether a press of the first button is for the item itself.
bool isControl(const QQuickItem *item)
{
    return item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextInput");
}

QString wordsOf(const QQuickItem *text)
{
    return text ? text->property("text").toString() : QString();
}

/// The innermost items at a place, from the uppermost on; null for none.
struct ItemsAt
{
    QQuickItem *text = nullptr;
    QQuickItem *control = nullptr;
    QQuickItem *row = nullptr; ///< that carries a path

    /// What a press of the first button would select.
    QQuickItem *selectable() const { return control ? nullptr : text; }

    /// What there is more to be said of, and that.
    std::pair<QQuickItem *, QString> explained() const
    {
        if (text && text->property("truncated").toBool())
            return {text, wordsOf(text)};
        const QString hint = control ? control->property("hint").toString() : QString();
        return {hint.isEmpty() ? nullptr : control, hint};
    }
};

void look(QQuickItem *item, const QPointF &scene, ItemsAt &found)
{
    if (!item->isVisible() || item->opacity() == 0)
        return;
    const bool within = item->contains(item->mapFromScene(scene));
    if (item->clip() && !within)
        return;
    const QList<QQuickItem *> children = item->childItems();
    for (auto child = children.rbegin(); child != children.rend(); ++child)
        look(*child, scene, found);
    if (!within)
        return;
    if (!found.text && isText(item))
        found.text = item;
    if (!found.control && isControl(item))
        found.control = item;
    if (!found.row && carriesPath(item))
        found.row = item;
}

ItemsAt itemsAt(const QQuickWindow *window, const QPointF &scene)
{
    ItemsAt found;
    look(window->contentItem(), scene, found);
    return found;
}

/// The path that the row around an item carries; empty for none.
QString pathAround(const QQuickItem *item)
{
    while (item && !carriesPath(item))
        item = item->parentItem();
    return item ? item->property("path").toString() : QString();
}

/// A finger on a text is about to scroll.
bool isByFinger(const QMouseEvent *event)
{
    return event->pointingDevice()->type() == QInputDevice::DeviceType::TouchScreen;
}

} // namespace

TextPicker::TextPicker(QQuickItem *parent)
    : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
}

void TextPicker::copy(const QString &text) const
{
    QGuiApplication::clipboard()->setText(text);
}

void TextPicker::copyNow() const
{
    const QString text = m_selected ? wordsOf(m_selected) : pathAround(window()->activeFocusItem());
    if (!text.isEmpty())
        copy(text);
}

void TextPicker::askByKey()
{
    const QQuickItem *control = window()->activeFocusItem();
    const QString path = pathAround(control);
    if (!path.isEmpty())
        Q_EMIT asked(mapFromItem(control, control->boundingRect().center()), {}, path);
}

bool TextPicker::ask(const QPointF &place)
{
    const ItemsAt found = itemsAt(window(), mapToScene(place));
    // What a button is called is nothing to take along.
    QString words = wordsOf(found.text);
    if (found.control && wordsOf(found.control) == words)
        words.clear();
    const QString path = pathAround(found.row);
    if (words.isEmpty() && path.isEmpty())
        return false;
    Q_EMIT asked(place, words, path);
    return true;
}

void TextPicker::select(QQuickItem *text)
{
    if (text == m_selected)
        return;
    if (m_selected)
        m_selected->disconnect(this);
    m_selected = text;
    if (text) {
        const QMetaObject *type = text->metaObject();
        const QMetaMethod drop = metaObject()->method(metaObject()->indexOfSlot("drop()"));
        connect(text, &QObject::destroyed, this, &TextPicker::drop);
        connect(text, &QQuickItem::visibleChanged, this, &TextPicker::drop);
        // A row of a list may come to stand for something else.
        connect(text, type->property(type->indexOfProperty("text")).notifySignal(), this, drop);
    }
    Q_EMIT selectedChanged();
}

void TextPicker::drop()
{
    if (m_selected)
        select(nullptr);
    else
        Q_EMIT selectedChanged(); // it is just going
}

void TextPicker::explain(QQuickItem *item, const QString &words)
{
    if (item == m_explained && words == m_explanation)
        return;
    m_explained = item;
    m_explanation = words;
    Q_EMIT explainedChanged();
}

bool TextPicker::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseMove: {
        const ItemsAt found = itemsAt(window(), static_cast<QMouseEvent *>(event)->position());
        if (QQuickItem *selectable = found.selectable())
            selectable->setCursor(Qt::IBeamCursor);
        const auto [item, words] = found.explained();
        explain(item, words);
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::Leave:
        explain(nullptr, {});
        break;
    default:
        break;
    }
    return QQuickItem::eventFilter(watched, event);
}

void TextPicker::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange) {
        if (m_watched)
            m_watched->removeEventFilter(this);
        m_watched = value.window;
        if (m_watched)
            m_watched->installEventFilter(this);
    }
    QQuickItem::itemChange(change, value);
}

void TextPicker::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        event->setAccepted(ask(event->position()));
        return;
    }
    select(nullptr);
    m_pressed =
        isByFinger(event) ? nullptr : itemsAt(window(), mapToScene(event->position())).selectable();
    m_pressedAt = event->position();
    event->setAccepted(m_pressed);
}

void TextPicker::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF way = event->position() - m_pressedAt;
    if (way.manhattanLength() >= QGuiApplication::styleHints()->startDragDistance())
        select(m_pressed);
}

void TextPicker::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        select(m_pressed);
}

} // namespace tarnwick
