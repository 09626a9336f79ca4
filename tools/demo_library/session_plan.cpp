#include "session_plan.h"

#include "music_names.h"
#include "path_plan.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>
#include <numeric>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr int daysOfHistory = 150;
constexpr int firstSessionNumber = 4201;
constexpr qint64 secondsInHour = 3600;

PlayPlan playOf(const TrackPlan &track)
{
    PlayPlan play;
    play.path = u'/' + track.path;
    play.title = track.title;
    play.artist = track.artist;
    play.genre = track.genre;
    play.bpm = track.bpm;
    play.key = track.key;
    return play;
}

/// A track that was lent for one night and never stayed.
PlayPlan playOfStranger(const QString &home, Random &random)
{
    PlayPlan play;
    play.title = songTitle(random);
    play.artist = artistName(random);
    play.path = u"%1/Music/Guests/%2 - %3.mp3"_s.arg(home, play.artist, play.title);
    return play;
}

/// Half of all plays come from the favourites, the first tenth of a shuffled library.
qsizetype playedTrack(const QList<qsizetype> &shuffled, Random &random)
{
    const int all = static_cast<int>(shuffled.size());
    const int favourites = std::max(1, all / 10);
    return shuffled[random.below(random.permille(500) ? favourites : all)];
}

PlayPlan nextPlay(QList<TrackPlan> &tracks, const QList<qsizetype> &shuffled, const QString &home,
                  Random &random)
{
    if (random.permille(20)) {
        return playOfStranger(home, random);
    }
    TrackPlan &track = tracks[playedTrack(shuffled, random)];
    ++track.playCount;
    PlayPlan play = playOf(track);
    if (random.permille(10)) {
        play.title.clear();
    }
    return play;
}

QList<qsizetype> shuffledIndexes(qsizetype count, Random &random)
{
    QList<qsizetype> indexes(count);
    std::iota(indexes.begin(), indexes.end(), 0);
    random.shuffle(indexes);
    return indexes;
}

/// One after another, with no pause.
void addTimes(QList<PlayPlan> &plays, qint64 start, Random &random)
{
    int deck = 1;
    for (PlayPlan &play : plays) {
        play.startedAt = start;
        play.seconds = random.between(80, 400);
        play.deck = deck;
        start += play.seconds;
        deck = 3 - deck;
    }
}

} // namespace

QList<SessionPlan> planSessions(QList<TrackPlan> &tracks, const QString &home, QDate today,
                                Random random)
{
    QList<SessionPlan> sessions;
    if (tracks.isEmpty()) {
        return sessions;
    }
    const QList<qsizetype> shuffled = shuffledIndexes(tracks.size(), random);
    const int count = static_cast<int>(std::clamp<qsizetype>(tracks.size() / 8, 4, 36));
    const qint64 midnight = QDateTime(today, QTime(0, 0), QTimeZone::utc()).toSecsSinceEpoch();
    for (int i = 0; i < count; ++i) {
        const int daysAgo = 1 + (count - 1 - i) * daysOfHistory / count;
        const qint64 hours = random.between(18, 22) - daysAgo * 24;
        SessionPlan session{firstSessionNumber + i * 3, {}};
        for (int plays = random.between(9, 27); plays > 0; --plays) {
            session.plays.append(nextPlay(tracks, shuffled, home, random));
        }
        addTimes(session.plays, midnight + hours * secondsInHour, random);
        sessions.append(session);
    }
    return sessions;
}

} // namespace tarnwick::demo
