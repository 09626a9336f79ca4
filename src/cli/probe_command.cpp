#include "cli/probe_command.h"

#include "cli/session.h"
#include "cli/text_table.h"
#include "platform/files.h"
#include "tags/serato_geob.h"
#include "tags/serato_tags.h"

#include <QCryptographicHash>

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

QString sha256(const QByteArray &bytes)
{
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex());
}

void writeFrame(JsonWriter &json, const SeratoGEOB::Frame &frame)
{
    json.beginObject();
    json.member(u"id", frame.id);
    json.key(u"flags");
    json.beginArray();
    for (const quint8 flag : frame.flags)
        json.value(int(flag));
    json.endArray();
    json.member(u"size", qint64(frame.payload.size()));
    json.member(u"descriptor", frame.geobDescriptor());
    json.member(u"sha256", sha256(frame.payload));
    json.endObject();
}

void writeTag(JsonWriter &json, const std::optional<SeratoGEOB::Tag> &tag)
{
    json.key(u"tag");
    if (!tag) {
        json.null();
        return;
    }
    json.beginObject();
    json.member(u"major", int(tag->major));
    json.member(u"audioBytes", qint64(tag->audio.size()));
    json.member(u"audioSha256", sha256(tag->audio));
    json.key(u"frames");
    json.beginArray();
    for (const SeratoGEOB::Frame &frame : tag->frames)
        writeFrame(json, frame);
    json.endArray();
    json.endObject();
}

std::optional<SeratoGEOB::Tag> tagOf(const QString &file)
{
    auto bytes = platform::readFile(file);
    return bytes ? SeratoGEOB::readTag(std::move(*bytes)) : std::nullopt;
}

void printTag(Output &out, const std::optional<SeratoGEOB::Tag> &tag)
{
    if (!tag) {
        out.line(u"no tag that can be edited"_s);
        return;
    }
    out.line(u"ID3v2.%1 tag, %2 bytes of audio"_s.arg(tag->major).arg(tag->audio.size()));
    TextTable table;
    table.alignRight(2);
    for (const SeratoGEOB::Frame &frame : tag->frames)
        table.addRow({u" "_s, frame.id, QString::number(frame.payload.size()),
                      frame.geobDescriptor().value_or(QString())});
    out.text(table.text());
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
        printTag(session.out(), tagOf(file));
        return Status::Done;
    }
    JsonWriter &json = session.out().json();
    json.beginObject();
    json.member(u"supported", supported);
    writePresence(json, presence);
    writeTag(json, tagOf(file));
    json.endObject();
    return Status::Done;
}

} // namespace tarnwick::cli
