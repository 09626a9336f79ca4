#include "cli/gig_run_command.h"

#include "cli/json_lists.h"
#include "cli/session.h"
#include "cli/text_table.h"
#include "screens/gig_run/gig_run_actions.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

using GigRunFigures::Outcome;
using GigRunFigures::SetSheet;

struct FinishedStep
{
    QString title;
    Outcome outcome;

    QString state() const { return GigRunFigures::isDone(outcome) ? u"done"_s : u"skipped"_s; }
    QString text() const { return GigRunFigures::statusOf(GigRunFigures::stateOf(outcome)); }
};

QList<FinishedStep> runAll(AppState &app, GigRunActions::Fixes fixes)
{
    const auto derived = app.derived();
    QList<FinishedStep> finished;
    for (int step = 0; step < GigRunFigures::stepCount; ++step)
        finished.append({GigRunFigures::titles()[step],
                         GigRunActions::runStep(app, GigRunFigures::Step(step), *derived, fixes)});
    return finished;
}

void writeRun(Session &session, const QList<FinishedStep> &steps, const SetSheet &sheet)
{
    JsonWriter &json = session.out().json();
    json.beginObject();
    session.writeToasts(json);
    writeObjects(session.out(), u"steps", steps, [](JsonWriter &one, const FinishedStep &step) {
        one.member(u"title", step.title);
        one.member(u"state", step.state());
        one.member(u"text", step.text());
    });
    json.key(u"setSheet");
    json.beginObject();
    json.member(u"tracks", sheet.tracks);
    json.member(u"crates", sheet.crates);
    json.member(u"length", sheet.length);
    json.member(u"tempoPath", sheet.tempoPath);
    json.member(u"keys", sheet.keys);
    json.endObject();
    json.endObject();
}

void printRun(Session &session, const QList<FinishedStep> &steps, const SetSheet &sheet)
{
    TextTable table;
    for (const FinishedStep &step : steps)
        table.addRow({step.title, step.state(), step.text()});
    table.addRow({u""_s, u""_s, u""_s});
    table.addRow({u"Tracks"_s, QString::number(sheet.tracks)});
    table.addRow({u"Crates"_s, QString::number(sheet.crates)});
    table.addRow({u"Length"_s, sheet.length});
    table.addRow({u"Tempo path"_s, sheet.tempoPath});
    table.addRow({u"Keys"_s, QString::number(sheet.keys)});
    session.out().text(table.text());
}

} // namespace

Status runGigRun(Session &session)
{
    AppState &app = session.app();
    const bool applies = session.line().has(u"apply-safe-fixes"_s);
    const QList<FinishedStep> steps =
        runAll(app, applies ? GigRunActions::Fixes::Yes : GigRunActions::Fixes::No);
    const SetSheet sheet = GigRunFigures::setSheet(*app.result(), int(app.crates().size()));
    const Status status = session.statusOfToasts();
    if (session.wantsJson())
        writeRun(session, steps, sheet);
    if (!session.wantsJson() || status != Status::Done)
        session.printToasts(status);
    if (!session.wantsJson())
        printRun(session, steps, sheet);
    return status;
}

} // namespace tarnwick::cli
