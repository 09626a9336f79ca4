// The commands that talk to a community's Signal server, and those that prepare it.

#include "cli/signal_subcommands.h"

#include "cli/session.h"
#include "cli/text_table.h"
#include "foundation/numbers.h"
#include "screens/signal/signal_figures.h"
#include "signal/lanes.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

const QString on = u"on"_s;
const QString off = u"off"_s;
const QString defaultWindow = QString::number(SignalFigures::firstWindow);

std::optional<int> daysIn(const QString &text)
{
    const auto days = parseWhole(text);
    if (!days || *days < std::numeric_limits<int>::min() || *days > std::numeric_limits<int>::max())
        return std::nullopt;
    return int(*days);
}

std::optional<QString> optionOf(const CommandLine &line, const QString &name)
{
    return line.has(name) ? std::optional(line.value(name)) : std::nullopt;
}

void writeTexts(JsonWriter &json, QStringView name, const QStringList &texts)
{
    json.key(name);
    json.beginArray();
    for (const QString &text : texts)
        json.value(text);
    json.endArray();
}

void writeSorted(JsonWriter &json, QStringView name, const QSet<QString> &texts)
{
    QStringList sorted(texts.begin(), texts.end());
    sorted.sort();
    writeTexts(json, name, sorted);
}

void writeLanes(Output &out, const AppState &app)
{
    const QHash<QString, QString> map = laneMapOf(app.result()->tracks);
    QStringList paths = map.keys();
    paths.sort();
    JsonWriter &json = out.json();
    json.beginObject();
    writeTexts(json, u"lanes", app.lanes());
    json.key(u"laneMap");
    json.beginObject();
    for (const QString &path : paths) {
        json.member(path, map.value(path));
        out.passOn();
    }
    json.endObject();
    writeSorted(json, u"ownedKeys", app.ownedKeys());
    writeSorted(json, u"playedKeys", app.playedKeys());
    json.endObject();
}

void writeConfig(JsonWriter &json, const SignalConfig &config)
{
    json.key(u"signal");
    json.beginObject();
    json.member(u"serverURL", config.serverUrl);
    json.member(u"djHash", config.djHash);
    json.member(u"city", config.city);
    json.member(u"optIn", config.optIn);
    json.member(u"apiKey", config.apiKey);
    json.endObject();
}

void printConfig(Output &out, const SignalConfig &config)
{
    TextTable table;
    table.addRow({u"server"_s, config.serverUrl});
    table.addRow({u"access key"_s, config.apiKey.isEmpty() ? u"none"_s : u"set"_s});
    table.addRow({u"city"_s, config.city});
    table.addRow({u"sharing"_s, config.optIn ? on : off});
    table.addRow({u"DJ id"_s, config.djHash});
    out.text(table.text());
}

void writeRow(JsonWriter &json, const LandingTrack &track)
{
    json.beginObject();
    json.member(u"track_key", track.trackKey);
    json.member(u"title", track.title);
    json.member(u"artist", track.artist);
    json.member(u"djs", track.djs);
    json.member(u"plays", track.plays);
    json.member(u"lanes", track.lanes);
    json.endObject();
}

void writeStats(JsonWriter &json, const std::optional<SignalClient::PoolStats> &stats)
{
    json.key(u"poolStats");
    if (!stats) {
        json.null();
        return;
    }
    json.beginObject();
    json.member(u"djs", stats->djs);
    json.member(u"plays", stats->plays);
    json.member(u"tracks", stats->tracks);
    json.endObject();
}

void writeLanding(Session &session)
{
    const AppState &app = session.app();
    JsonWriter &json = session.out().json();
    json.beginObject();
    session.writeToasts(json);
    json.key(u"landing");
    json.beginArray();
    for (const LandingTrack &track : app.landing()) {
        writeRow(json, track);
        session.out().passOn();
    }
    json.endArray();
    writeStats(json, app.poolStats());
    json.member(u"error", app.landingError());
    json.endObject();
}

void printLanding(Output &out, const AppState &app)
{
    TextTable table;
    table.alignRight(0);
    table.alignRight(1);
    table.alignRight(2);
    for (qsizetype i = 0; i < app.landing().size(); ++i) {
        const LandingTrack &track = app.landing().at(i);
        table.addRow({QString::number(i + 1), SignalFigures::djs(track),
                      SignalFigures::plays(track), SignalFigures::line(track)});
    }
    out.text(table.text());
    if (const auto &stats = app.poolStats())
        out.line(SignalFigures::pool(*stats));
}

/// Ends a command that has one member more to tell than its toasts.
template <typename WriteMember>
Status reportWith(Session &session, WriteMember writeMember)
{
    session.waitForBackground();
    const Status status = session.statusOfToasts();
    if (session.wantsJson()) {
        JsonWriter &json = session.out().json();
        json.beginObject();
        session.writeToasts(json);
        writeMember(json);
        json.endObject();
    }
    if (!session.wantsJson() || status != Status::Done)
        session.printToasts(status);
    return status;
}

} // namespace

Done checkSignalSet(const CommandLine &line)
{
    const QString given = line.value(u"opt-in"_s, on);
    if (given != on && given != off)
        return failure(u"'--opt-in' is on or off, not '%1'"_s.arg(given));
    return {};
}

Done checkSignalLanding(const CommandLine &line)
{
    const QString given = line.value(u"window"_s, defaultWindow);
    if (!daysIn(given))
        return failure(u"'--window' is a number of days, not '%1'"_s.arg(given));
    return {};
}

Status runSignalLanes(Session &session)
{
    if (session.wantsJson()) {
        writeLanes(session.out(), session.app());
    } else {
        for (const QString &lane : session.app().lanes())
            session.out().line(lane);
    }
    return Status::Done;
}

Status runSignalSet(Session &session)
{
    const CommandLine &line = session.line();
    SignalConfig config = session.app().signal();
    config.serverUrl = line.value(u"server"_s, config.serverUrl);
    config.apiKey = line.value(u"key"_s, config.apiKey);
    config.city = line.value(u"city"_s, config.city);
    if (line.has(u"opt-in"_s))
        config.optIn = line.value(u"opt-in"_s) == on;
    session.app().setSignal(config);
    session.app().saveSignal();
    if (!session.wantsJson())
        printConfig(session.out(), config);
    return reportWith(session, [&](JsonWriter &json) { writeConfig(json, config); });
}

Status runSignalLanding(Session &session)
{
    const CommandLine &line = session.line();
    AppState &app = session.app();
    app.refreshLanding(*daysIn(line.value(u"window"_s, defaultWindow)), optionOf(line, u"lane"_s),
                       optionOf(line, u"city"_s));
    session.waitForBackground();
    if (session.wantsJson())
        writeLanding(session);
    else if (!app.landingError())
        printLanding(session.out(), app);
    if (!app.landingError())
        return Status::Done;
    Session::complain(*app.landingError());
    return Status::Refused;
}

Status runSignalContribute(Session &session)
{
    session.app().contributePlays();
    return reportWith(session,
                      [&](JsonWriter &json) { json.member(u"youFeed", session.app().youFeed()); });
}

Status runSignalLeave(Session &session)
{
    session.app().leaveSignal();
    return session.reportToasts();
}

} // namespace tarnwick::cli
