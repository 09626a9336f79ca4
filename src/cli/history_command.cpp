// The command that lists what was played.

#include "cli/history_command.h"

#include "cli/session.h"
#include "cli/text_table.h"
#include "serato/serato_history.h"

namespace tarnwick::cli {

namespace {

void writeEvents(Output &out, const std::vector<PlayEvent> &events)
{
    JsonWriter &json = out.json();
    json.beginObject();
    json.key(u"events");
    json.beginArray();
    for (const PlayEvent &event : events) {
        json.beginObject();
        json.member(u"trackKey", event.trackKey);
        json.member(u"title", event.title);
        json.member(u"artist", event.artist);
        json.member(u"week", event.week);
        json.member(u"playedPath", event.playedPath);
        json.endObject();
        out.passOn();
    }
    json.endArray();
    json.endObject();
}

void printEvents(Output &out, const std::vector<PlayEvent> &events)
{
    TextTable table;
    for (const PlayEvent &event : events)
        table.addRow({event.week, event.artist, event.title});
    out.text(table.text());
    out.line(QStringLiteral("%1 plays").arg(events.size()));
}

} // namespace

Status runHistory(Session &session)
{
    const auto events = SeratoHistory::events([](const QString &) { return QString(); });
    if (session.wantsJson())
        writeEvents(session.out(), events);
    else
        printEvents(session.out(), events);
    return Status::Done;
}

} // namespace tarnwick::cli
