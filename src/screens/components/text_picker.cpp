#include "screens/components/text_picker.h"

#include "screens/components/tabular_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QQuickWindow>
#include <QStyleHints>

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

/// The innermost item at a place for which that is so, from the uppermost on; null for none.
QQuickItem *itemAt(QQuickItem *item, const QPointF &scene, bool (*wanted)(const QQuickItem *))
{
    if (!item->isVisible() || item->opacity() == 0)
        return nullptr;
    const bool within = item->contains(item->mapFromScene(scene));
    if (item->clip() && !within)
        return nullptr;
    const QList<QQuickItem *> children = item->childItems();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (QQuickItem *found = itemAt(*child, scene, wanted))
            return found;
    }
    return within && wanted(item) ? item : nullptr;
}

QString wordsOf(const QQuickItem *text)
{
    return text ? text->property("text").toString() : QString();
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
    QQuickItem *root = window()->contentItem();
    const QPointF scene = mapToScene(place);
    const QQuickItem *text = itemAt(root, scene, isText);
    const QQuickItem *control = itemAt(root, scene, isControl);
    // What a button is called is nothing to take along.
    QString words = wordsOf(text);
    if (control && wordsOf(control) == words)
        words.clear();
    const QString path = pathAround(itemAt(root, scene, carriesPath));
    if (words.isEmpty() && path.isEmpty())
        return false;
    Q_EMIT asked(place, words, path);
    return true;
}

QQuickItem *TextPicker::selectableAt(const QPointF &place) const
{
    QQuickItem *root = window()->contentItem();
    const QPointF scene = mapToScene(place);
    return itemAt(root, scene, isControl) ? nullptr : itemAt(root, scene, isText);
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

void TextPicker::explainAt(const QPointF &scene)
{
    QQuickItem *root = window()->contentItem();
    QQuickItem *text = itemAt(root, scene, isText);
    QQuickItem *control = itemAt(root, scene, isControl);
    const QString hint = control ? control->property("hint").toString() : QString();
    if (text && text->property("truncated").toBool())
        explain(text, wordsOf(text));
    else
        explain(hint.isEmpty() ? nullptr : control, hint);
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
        const QPointF place = static_cast<QMouseEvent *>(event)->position();
        explainAt(place);
        if (QQuickItem *selectable = selectableAt(mapFromScene(place)))
            selectable->setCursor(Qt::IBeamCursor);
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
    m_pressed = isByFinger(event) ? nullptr : selectableAt(event->position());
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
