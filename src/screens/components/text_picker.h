#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// Lies over the whole window and lets its texts be taken along. One serves all: a row of a list
/// carries nothing for it but the path of its file, in a property `path`.
///
/// 1. A text outside controls is selected by a drag or a double press, as a whole: what is cut
///    short on screen is copied uncut.
/// 2. What the second button is pressed on is asked for, in controls too.
/// 3. What is to stand beside the resting pointer is told: all of a text that is cut short, or the
///    `hint` of a control.
class TextPicker : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Null for none.
    Q_PROPERTY(QQuickItem *selected READ selected NOTIFY selectedChanged)
    /// What below the pointer there is more to be said of; null for nothing.
    Q_PROPERTY(QQuickItem *explained READ explained NOTIFY explainedChanged)
    Q_PROPERTY(QString explanation READ explanation NOTIFY explainedChanged)

public:
    explicit TextPicker(QQuickItem *parent = nullptr);

    // cppcheck-suppress CastIntegerToAddressAtReturn ; a QPointer is no integer
    QQuickItem *selected() const { return m_selected; }
    // cppcheck-suppress CastIntegerToAddressAtReturn ; a QPointer is no integer
    QQuickItem *explained() const { return m_explained; }
    QString explanation() const { return m_explanation; }

    Q_INVOKABLE void copy(const QString &text) const;
    /// Copies what is selected, else the path of the row that has the keyboard.
    Q_INVOKABLE void copyNow() const;
    /// Asks for the row that has the keyboard, as the second button would.
    Q_INVOKABLE void askByKey();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void selectedChanged();
    void explainedChanged();
    /// There is something to be copied at a place: a text, the path of a row, or both.
    void asked(QPointF place, const QString &text, const QString &path);

protected:
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    Q_SLOT void drop();
    bool ask(const QPointF &place);
    void select(QQuickItem *text);
    void explain(QQuickItem *item, const QString &words);

    QPointer<QQuickWindow> m_watched;
    QPointer<QQuickItem> m_selected;
    QPointer<QQuickItem> m_explained;
    QString m_explanation;
    QPointer<QQuickItem> m_pressed;
    QPointF m_pressedAt;
};

} // namespace tarnwick
