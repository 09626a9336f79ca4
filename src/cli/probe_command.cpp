#include "cli/probe_command.h"

#include "cli/session.h"
#include "platform/files.h"
#include "tags/serato_tags.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

void writePresence(JsonWriter &json, const std::optional<SeratoTags::Presence> &presence)
{
    json.key(u"presence");
    if (!presence) {
        json.null();
        return;
    }
    json.beginObject();
    json.member(u"hasMarkers", presence->hasMarkers);
    json.member(u"hasBeatGrid", presence->hasBeatGrid);
    json.member(u"hasGain", presence->hasGain);
    json.member(u"hasReplayGain", presence->hasReplayGain);
    json.member(u"autogain", presence->autogain);
    json.endObject();
}

QString yesOrNo(bool flag)
{
    return flag ? u"yes"_s : u"no"_s;
}

void printPresence(Output &out, const std::optional<SeratoTags::Presence> &presence)
{
    if (!presence) {
        out.line(u"no tag that can be read"_s);
        return;
    }
    out.line(u"cue points   "_s + yesOrNo(presence->hasMarkers));
    out.line(u"beat grid    "_s + yesOrNo(presence->hasBeatGrid));
    out.line(u"gain         "_s + yesOrNo(presence->hasGain));
    out.line(u"ReplayGain   "_s + yesOrNo(presence->hasReplayGain));
    if (presence->autogain)
        out.line(u"auto gain    %1 dB"_s.arg(*presence->autogain, 0, 'f', 2));
}

} // namespace

Status runProbe(Session &session)
{
    const QString file = platform::absolutePath(session.line().arguments.first());
    if (!platform::isRegularFile(file)) {
        Session::complain(u"no such file: "_s + file);
        return Status::WrongUsage;
    }
    const bool supported = SeratoTags::isSupported(file);
    const auto presence = SeratoTags::presence(file);
    if (!session.wantsJson()) {
        printPresence(session.out(), presence);
        return Status::Done;
    }
    JsonWriter &json = session.out().json();
    json.beginObject();
    json.member(u"supported", supported);
    writePresence(json, presence);
    json.endObject();
    return Status::Done;
}

} // namespace tarnwick::cli
