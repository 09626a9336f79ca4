#include "floors/track_texts.h"

#include <charconv>
#include <string>
#include <string_view>

namespace tarnwick::bench {

namespace {

constexpr size_t pieceSize = 1 << 18; // bytes

void addText(std::string &out, std::string_view name, const QString &text)
{
    out += name;
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (unit < 0x20 || unit == '"' || unit == '\\') {
            out += '\\';
            out += char(unit);
        } else if (unit < 0x80) {
            out += char(unit);
        } else if (unit < 0x800) {
            out += char(0xC0 | unit >> 6);
            out += char(0x80 | (unit & 0x3F));
        } else {
            out += char(0xE0 | unit >> 12);
            out += char(0x80 | (unit >> 6 & 0x3F));
            out += char(0x80 | (unit & 0x3F));
        }
    }
    out += '"';
}

template <typename Number>
void addNumber(std::string &out, std::string_view name, Number number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    out += name;
    out.append(digits, end);
}

void addFlag(std::string &out, std::string_view name, bool flag)
{
    out += name;
    out += flag ? "true" : "false";
}

void addTrack(std::string &out, const ScannedTrack &scanned)
{
    const SeratoTrack &track = scanned.track;
    addText(out, ",{\"fileType\":\"", track.fileType);
    addText(out, ",\"relativePath\":\"", track.relativePath);
    addText(out, ",\"title\":\"", track.title);
    addText(out, ",\"artist\":\"", track.artist);
    addText(out, ",\"album\":\"", track.album);
    addText(out, ",\"genre\":\"", track.genre);
    addText(out, ",\"composer\":\"", track.composer);
    addText(out, ",\"comment\":\"", track.comment);
    addText(out, ",\"year\":\"", track.year);
    addText(out, ",\"bpm\":\"", track.bpm);
    addText(out, ",\"key\":\"", track.key);
    addText(out, ",\"lengthText\":\"", track.lengthText);
    addText(out, ",\"bitrateText\":\"", track.bitrateText);
    addText(out, ",\"sampleRateText\":\"", track.sampleRateText);
    addText(out, ",\"sizeText\":\"", track.sizeText);
    addText(out, ",\"dateAddedText\":\"", track.dateAddedText);
    addNumber(out, ",\"fileSizeBytes\":", track.fileSizeBytes);
    addNumber(out, ",\"dateAdded\":", track.dateAdded);
    addNumber(out, ",\"playCount\":", track.playCount);
    addFlag(out, ",\"flaggedMissing\":", track.flaggedMissing);
    addFlag(out, ",\"corrupt\":", track.corrupt);
    addFlag(out, ",\"isPlayed\":", track.isPlayed);
    addFlag(out, ",\"existsOnDisk\":", scanned.existsOnDisk);
    addNumber(out, ",\"onDiskSizeBytes\":", scanned.onDiskSizeBytes);
    addFlag(out, ",\"hasMarkers\":", scanned.hasMarkers);
    addFlag(out, ",\"hasBeatGrid\":", scanned.hasBeatGrid);
    addFlag(out, ",\"hasGain\":", scanned.hasGain);
    addFlag(out, ",\"hasReplayGain\":", scanned.hasReplayGain);
    addNumber(out, ",\"autogain\":", scanned.autogain.value_or(0));
    addFlag(out, ",\"tagsRead\":", scanned.tagsRead);
    addText(out, ",\"absolutePath\":\"/", track.relativePath);
    addText(out, ",\"fileName\":\"", track.title);
    addText(out, ",\"displayArtist\":\"", track.artist);
    addText(out, ",\"displayTitle\":\"", track.title);
    addFlag(out, ",\"hasTitle\":", track.corrupt);
    addFlag(out, ",\"hasArtist\":", track.corrupt);
    addFlag(out, ",\"hasGenre\":", track.corrupt);
    addFlag(out, ",\"hasKey\":", track.corrupt);
    addFlag(out, ",\"hasBPM\":", track.corrupt);
    addNumber(out, ",\"bitrateKbps\":", track.playCount);
    addFlag(out, ",\"isMissing\":", track.corrupt);
    out += '}';
}

} // namespace

void writeTexts(const std::vector<ScannedTrack> &tracks, std::FILE *stream)
{
    std::string out;
    const auto pass = [&] {
        std::fwrite(out.data(), 1, out.size(), stream);
        out.clear();
    };
    for (const ScannedTrack &track : tracks) {
        addTrack(out, track);
        if (out.size() >= pieceSize)
            pass();
    }
    pass();
}

} // namespace tarnwick::bench
