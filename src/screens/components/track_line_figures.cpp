#include "screens/components/track_line_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick::TrackLineText {

QString first(const SeratoTrack &track)
{
    const QString artist = track.displayArtist();
    const QString title = track.displayTitle();
    return artist.isEmpty() ? title : u"%1 — %2"_s.arg(artist, title);
}

QString second(const SeratoTrack &track)
{
    QStringList parts;
    if (track.bitrateKbps() >= 1)
        parts += u"%1kbps"_s.arg(track.bitrateKbps());
    if (track.hasBpm())
        parts += u"%1 BPM"_s.arg(track.bpm);
    if (track.hasKey())
        parts += track.key;
    parts += track.fileName();
    return parts.join(u" · "_s);
}

} // namespace tarnwick::TrackLineText
