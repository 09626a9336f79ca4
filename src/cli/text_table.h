#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace tarnwick::cli {

/// Rows of text in aligned columns, two blanks apart. The last column is never padded.
class TextTable
{
public:
    void addRow(const QStringList &cells) { m_rows.append(cells); }
    /// Figures stand at the right edge of their column.
    void alignRight(int column) { m_rightAligned.insert(column); }

    qsizetype rowCount() const { return m_rows.size(); }

    /// Every row with a line feed behind it. Colours in a cell take no place.
    QString text() const { return text(rowCount()); }
    /// The same of the first rows.
    QString text(qsizetype rows) const;

private:
    QList<QStringList> m_rows;
    QSet<int> m_rightAligned;
};

} // namespace tarnwick::cli
