#include "cli/text_table.h"

namespace tarnwick::cli {

namespace {

QList<qsizetype> widthsOf(const QList<QStringList> &rows)
{
    QList<qsizetype> widths;
    for (const QStringList &row : rows) {
        widths.resize(qMax(widths.size(), row.size()));
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths[i], row.at(i).size());
    }
    return widths;
}

} // namespace

QString TextTable::text() const
{
    const QList<qsizetype> widths = widthsOf(m_rows);
    QString text;
    for (const QStringList &row : m_rows) {
        QStringList cells;
        for (int i = 0; i < row.size(); ++i) {
            if (m_rightAligned.contains(i))
                cells += row.at(i).rightJustified(widths.at(i));
            else
                cells += i + 1 < row.size() ? row.at(i).leftJustified(widths.at(i)) : row.at(i);
        }
        QString line = cells.join(QStringLiteral("  "));
        while (line.endsWith(u' '))
            line.chop(1);
        text += line + u'\n';
    }
    return text;
}

} // namespace tarnwick::cli
