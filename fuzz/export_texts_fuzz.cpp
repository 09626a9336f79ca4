// The texts of an export: the collection is XML that reads back, and addresses lead back to paths.

#include "export/export_util.h"
#include "export/rekordbox_collection.h"
#include "fuzz_input.h"

#include <QUrl>
#include <QXmlStreamReader>

#include <optional>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

/// Characters that XML can't state go through as they are, which no reader takes.
bool isXml(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar each) {
        const char16_t unit = each.unicode();
        return unit >= 0x20 && unit < 0xFFFE;
    });
}

SeratoTrack trackFrom(Pieces &pieces)
{
    SeratoTrack track;
    for (QString *text :
         {&track.relativePath, &track.title, &track.artist, &track.album, &track.genre, &track.key,
          &track.fileType, &track.bpm, &track.lengthText, &track.bitrateText})
        *text = pieces.utf8();
    return track;
}

void checkPath(const QString &path)
{
    const QString url = ExportUtil::fileUrl(path);
    const QString host = u"file://localhost"_s;
    require(url.startsWith(host), "an address of this machine");
    const QByteArray encoded = url.sliced(host.size()).toUtf8();
    for (const char byte : encoded)
        require(byte > ' ' && byte < 0x7F && byte != '"' && byte != '<' && byte != '&', "in ASCII");
    require(QUrl::fromPercentEncoding(encoded) == path, "Qt reads the path");
    require(ExportUtil::withoutPercentEncoding(encoded) == path, "and so do we");
}

void checkAttributes(const QXmlStreamReader &xml, const SeratoTrack &track)
{
    const auto attributes = xml.attributes();
    require(attributes.value("Name"_L1) == track.displayTitle(), "the title");
    require(attributes.value("Artist"_L1) == track.displayArtist(), "the artist");
    require(attributes.value("Album"_L1) == track.album, "the album");
    require(attributes.value("Genre"_L1) == track.genre, "the genre");
    require(attributes.value("Tonality"_L1) == track.key, "the key");
    require(attributes.value("Kind"_L1) == QString(track.fileType.toUpper() + u" File"_s),
            "the type");
    const QByteArray location = attributes.value("Location"_L1).toUtf8().sliced(16);
    require(ExportUtil::withoutPercentEncoding(location) == track.absolutePath(), "the path");
}

void checkXml(QByteArrayView text, const SeratoTrack &track, const QString &playlist)
{
    QXmlStreamReader xml(text.toByteArray());
    int tracks = 0;
    bool hasPlaylist = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "TRACK"_L1 && tracks++ == 0)
            checkAttributes(xml, track);
        if (xml.name() == "NODE"_L1)
            hasPlaylist = hasPlaylist || xml.attributes().value("Name"_L1) == playlist;
    }
    require(!xml.hasError(), "it is XML");
    require(tracks == 2, "a track, and an entry");
    require(hasPlaylist, "the playlist");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Pieces pieces(viewOf(data, size));
    const SeratoTrack track = trackFrom(pieces);
    const QString playlist = pieces.utf8();
    checkPath(track.absolutePath());

    RekordboxCollection collection;
    collection.begin(1);
    collection.addTrack(track, 1);
    collection.beginPlaylists(1);
    collection.addPlaylist(playlist, {1});
    collection.end();
    const QStringList written = {track.title,    track.artist, track.album, track.genre,
                                 track.fileType, track.key,    playlist};
    // The type of a file goes through without entities: no library has one that would need them.
    const bool isPlainType = track.fileType == ExportUtil::xml(track.fileType);
    if (isPlainType && std::all_of(written.begin(), written.end(), isXml))
        checkXml(collection.text(), track, playlist);
    return 0;
}
