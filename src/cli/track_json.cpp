#include "cli/track_json.h"

namespace tarnwick::cli {

namespace {

struct TextField
{
    QStringView name;
    QString SeratoTrack::*field;
};

constexpr TextField textFields[] = {
    {u"fileType", &SeratoTrack::fileType},
    {u"relativePath", &SeratoTrack::relativePath},
    {u"title", &SeratoTrack::title},
    {u"artist", &SeratoTrack::artist},
    {u"album", &SeratoTrack::album},
    {u"genre", &SeratoTrack::genre},
    {u"composer", &SeratoTrack::composer},
    {u"comment", &SeratoTrack::comment},
    {u"year", &SeratoTrack::year},
    {u"bpm", &SeratoTrack::bpm},
    {u"key", &SeratoTrack::key},
    {u"lengthText", &SeratoTrack::lengthText},
    {u"bitrateText", &SeratoTrack::bitrateText},
    {u"sampleRateText", &SeratoTrack::sampleRateText},
    {u"sizeText", &SeratoTrack::sizeText},
    {u"dateAddedText", &SeratoTrack::dateAddedText},
};

void writeDatabaseFields(JsonWriter &json, const SeratoTrack &track)
{
    for (const TextField &text : textFields)
        json.member(text.name, track.*text.field);
    json.member(u"fileSizeBytes", track.fileSizeBytes);
    json.member(u"dateAdded", track.dateAdded);
    json.member(u"playCount", track.playCount);
    json.member(u"flaggedMissing", track.flaggedMissing);
    json.member(u"corrupt", track.corrupt);
    json.member(u"isPlayed", track.isPlayed);
}

void writeComputedFields(JsonWriter &json, const SeratoTrack &track)
{
    json.member(u"absolutePath", track.absolutePath());
    json.member(u"fileName", track.fileName());
    json.member(u"displayArtist", track.displayArtist());
    json.member(u"displayTitle", track.displayTitle());
    json.member(u"hasTitle", track.hasTitle());
    json.member(u"hasArtist", track.hasArtist());
    json.member(u"hasGenre", track.hasGenre());
    json.member(u"hasKey", track.hasKey());
    json.member(u"hasBPM", track.hasBpm());
    json.member(u"bitrateKbps", track.bitrateKbps());
}

} // namespace

void writeTrack(JsonWriter &json, const ScannedTrack &scanned)
{
    json.beginObject();
    writeDatabaseFields(json, scanned.track);
    json.member(u"existsOnDisk", scanned.existsOnDisk);
    json.member(u"onDiskSizeBytes", scanned.onDiskSizeBytes);
    json.member(u"hasMarkers", scanned.hasMarkers);
    json.member(u"hasBeatGrid", scanned.hasBeatGrid);
    json.member(u"hasGain", scanned.hasGain);
    json.member(u"hasReplayGain", scanned.hasReplayGain);
    json.member(u"autogain", scanned.autogain);
    json.member(u"tagsRead", scanned.tagsRead);
    writeComputedFields(json, scanned.track);
    json.member(u"isMissing", scanned.isMissing());
    json.endObject();
}

} // namespace tarnwick::cli
