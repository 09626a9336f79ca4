#include "fault_plan.h"

#include <algorithm>
#include <iterator>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr int fewestTracksWithFaults = 20;

struct Fault
{
    int permille;
    void (*happen)(TrackPlan &track, Random &random);
};

void move(TrackPlan &track, Random &)
{
    track.fate = Fate::Moved;
}

void lose(TrackPlan &track, Random &random)
{
    track.fate = Fate::Gone;
    track.fileBytes = static_cast<quint64>(random.between(2'500'000, 19'000'000));
}

void flagMissing(TrackPlan &track, Random &)
{
    track.fate = Fate::FlaggedMissing;
}

void becomeWav(TrackPlan &track, Random &)
{
    track.audio = AudioKind::Wav;
    track.kbps = 1411;
    track.sampleRate = 44100;
}

void becomeAiff(TrackPlan &track, Random &random)
{
    becomeWav(track, random);
    track.audio = AudioKind::Aiff;
}

void loseTag(TrackPlan &track, Random &)
{
    track.tag = TagPlan{.form = TagForm::None};
}

void putArtistIntoTitle(TrackPlan &track, Random &)
{
    track.title = track.artist + u" - "_s + track.title;
    track.artist.clear();
}

void loseArtist(TrackPlan &track, Random &)
{
    track.artist.clear();
}

void loseNames(TrackPlan &track, Random &)
{
    track.title.clear();
    track.artist.clear();
    track.album.clear();
}

void goOffLevel(TrackPlan &track, Random &random)
{
    track.tag.autotags = true;
    const int step = random.between(6000, 11000);
    track.tag.autogain += random.permille(500) ? step : -step;
}

/// Faults of which a track has one at most, so that each can be looked at by itself.
constexpr Fault exclusiveFaults[] = {
    {30, move},       {20, lose},       {6, flagMissing},         {30, becomeWav},
    {25, becomeAiff}, {15, loseTag},    {20, putArtistIntoTitle}, {8, loseArtist},
    {3, loseNames},   {15, goOffLevel},
};

void loseGenre(TrackPlan &track, Random &random)
{
    track.genre = random.permille(60) ? u" "_s : QString();
}

int share(qsizetype tracks, int permille)
{
    return std::max(1, static_cast<int>(tracks * permille / 1000));
}

/// Copies keep their files and names, so that their groups stay what they were planned to be.
QList<qsizetype> shuffledTracks(const QList<TrackPlan> &tracks, bool copies, Random &random)
{
    QList<qsizetype> indexes;
    for (qsizetype i = 0; i < tracks.size(); ++i) {
        if (tracks[i].hasCopies == copies) {
            indexes.append(i);
        }
    }
    random.shuffle(indexes);
    return indexes;
}

void addExclusiveFaults(QList<TrackPlan> &tracks, Random &random)
{
    const QList<qsizetype> deck = shuffledTracks(tracks, false, random);
    auto card = deck.begin();
    for (const Fault &fault : exclusiveFaults) {
        for (int i = share(tracks.size(), fault.permille); i > 0 && card != deck.end(); --i) {
            fault.happen(tracks[*card++], random);
        }
    }
}

/// In a large library, a copy's file is lost now and then too.
void loseSomeCopies(QList<TrackPlan> &tracks, Random &random)
{
    const QList<qsizetype> copies = shuffledTracks(tracks, true, random);
    const qsizetype lost = copies.size() / 25;
    for (qsizetype i = 0; i < lost; ++i) {
        lose(tracks[copies[i]], random);
    }
}

void loseSomeGenres(QList<TrackPlan> &tracks, Random &random)
{
    constexpr int genrePermille = 160;
    QList<qsizetype> deck = shuffledTracks(tracks, false, random);
    deck.resize(std::min<qsizetype>(deck.size(), share(tracks.size(), genrePermille)));
    for (const qsizetype index : std::as_const(deck)) {
        loseGenre(tracks[index], random);
    }
}

} // namespace

void addFaults(QList<TrackPlan> &tracks, Random random)
{
    if (tracks.size() < fewestTracksWithFaults) {
        return;
    }
    addExclusiveFaults(tracks, random);
    loseSomeCopies(tracks, random);
    loseSomeGenres(tracks, random);
}

} // namespace tarnwick::demo
