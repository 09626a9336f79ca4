#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/gig_check/gig_check_figures.h"
#include "screens/gig_check/gig_crate_model.h"
#include "screens/gig_check/gig_finding_model.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the gig check shows, the crates picked for it and where they go. At first all crates are
/// picked. The check goes over the whole library, and so runs in the background: until it has
/// answered, what it answered before stays on show, and ahead of the first answer there is none.
class GigCheckPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(tarnwick::GigCrateModel *crates READ crates CONSTANT)
    Q_PROPERTY(bool hasCrates READ hasCrates NOTIFY changed)
    Q_PROPERTY(QString picked READ picked NOTIFY changed)
    Q_PROPERTY(QStringList destinations READ destinations NOTIFY destinationsChanged)
    Q_PROPERTY(QString destination READ destination NOTIFY changed)
    Q_PROPERTY(bool hasReport READ hasReport NOTIFY changed)
    Q_PROPERTY(QString verdict READ verdict NOTIFY changed)
    Q_PROPERTY(int verdictTint READ verdictTint NOTIFY changed)
    Q_PROPERTY(QString tracks READ tracks NOTIFY changed)
    Q_PROPERTY(QString sentence READ sentence NOTIFY changed)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)
    Q_PROPERTY(bool isGood READ isGood NOTIFY changed)
    Q_PROPERTY(tarnwick::GigFindingModel *blockers READ blockers CONSTANT)
    Q_PROPERTY(tarnwick::GigFindingModel *polish READ polish CONSTANT)

public:
    explicit GigCheckPresenter(AppState &app, QObject *parent = nullptr);

    GigCrateModel *crates() { return &m_crates; }
    bool hasCrates() const { return m_crates.rowCount() > 0; }
    QString picked() const { return GigCheckFigures::picked(m_crates.picked().size()); }
    /// The drives among them as last looked at.
    QStringList destinations() const { return m_destinations; }
    QString destination() const { return m_destination; }
    bool hasReport() const { return m_report.has_value(); }
    QString verdict() const { return m_report ? GigCheck::rawValue(m_report->verdict) : QString(); }
    int verdictTint() const;
    QString tracks() const { return m_report ? GigCheckFigures::trackCount(*m_report) : QString(); }
    QString sentence() const;
    bool isEmpty() const { return m_report && m_report->tracks == 0; }
    bool isGood() const;
    GigFindingModel *blockers() { return &m_blockers; }
    GigFindingModel *polish() { return &m_polish; }

    /// Picks a crate, or lets go of it.
    Q_INVOKABLE void toggle(const QString &crate);
    /// Looks for drives, in the background: one that does not answer keeps nobody waiting.
    Q_INVOKABLE void lookForDrives();
    Q_INVOKABLE void chooseDestination(const QString &destination);
    /// Goes to where a finding is mended.
    Q_INVOKABLE void mendBlocker(int row);
    Q_INVOKABLE void mendPolish(int row);

Q_SIGNALS:
    void changed();
    void destinationsChanged();

private:
    void readCrates();
    void check();
    void show(const GigCheckFigures::Report &report);
    void mend(const GigFindingModel &findings, int row);

    AppState &m_app;
    GigCrateModel m_crates;
    QStringList m_destinations;
    QString m_destination = GigCheckFigures::noDestination();
    int m_checks = 0;   ///< that were begun; the answer of the last one counts
    int m_answered = 0; ///< the last of them whose answer has come
    std::optional<GigCheckFigures::Report> m_report;
    GigFindingModel m_blockers;
    GigFindingModel m_polish;
};

} // namespace tarnwick
