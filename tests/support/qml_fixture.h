#pragma once

#include <QAccessible>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <memory>

namespace tarnwick::testing {

/// To be called in a test's init(): any warning from then on fails the test function.
void failOnAnyWarning();

/// What a screen reader sees: every item below `root` that has an interface and isn't ignored, in
/// its order. Hidden ones are left out.
QList<QQuickItem *> accessibleItems(QQuickItem *root);

QString accessibleName(QQuickItem *item);
QAccessible::Role accessibleRole(QQuickItem *item);

/// The item that a screen reader would call so; null if there is none.
QQuickItem *itemNamed(QQuickItem *root, const QString &name,
                      QAccessible::Role role = QAccessible::Button);

/// All texts that can be read, top to bottom as they stand in the scene.
QStringList textsOf(QQuickItem *root);

/// Every control that Tab reaches from the window's first one, in the order of Tab.
QList<QQuickItem *> tabOrder(QQuickWindow *window);

/// The ways to press a control; each returns false where that way doesn't lead to it.
bool pressByPointer(QQuickItem *item);
bool pressByKey(QQuickItem *item, Qt::Key key);
bool pressByScreenReader(QQuickItem *item);

/// Whether the item shows its focus ring.
bool showsFocusRing(QQuickItem *item);

/// Takes a window's content away and draws it empty, ahead of its end: the software renderer lets
/// go of images between two pictures only, so that those of the last one would count as leaks.
void releaseImages(QQuickWindow *window);

/// A piece of QML in a window of its own, with Tarnwick.Components imported.
class QmlScene
{
public:
    /// `body` is the QML of one item.
    explicit QmlScene(const QByteArray &body, const QSize &size = {480, 360});
    ~QmlScene() { releaseImages(&m_view); }
    QmlScene(const QmlScene &) = delete;
    QmlScene &operator=(const QmlScene &) = delete;

    QQuickWindow *window() { return &m_view; }
    QQuickItem *root() const { return m_view.rootObject(); }
    /// The item of this objectName.
    QQuickItem *item(const QString &name) const;
    /// The value of a property of the root.
    QVariant value(const char *property) const { return root()->property(property); }
    QImage picture() { return m_view.grabWindow(); }

private:
    QQuickView m_view;
    std::unique_ptr<QQmlComponent> m_component;
};

} // namespace tarnwick::testing
