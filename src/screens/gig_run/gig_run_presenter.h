#pragma once

#include "app/app_state.h"
#include "screens/gig_run/gig_run_figures.h"
#include "screens/gig_run/run_step_model.h"
#include "screens/safety/write_gate_presenter.h"

#include <QtQml/qqmlregistration.h>

#include <variant>

namespace tarnwick {

/// What the gig run shows, and the run itself: step by step, with a pause in each so that its user
/// can follow. A run ends with its presenter: what it has not come to by then is not done.
class GigRunPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY libraryRead)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(QString summary READ summary NOTIFY libraryRead)
    Q_PROPERTY(bool applyFixes READ applyFixes WRITE setApplyFixes NOTIFY applyFixesChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runChanged)
    Q_PROPERTY(QString runTitle READ runTitle NOTIFY runChanged)
    Q_PROPERTY(tarnwick::RunStepModel *steps READ steps CONSTANT)
    Q_PROPERTY(bool hasSheet READ hasSheet NOTIFY sheetChanged)
    Q_PROPERTY(QString sheetTracks READ sheetTracks NOTIFY sheetChanged)
    Q_PROPERTY(QString sheetCrates READ sheetCrates NOTIFY sheetChanged)
    Q_PROPERTY(QString sheetLength READ sheetLength NOTIFY sheetChanged)
    Q_PROPERTY(QString sheetTempoPath READ sheetTempoPath NOTIFY sheetChanged)
    Q_PROPERTY(QString sheetKeys READ sheetKeys NOTIFY sheetChanged)

public:
    explicit GigRunPresenter(AppState &app, QObject *parent = nullptr);

    /// False without a library: then nothing is shown.
    bool hasLibrary() const { return bool(m_app.result()); }
    WriteGatePresenter *gate() { return &m_gate; }
    QString summary() const { return m_summary; }
    /// Whether the run applies what needs no decision. Looked at anew at each step.
    bool applyFixes() const { return m_applyFixes; }
    void setApplyFixes(bool apply);
    bool isRunning() const { return std::holds_alternative<UnderWay>(m_run); }
    QString runTitle() const { return GigRunFigures::runTitle(isRunning()); }
    RunStepModel *steps() { return &m_steps; }
    /// True from the end of a run to the start of the next.
    bool hasSheet() const { return std::holds_alternative<Finished>(m_run); }
    QString sheetTracks() const { return QString::number(m_sheet.tracks); }
    QString sheetCrates() const { return QString::number(m_sheet.crates); }
    QString sheetLength() const { return m_sheet.length; }
    QString sheetTempoPath() const { return m_sheet.tempoPath; }
    QString sheetKeys() const { return QString::number(m_sheet.keys); }

    /// Does nothing while a run is under way, or without a library.
    Q_INVOKABLE void start();

Q_SIGNALS:
    void libraryRead();
    void applyFixesChanged();
    void runChanged();
    void sheetChanged();

private:
    struct Idle
    {};
    struct UnderWay
    {
        /// Those of the moment of the start; fixes change the library meanwhile.
        std::shared_ptr<const Derived> derived;
        int step = 0;
    };
    struct Finished
    {};

    void readLibrary();
    void readSheet();
    void beginStep();
    void endStep();

    AppState &m_app;
    WriteGatePresenter m_gate;
    QString m_summary;
    bool m_applyFixes = false;
    std::variant<Idle, UnderWay, Finished> m_run;
    RunStepModel m_steps;
    GigRunFigures::SetSheet m_sheet;
};

} // namespace tarnwick
