#pragma once

#include "screens/components/keyed_list_model.h"
#include "signal/signal_records.h"

#include <QList>
#include <QSet>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The rows of the chart that are shown, in the server's order.
class ChartModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        KeyRole = Qt::UserRole,
        RankRole, ///< the place among the rows shown, from 1
        LineRole,
        LanesRole,
        MarkedRole, ///< whether the user has the track's file and never played it
        DjsRole,
        PlaysRole,
        ActsRole, ///< false: there is nothing to press in a row
    };

    using KeyedListModel::KeyedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setRows(const QList<LandingTrack> &rows, const QSet<QString> &owned,
                 const QSet<QString> &played);

private:
    QList<LandingTrack> m_rows;
    QSet<QString> m_owned;
    QSet<QString> m_played;
};

} // namespace tarnwick
