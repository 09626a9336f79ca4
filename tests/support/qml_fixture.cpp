#include "support/qml_fixture.h"

#include "screens/components/install.h"

#include <QQmlEngine>
#include <QRegularExpression>
#include <QtQml/QQmlExtensionPlugin>

using namespace Qt::StringLiterals;

Q_IMPORT_QML_PLUGIN(Tarnwick_ComponentsPlugin)

namespace tarnwick::testing {

namespace {

QAccessibleInterface *interfaceOf(QQuickItem *item)
{
    QAccessible::setActive(true);
    return QAccessible::queryAccessibleInterface(item);
}

void collect(QAccessibleInterface *interface, QList<QQuickItem *> &found)
{
    if (!interface || interface->state().invisible)
        return;
    if (auto *item = qobject_cast<QQuickItem *>(interface->object()))
        found += item;
    for (int i = 0; i < interface->childCount(); ++i)
        collect(interface->child(i), found);
}

QPoint centreOf(QQuickItem *item)
{
    return item->mapToScene(item->boundingRect().center()).toPoint();
}

} // namespace

void failOnAnyWarning()
{
    QTest::failOnWarning(QRegularExpression(u"."_s));
}

QList<QQuickItem *> accessibleItems(QQuickItem *root)
{
    QAccessible::setActive(true);
    QList<QQuickItem *> found;
    collect(QAccessible::queryAccessibleInterface(root->window()), found);
    found.removeIf([root](QQuickItem *item) { return item != root && !root->isAncestorOf(item); });
    return found;
}

QString accessibleName(QQuickItem *item)
{
    auto *interface = interfaceOf(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

QAccessible::Role accessibleRole(QQuickItem *item)
{
    auto *interface = interfaceOf(item);
    return interface ? interface->role() : QAccessible::NoRole;
}

QQuickItem *itemNamed(QQuickItem *root, const QString &name, QAccessible::Role role)
{
    for (QQuickItem *item : accessibleItems(root)) {
        if (accessibleRole(item) == role && accessibleName(item) == name)
            return item;
    }
    return nullptr;
}

QStringList textsOf(QQuickItem *root)
{
    QStringList texts;
    for (QQuickItem *item : accessibleItems(root)) {
        const auto role = accessibleRole(item);
        if (role == QAccessible::StaticText || role == QAccessible::Heading)
            texts += accessibleName(item);
    }
    return texts;
}

QList<QQuickItem *> tabOrder(QQuickWindow *window)
{
    QList<QQuickItem *> order;
    QQuickItem *item = window->contentItem()->nextItemInFocusChain();
    while (item && item != window->contentItem() && !order.contains(item)) {
        order += item;
        item = item->nextItemInFocusChain();
    }
    return order;
}

bool pressByPointer(QQuickItem *item)
{
    const QPoint centre = centreOf(item);
    if (!item->window() || !QRect(QPoint(), item->window()->size()).contains(centre))
        return false;
    QTest::mouseClick(item->window(), Qt::LeftButton, {}, centre);
    return true;
}

bool pressByKey(QQuickItem *item, Qt::Key key)
{
    QQuickWindow *window = item->window();
    for (int i = 0; i < 200 && window->activeFocusItem() != item; ++i)
        QTest::keyClick(window, Qt::Key_Tab);
    if (window->activeFocusItem() != item)
        return false;
    QTest::keyClick(window, key);
    return true;
}

bool pressByScreenReader(QQuickItem *item)
{
    auto *interface = interfaceOf(item);
    auto *actions = interface ? interface->actionInterface() : nullptr;
    if (!actions || !actions->actionNames().contains(QAccessibleActionInterface::pressAction()))
        return false;
    actions->doAction(QAccessibleActionInterface::pressAction());
    return true;
}

bool showsFocusRing(QQuickItem *item)
{
    for (QQuickItem *child : item->childItems()) {
        if (QByteArray(child->metaObject()->className()).startsWith("FocusRing"))
            return child->isVisible();
    }
    return false;
}

void releaseImages(QQuickWindow *window)
{
    qDeleteAll(window->contentItem()->childItems());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window->releaseResources();
    (void)window->grabWindow();
}

QmlScene::QmlScene(const QByteArray &body, const QSize &size)
{
    installComponents(*m_view.engine());
    m_component = std::make_unique<QQmlComponent>(m_view.engine());
    m_component->setData("import QtQuick\nimport QtQuick.Layouts\nimport Tarnwick.Components\n" +
                             body,
                         QUrl(u"scene.qml"_s));
    QObject *made = m_component->create();
    if (!made)
        qFatal("%s", qPrintable(m_component->errorString()));
    m_view.setContent({}, m_component.get(), made);
    m_view.setResizeMode(QQuickView::SizeRootObjectToView);
    m_view.resize(size);
    m_view.show();
    m_view.requestActivate();
    if (!QTest::qWaitForWindowActive(&m_view))
        qFatal("the scene's window does not come up");
}

QQuickItem *QmlScene::item(const QString &name) const
{
    auto *found = root()->findChild<QQuickItem *>(name);
    if (!found)
        qFatal("the scene has no item %s", qPrintable(name));
    return found;
}

} // namespace tarnwick::testing
