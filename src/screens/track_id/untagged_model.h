#pragma once

#include "analysis/derived.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The first tracks without a genre, and below them a line that tells how many more there are.
class UntaggedModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        KeyRole = Qt::UserRole,
        FirstRole,
        SecondRole,
        PathRole,
        ConfidenceRole, ///< "95%"; empty without a suggestion
        TintRole,       ///< of the confidence
        GenreRole,      ///< the one suggested
        ActsRole,       ///< whether there is a suggestion to be taken
        MoreRole,       ///< the last line's words; empty in all other rows
    };

    struct Row
    {
        ScannedTrack track;
        std::optional<GenreSuggestion> suggestion;
    };

    using KeyedListModel::KeyedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// `more` tracks are there beyond these.
    void setRows(std::vector<Row> rows, size_t more);
    /// The row of this key; null where it is no longer there, and for the last line.
    const Row *rowOf(const QString &key) const;

private:
    QVariant ofTrack(const Row &row, int role) const;

    std::vector<Row> m_rows;
    size_t m_more = 0;
};

} // namespace tarnwick
