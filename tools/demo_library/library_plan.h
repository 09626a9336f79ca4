#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace tarnwick::demo {

// The whole library as values, before a byte of it is written. Paths are absolute without their
// leading slash, as the database states them.

enum class AudioKind { Mp3, Wav, Aiff };
enum class TagForm { None, V23, V24 };
enum class ReplayGain { None, UpperCase, LowerCase, MixedCase };

enum class Fate {
    InPlace,
    FlaggedMissing, ///< the file is there, yet Serato's flag says it isn't
    Moved,          ///< the file lies at `movedTo`, under its old name
    Gone,
};

/// What the ID3v2 tag of a file holds besides the text frames.
struct TagPlan
{
    TagForm form = TagForm::V23;
    bool markers2 = false;
    bool olderMarkers = false; ///< "Serato Markers_", which stands for nothing by itself
    bool beatGrid = false;
    bool autotags = false;
    bool overview = false; ///< the waveform picture, about 4 KB
    int autogain = 0;      ///< thousandths of a decibel
    ReplayGain replayGain = ReplayGain::None;
    int artworkWidth = 0; ///< pixels; 0: no artwork
    int padding = 0;      ///< bytes of padding at the end of the tag
    int paddedSize = 0;   ///< instead: pad a smaller tag up to this many bytes, its header included
};

struct TrackPlan
{
    QString path;
    QString movedTo;
    Fate fate = Fate::InPlace;
    AudioKind audio = AudioKind::Mp3;
    TagPlan tag;
    int mpegFrames = 4;
    int sampleRate = 44100;
    quint64 fileBytes = 0; ///< size of the file once written; of a gone file what it once was
    quint32 grownBy = 0;   ///< bytes that a later edit of the tag added, unknown to the database

    QString title;
    QString artist;
    QString album;
    QString genre;
    QString composer;
    QString comment;
    QString grouping;
    QString label;
    QString year;
    QString bpm;
    QString key;
    QString length;
    int kbps = 320;
    qint64 dateAdded = 0; ///< seconds since 1970
    int playCount = 0;
    bool corrupt = false;

    int artistIndex = 0;
    int genreIndex = 0;
    bool hasCopies = false; ///< one of several copies of the same recording

    bool existsOnDisk() const { return fate == Fate::InPlace || fate == Fate::FlaggedMissing; }
    bool isMissing() const { return fate != Fate::InPlace; }
    bool tagReadable() const
    {
        return existsOnDisk() && audio == AudioKind::Mp3 && tag.form != TagForm::None;
    }
};

struct CratePlan
{
    QString name;
    QStringList paths;
};

struct PlayPlan
{
    QString path; ///< with its leading slash
    QString title;
    QString artist;
    QString genre;
    QString bpm;
    QString key;
    qint64 startedAt = 0; ///< seconds since 1970
    int seconds = 0;
    int deck = 1;
};

struct SessionPlan
{
    int number = 0;
    QList<PlayPlan> plays;
};

struct LibraryPlan
{
    QList<TrackPlan> tracks; ///< in the order of the database
    QList<CratePlan> crates;
    QList<SessionPlan> sessions;
};

enum class TagSizes { AsInLife, Small };

struct LibraryWish
{
    int tracks = 0;
    quint64 seed = 0;
    QString home; ///< absolute
    QDate today;  ///< the day of the last possible session
    TagSizes tagSizes = TagSizes::AsInLife;
};

LibraryPlan planLibrary(const LibraryWish &wish);

} // namespace tarnwick::demo
