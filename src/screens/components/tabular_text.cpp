#include "screens/components/tabular_text.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

qreal digitWidth(const QFontMetricsF &metrics)
{
    qreal widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

/// Calls `each(piece, x, room)` for every digit and for every run of other characters; gives the
/// width of all.
template <typename Each>
qreal forEachPiece(const QString &text, const QFontMetricsF &metrics, Each each)
{
    qreal digit = 0; // worked out once there is one
    qreal x = 0;
    for (qsizetype start = 0, end = 0; start < text.size(); start = end) {
        end = start + 1;
        while (!isDigit(text[start]) && end < text.size() && !isDigit(text[end]))
            ++end;
        if (isDigit(text[start]) && digit == 0)
            digit = digitWidth(metrics);
        const QString piece = text.mid(start, end - start);
        const qreal room = isDigit(text[start]) ? digit : metrics.horizontalAdvance(piece);
        each(piece, x, room);
        x += room;
    }
    return x;
}

} // namespace

TabularText::TabularText(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void TabularText::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    layOut();
    Q_EMIT textChanged();
}

void TabularText::setFont(const QFont &font)
{
    if (font == m_font)
        return;
    m_font = font;
    layOut();
    Q_EMIT fontChanged();
}

void TabularText::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void TabularText::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    layOut();
}

/// Waits until all that its makers set has been set.
void TabularText::layOut()
{
    if (!isComponentComplete())
        return;
    const QFontMetricsF metrics(m_font);
    const qreal width = forEachPiece(m_text, metrics, [](const QString &, qreal, qreal) {});
    setImplicitSize(std::ceil(width), std::ceil(metrics.height()));
    setBaselineOffset(metrics.ascent());
    update();
}

void TabularText::paint(QPainter *painter)
{
    const QFontMetricsF metrics(m_font);
    painter->setFont(m_font);
    painter->setPen(m_color);
    forEachPiece(m_text, metrics, [&](const QString &piece, qreal x, qreal room) {
        const qreal spare = room - metrics.horizontalAdvance(piece);
        painter->drawText(QPointF(x + spare / 2, metrics.ascent()), piece);
    });
}

} // namespace tarnwick
