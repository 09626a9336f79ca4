#pragma once

#include "app/app_state.h"
#include "screens/components/keyed_list_model.h"
#include "screens/fix_queue/fix_queue_figures.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The rows of the fix queue. Keeps what an issue is about; its texts are made when a row comes
/// into view, from the figures that AppState holds at that time.
class IssueModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        KeyRole = Qt::UserRole,
        TypeRole,
        TrackRole,
        LineRole, ///< the problem, an arrow, and the plan
        PathRole, ///< of a duplicate, that of the best copy
        SafeRole,
        FixableRole,
    };

    explicit IssueModel(const AppState &app, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Issues of the present figures.
    void setIssues(std::vector<FixQueueFigures::Issue> issues);
    /// The issue of this key; null where it is no longer there.
    const FixQueueFigures::Issue *issueOf(const QString &key) const;

private:
    const AppState &m_app;
    std::vector<FixQueueFigures::Issue> m_issues;
};

} // namespace tarnwick
