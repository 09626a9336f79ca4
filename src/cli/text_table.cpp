#include "cli/text_table.h"

namespace tarnwick::cli {

namespace {

/// The places that a cell takes, without what switches colours.
qsizetype widthOf(const QString &cell)
{
    qsizetype width = 0;
    bool isInCode = false;
    for (const QChar character : cell) {
        if (character == u'\033')
            isInCode = true;
        else if (!isInCode)
            ++width;
        else if (character == u'm')
            isInCode = false;
    }
    return width;
}

QList<qsizetype> widthsOf(const QList<QStringList> &rows)
{
    QList<qsizetype> widths;
    for (const QStringList &row : rows) {
        widths.resize(qMax(widths.size(), row.size()));
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths[i], widthOf(row.at(i)));
    }
    return widths;
}

QString blanksBeside(const QString &cell, qsizetype width)
{
    return QString(width - widthOf(cell), u' ');
}

} // namespace

QString TextTable::text(qsizetype rows) const
{
    const QList<QStringList> shown = m_rows.first(rows);
    const QList<qsizetype> widths = widthsOf(shown);
    QString text;
    for (const QStringList &row : shown) {
        QStringList cells;
        for (int i = 0; i < row.size(); ++i) {
            const QString blanks = blanksBeside(row.at(i), widths.at(i));
            cells += m_rightAligned.contains(i) ? blanks + row.at(i) : row.at(i) + blanks;
        }
        QString line = cells.join(QStringLiteral("  "));
        while (line.endsWith(u' '))
            line.chop(1);
        text += line + u'\n';
    }
    return text;
}

} // namespace tarnwick::cli
