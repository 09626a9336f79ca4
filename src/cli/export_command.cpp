// The commands that export a library, and that compare it with an earlier export.

#include "cli/export_command.h"

#include "cli/progress_line.h"
#include "cli/session.h"
#include "cli/text_table.h"
#include "platform/files.h"
#include "screens/export/export_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

ExportTarget targetOf(const Session &session)
{
    return *exportTargetFromCaseName(session.line().arguments.at(0));
}

QString folderOf(const Session &session)
{
    return platform::absolutePath(session.line().arguments.at(1));
}

void writeOutcome(JsonWriter &json, const std::optional<ExportOutcome> &outcome)
{
    json.key(u"outcome");
    if (!outcome) {
        json.null();
        return;
    }
    json.beginObject();
    json.member(u"target", infoOf(outcome->target).rawValue);
    json.member(u"path", outcome->path);
    json.member(u"trackCount", outcome->trackCount);
    json.member(u"crateCount", outcome->crateCount);
    json.endObject();
}

void writeDrift(JsonWriter &json, const std::optional<ExportDrift> &drift)
{
    json.beginObject();
    json.key(u"drift");
    if (drift) {
        json.beginObject();
        json.member(u"seratoOnly", drift->seratoOnly);
        json.member(u"deviceOnly", drift->deviceOnly);
        json.endObject();
    } else {
        json.null();
    }
    json.endObject();
}

void printDrift(Output &out, const std::optional<ExportDrift> &drift)
{
    if (!drift) {
        out.line(ExportFigures::nothingToCompare());
        return;
    }
    TextTable table;
    table.alignRight(1);
    for (const ExportFigures::DriftFigure &figure : ExportFigures::figuresOf(*drift))
        table.addRow({figure.label, QString::number(figure.count)});
    out.text(table.text());
}

void exportAndWait(Session &session)
{
    AppState &app = session.app();
    ProgressLine progress;
    const auto watching = QObject::connect(&app, &AppState::exportingChanged, &app, [&] {
        if (app.exporting())
            progress.show(*app.exporting());
    });
    app.runExport(targetOf(session), folderOf(session));
    session.waitForBackground();
    progress.clear();
    QObject::disconnect(watching);
}

} // namespace

Done checkExportTarget(const CommandLine &line)
{
    if (exportTargetFromCaseName(line.arguments.at(0)))
        return {};
    QStringList names;
    for (const ExportTargetInfo &target : allExportTargets())
        names.append(target.caseName);
    return failure(
        u"unknown target '%1' (known: %2)"_s.arg(line.arguments.at(0), names.join(u", "_s)));
}

Status runExport(Session &session)
{
    exportAndWait(session);
    const std::optional<ExportOutcome> &outcome = session.app().lastExport();
    const Status status = outcome ? Status::Done : Status::Refused;
    if (session.wantsJson()) {
        JsonWriter &json = session.out().json();
        json.beginObject();
        session.writeToasts(json);
        writeOutcome(json, outcome);
        json.endObject();
    }
    if (!session.wantsJson() || status != Status::Done)
        session.printToasts(status);
    return status;
}

Status runDrift(Session &session)
{
    const auto drift = session.app().drift(targetOf(session), folderOf(session));
    if (session.wantsJson())
        writeDrift(session.out().json(), drift);
    else
        printDrift(session.out(), drift);
    return Status::Done;
}

} // namespace tarnwick::cli
