#include "song_plan.h"

#include "music_names.h"

#include <QSet>

#include <algorithm>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 lastDateAdded = 1'717'200'000; // 1 June 2024; fixed, so that a seed is for ever
constexpr int daysOfCollecting = 6 * 365;
constexpr qint64 secondsInDay = 86'400;
constexpr int songsOfAnArtist = 12;

struct Artist
{
    QString name;
    int genre = 0;
    bool spellsFreely = false; ///< the spelling of the genre differs from track to track
    QString spelling;
};

/// Draws from `make` until the name is new, letter case ignored; numbers it after some attempts.
template <typename Make>
QString newName(QSet<QString> &taken, Random &random, const QString &scope, Make make)
{
    QString name = make(random);
    for (int attempt = 2; taken.contains(scope + name.toLower()); ++attempt) {
        name = make(random);
        if (attempt > 8) {
            name += u' ' + QString::number(attempt);
        }
    }
    taken.insert(scope + name.toLower());
    return name;
}

QString spelling(int genre, Random &random)
{
    const auto spellings = genres()[static_cast<size_t>(genre)].spellings;
    return (random.permille(600) ? spellings.front() : random.pick(spellings)).toString();
}

QList<Artist> planArtists(int count, Random &random)
{
    QList<Artist> artists;
    QSet<QString> taken;
    while (artists.size() < count) {
        Artist artist;
        artist.name = newName(taken, random, {}, artistName);
        artist.genre = random.below(static_cast<int>(genres().size()));
        artist.spellsFreely = random.permille(150);
        artist.spelling = spelling(artist.genre, random);
        artists.append(artist);
    }
    return artists;
}

/// A few artists have much, many have little.
int artistOfNextSong(int artists, Random &random)
{
    return std::min(random.below(artists), random.below(artists));
}

QString tempo(const Genre &genre, Random &random)
{
    const int whole = random.between(genre.slowest, genre.fastest);
    const int form = random.below(100);
    if (form < 6) {
        return {};
    }
    if (form < 8) {
        return u"0"_s;
    }
    if (form < 30) {
        return QString::number(whole);
    }
    const QString decimals = form < 80 ? u"00"_s : twoDigits(random.below(100));
    return QString::number(whole) + u'.' + decimals;
}

QString length(Random &random)
{
    const int seconds = random.permille(6) ? random.between(3600, 7000) : random.between(120, 460);
    const QString ending = u':' + twoDigits(seconds % 60);
    if (seconds >= 3600) {
        return QString::number(seconds / 3600) + u':' + twoDigits(seconds / 60 % 60) + ending;
    }
    if (random.permille(300)) {
        return QString::number(seconds / 60) + ending;
    }
    const QString minutes = twoDigits(seconds / 60) + ending;
    return random.permille(850) ? minutes + u'.' + twoDigits(random.below(100)) : minutes;
}

int bitRate(Random &random)
{
    static constexpr int rates[] = {320, 320, 320, 320, 320, 320, 256, 256, 192, 128};
    return random.pick(rates);
}

/// What all versions of a song have in common.
TrackPlan planSong(const Artist &artist, Random &random)
{
    const Genre &genre = genres()[static_cast<size_t>(artist.genre)];
    TrackPlan song;
    song.artist = artist.name;
    song.genreIndex = artist.genre;
    song.genre = artist.spellsFreely ? spelling(artist.genre, random) : artist.spelling;
    song.album = random.permille(700) ? albumTitle(random) : QString();
    song.label = random.permille(300) ? labelName(random) : QString();
    song.composer = random.permille(150) ? personName(random) : QString();
    song.year = random.permille(850) ? QString::number(random.between(1978, 2024)) : QString();
    song.bpm = tempo(genre, random);
    song.key = random.permille(880) ? keyText(random) : QString();
    song.dateAdded = lastDateAdded - random.below(daysOfCollecting) * secondsInDay;
    return song;
}

void addVersion(TrackPlan &track, Random &random)
{
    track.length = length(random);
    track.kbps = bitRate(random);
    track.sampleRate = random.permille(60) ? 48000 : 44100;
    track.comment = random.permille(250) ? djComment(random) : QString();
    track.grouping = random.permille(80) ? u"Set %1"_s.arg(random.between(1, 9)) : QString();
    track.playCount = random.permille(450) ? random.below(random.between(1, 60)) : 0;
    track.dateAdded += random.below(static_cast<int>(secondsInDay));
    track.corrupt = random.permille(3);
}

int numberOfVersions(Random &random)
{
    const int draw = random.below(100);
    return draw < 72 ? 1 : draw < 90 ? 2 : draw < 97 ? 3 : 5;
}

/// Titles of a song's versions, no two alike; one song in two bears a suffix from the start.
QStringList versionTitles(const QString &song, int count, Random &random)
{
    QStringList titles{random.permille(550) ? song : song + versionSuffix(random)};
    while (titles.size() < count) {
        const QString title = song + versionSuffix(random);
        if (!titles.contains(title)) {
            titles.append(title);
        }
    }
    return titles;
}

} // namespace

QList<TrackPlan> planSongs(int count, Random random)
{
    QList<TrackPlan> tracks;
    QSet<QString> taken;
    const QList<Artist> artists = planArtists(count / songsOfAnArtist + 3, random);
    while (tracks.size() < count) {
        const int index = artistOfNextSong(static_cast<int>(artists.size()), random);
        TrackPlan song = planSong(artists[index], random);
        song.artistIndex = index;
        const QString scope = QString::number(index) + u'|';
        const QString name = newName(taken, random, scope, songTitle);
        for (const QString &title : versionTitles(name, numberOfVersions(random), random)) {
            TrackPlan track = song;
            track.title = title;
            addVersion(track, random);
            tracks.append(track);
        }
    }
    tracks.resize(count);
    return tracks;
}

} // namespace tarnwick::demo
