#pragma once

#include "export/export_library.h"

/// A library with one of each: what every exporter is shown to readers other than ourselves.
namespace tarnwick::testing {

/// As long as a file's name may be, in UTF-8: 255 bytes.
inline QString longestName()
{
    return QStringLiteral("é").repeated(125) + QStringLiteral("x.mp3");
}

inline std::vector<ScannedTrack> smallLibrary()
{
    using namespace Qt::StringLiterals;
    ScannedTrack full = onDisk(u"Users/x/Music/Sol & Luna.mp3"_s, u"Ana \"Ñ\""_s, u"Sol & Luna"_s);
    full.track.album = u"It's <on>"_s;
    full.track.genre = u"Drum & Bass"_s;
    full.track.fileType = u"mp3"_s;
    full.track.lengthText = u"04:23"_s;
    full.track.bpm = u"174.5"_s;
    full.track.key = u"F#m"_s;
    full.track.bitrateText = u"320.0kbps"_s;

    ScannedTrack split = onDisk(u"/Volumes/USB/a+b 100%.wav"_s, u""_s, u"Ben - Night - Drive"_s);
    split.track.fileType = u"wav"_s;
    split.track.lengthText = u"1:00:00.5"_s;
    split.track.bpm = u"fast"_s;

    return {
        full,
        missing(u"Users/x/Music/gone.mp3"_s),
        split,
        onDisk(u"Users/x/Music/line\nbreak.mp3"_s, u"O'Brien"_s, u"two\nlines"_s),
        onDisk(u"Users/x/Music/🎧 mix.mp3"_s, u"DJ 🎧"_s, u"漢字"_s),
        onDisk(u"Users/x/Music/"_s + longestName(), u"Longest"_s, longestName()),
        onDisk(u"Users/x/Music/twice.mp3"_s, u"Twice"_s, u"earlier"_s),
        onDisk(u"/Users/x/Music/twice.mp3"_s, u"Twice"_s, u"later"_s),
    };
}

inline QList<LoadedCrate> smallCrates()
{
    using namespace Qt::StringLiterals;
    return {
        crate(u"Don't \"stop\" & <go> 🎧"_s,
              {u"Users/x/Music/twice.mp3"_s, u"Users/x/Music/gone.mp3"_s,
               u"Users/x/Music/Sol & Luna.mp3"_s, u"Users/x/Music/twice.mp3"_s}),
        crate(u"Empty"_s, {}),
        crate(u"Gone"_s, {u"Users/x/Music/gone.mp3"_s, u"nowhere.mp3"_s}),
        crate(u"Warm up"_s, {u"Volumes/USB/a+b 100%.wav"_s}),
    };
}

} // namespace tarnwick::testing
