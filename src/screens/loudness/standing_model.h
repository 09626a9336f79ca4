#pragma once

#include "analysis/derived.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The tracks that stand furthest from the library's level.
class StandingModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        KeyRole = Qt::UserRole,
        FirstRole,
        SecondRole,
        PathRole,
        DeviationRole,     ///< decibels
        DeviationTextRole, ///< the same in words
        TintRole,          ///< of the words
        LevelTitleRole,    ///< what the button says that levels the track
        ActsRole,          ///< false where a gain tag is there already
    };

    struct Row
    {
        ScannedTrack track;
        double deviation = 0; ///< decibels
        double gain = 0;      ///< what levels it, in decibels
    };

    using KeyedListModel::KeyedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setRows(std::vector<Row> rows);
    /// The row of this key; null where it is no longer there.
    const Row *rowOf(const QString &key) const;

private:
    std::vector<Row> m_rows;
};

} // namespace tarnwick
