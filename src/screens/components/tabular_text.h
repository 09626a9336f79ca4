#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// One line of text whose digits all take the same room, whatever the font says: figures stand
/// below each other, and a number that counts up doesn't tremble.
class TabularText : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit TabularText(QQuickItem *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    QFont font() const { return m_font; }
    void setFont(const QFont &font);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void textChanged();
    void fontChanged();
    void colorChanged();

protected:
    void componentComplete() override;

private:
    void layOut();

    QString m_text;
    QFont m_font;
    QColor m_color;
};

} // namespace tarnwick
