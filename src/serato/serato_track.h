#pragma once

#include "foundation/identity.h"

#include <QString>
#include <QUrl>
#include <QUuid>

namespace tarnwick {

/// One track as `database V2` states it, with no look at the disk. Texts are kept raw: nothing is
/// parsed at read time. A change to a copy reaches the file only through the database document.
struct SeratoTrack
{
    QUuid id = freshIdentity(); ///< identity in this process only; a new scan gives new ones
    QString fileType;
    QString relativePath; ///< path of the audio file, normally without a leading slash
    QString title;
    QString artist;
    QString album;
    QString genre;
    QString composer;
    QString comment;
    QString year;
    QString bpm; ///< beats a minute, as text
    QString key;
    QString lengthText;
    QString bitrateText;
    QString sampleRateText;
    QString sizeText;
    QString dateAddedText;
    quint64 fileSizeBytes = 0;
    quint64 dateAdded = 0;
    quint64 playCount = 0;
    bool flaggedMissing = false; ///< Serato's own missing flag
    bool corrupt = false;
    bool isPlayed = false;

    /// The path from the root of the file system, whatever volume the library lies on.
    QString absolutePath() const;
    QUrl fileUrl() const;
    QString fileName() const;

    /// The artist; where that is empty, the part of the title ahead of the first " - ".
    QString displayArtist() const;
    /// The title; where the artist is empty, the part behind the first " - ".
    QString displayTitle() const;

    bool hasTitle() const;
    bool hasArtist() const;
    bool hasGenre() const;
    bool hasKey() const;
    /// A test of the text alone: anything that is not blank and not exactly "0".
    bool hasBpm() const;

    /// Kilobits a second, from the leading number of `bitrateText`; 0 without one.
    int bitrateKbps() const;

    bool operator==(const SeratoTrack &) const = default;
};

} // namespace tarnwick
