#pragma once

#include "app/app_state.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The missing tracks, in library order. Keeps where they stand in the present scan result; what a
/// row says is read from there when it comes into view.
class MissingModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        KeyRole = Qt::UserRole,
        FirstRole,
        SecondRole,
        LastSeenRole,
        PathRole,
        ExpandedRole
    };

    explicit MissingModel(const AppState &app, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Reads the present scan result.
    void readLibrary();
    /// Which track's panel is open; a null id for none.
    void setExpanded(const QUuid &track);
    /// The track of a row by its key; null where it is no longer missing.
    const ScannedTrack *trackOf(const QString &key) const;

private:
    const AppState &m_app;
    std::vector<size_t> m_places; ///< in the scan result
    QUuid m_expanded;
};

} // namespace tarnwick
