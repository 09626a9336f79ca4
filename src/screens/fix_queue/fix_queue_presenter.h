#pragma once

#include "app/app_state.h"
#include "screens/fix_queue/issue_model.h"
#include "screens/safety/write_gate_presenter.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the fix queue shows, and its filter.
class FixQueuePresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY changed)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(QStringList filters READ filters CONSTANT)
    Q_PROPERTY(int filter READ filter WRITE setFilter NOTIFY changed)
    Q_PROPERTY(bool hasSafe READ hasSafe NOTIFY changed)
    Q_PROPERTY(QString fixAllTitle READ fixAllTitle NOTIFY changed)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)
    Q_PROPERTY(tarnwick::IssueModel *issues READ issues CONSTANT)

public:
    explicit FixQueuePresenter(AppState &app, QObject *parent = nullptr);

    /// False without a library: then nothing is shown.
    bool hasLibrary() const { return m_hasLibrary; }
    WriteGatePresenter *gate() { return &m_gate; }
    /// What the pills of the filters say, in order.
    QStringList filters() const;
    int filter() const { return int(m_filter); }
    void setFilter(int filter);
    /// Counted over the whole queue, whatever the filter.
    bool hasSafe() const { return m_safe > 0; }
    QString fixAllTitle() const;
    /// What stands in the place of the rows; nothing where there are some.
    QString emptyText() const;
    IssueModel *issues() { return &m_issues; }

    /// Runs the fix of an issue; nothing where it has gone.
    Q_INVOKABLE void fix(const QString &key);
    /// Goes to where an issue is decided.
    Q_INVOKABLE void decide(const QString &key);
    /// Runs every safe fix of the whole queue, one after the other.
    Q_INVOKABLE void fixAllSafe();

Q_SIGNALS:
    void changed();

private:
    void readLibrary();
    void showFiltered();

    AppState &m_app;
    WriteGatePresenter m_gate;
    bool m_hasLibrary = false;
    std::vector<FixQueueFigures::Issue> m_queue;
    int m_safe = 0;
    FixQueueFigures::Filter m_filter = FixQueueFigures::Filter::All;
    IssueModel m_issues;
};

} // namespace tarnwick
