#include "support/generated_library.h"

#include <QStringList>

#include <random>

using namespace Qt::StringLiterals;

namespace tarnwick::bench {

namespace {

const QStringList words = {
    u"Midnight"_s,  u"Love"_s,     u"Fire"_s,     u"Dancing"_s, u"Golden"_s,  u"Shadow"_s,
    u"Summer"_s,    u"Electric"_s, u"Heart"_s,    u"River"_s,   u"City"_s,    u"Dream"_s,
    u"Velvet"_s,    u"Thunder"_s,  u"Paradise"_s, u"Tonight"_s, u"Forever"_s, u"Gravity"_s,
    u"Satellite"_s, u"Rhythm"_s,   u"Horizon"_s,  u"Silence"_s, u"Ocean"_s,   u"Neon"_s,
    u"Diamond"_s,   u"Echo"_s,     u"Voyage"_s,   u"Crystal"_s, u"Morning"_s, u"Wild"_s,
    u"Sugar"_s,     u"Machine"_s};
const QStringList foreignWords = {u"Élan"_s, u"Größe"_s, u"Señorita"_s, u"Ångström"_s, u"Ночь"_s};
const QStringList cuts = {u" (Radio Edit)"_s,   u" (Extended Mix)"_s, u" - Club Mix"_s,
                          u" [Remix]"_s,        u" (Clean)"_s,        u" - Original Mix"_s,
                          u" (Instrumental)"_s, u" (Live)"_s};
const QStringList genres = {u"House"_s,  u"Techno"_s,      u"Hip-Hop"_s, u"Pop"_s,
                            u"Disco"_s,  u"Drum & Bass"_s, u"Soul"_s,    u"Funk"_s,
                            u"Trance"_s, u"Reggaeton"_s,   u"R&B"_s,     u"Dubstep"_s,
                            u"house"_s,  u"Afrobeats"_s};
const QStringList keys = {u"Am"_s, u"C"_s, u"F#m"_s, u"Bb"_s, u"Dm"_s, u"G"_s};
const QStringList bitrates = {u"320.0kbps"_s, u"256.0kbps"_s, u"192.0kbps"_s, u"128.0kbps"_s};

class Generator
{
public:
    explicit Generator(int trackCount)
        : m_artistCount(std::max(1, trackCount / 12))
    {
        for (int i = 0; i < m_artistCount; ++i)
            m_artists << phrase() + u' ' + QString::number(i % 997);
        for (int bpm = 80; bpm < 180; ++bpm)
            m_tempos << u"%1.00"_s.arg(bpm);
    }

    ScannedTrack next(const std::vector<ScannedTrack> &drawn)
    {
        ScannedTrack scanned;
        SeratoTrack &track = scanned.track;
        const int artist = below(m_artistCount);
        if (!drawn.empty() && oneIn(25)) {
            const SeratoTrack &original = drawn[size_t(below(int(drawn.size())))].track;
            track.artist = original.artist;
            track.title = oneIn(2) ? original.title.toUpper() : original.title + u' ';
        } else {
            track.artist = m_artists.at(artist);
            track.title = phrase();
            if (oneIn(4))
                track.title += oneOf(cuts);
        }
        fillTags(track, artist);
        fillScan(scanned);
        track.relativePath = u"Users/dj/Music/%1/%2 %3.mp3"_s.arg(
            track.artist, QString::number(drawn.size()), track.title);
        return scanned;
    }

private:
    int below(int bound) { return int(m_random() % unsigned(bound)); }
    bool oneIn(int chances) { return below(chances) == 0; }
    QString oneOf(const QStringList &texts) { return texts.at(below(int(texts.size()))); }

    QString phrase()
    {
        const QString last = oneIn(30) ? oneOf(foreignWords) : oneOf(words);
        return oneOf(words) + u' ' + (oneIn(2) ? oneOf(words) + u' ' : QString()) + last;
    }

    void fillTags(SeratoTrack &track, int artist)
    {
        if (!oneIn(7))
            track.genre = oneIn(6) ? oneOf(genres) : genres.at(artist % genres.size());
        if (!oneIn(4))
            track.key = oneOf(keys);
        if (!oneIn(10))
            track.bpm = oneOf(m_tempos);
        track.album = oneOf(words);
        track.bitrateText = oneOf(bitrates);
        track.lengthText = u"%1:%2"_s.arg(below(8) + 1).arg(below(60), 2, 10, QChar(u'0'));
        track.playCount = oneIn(3) ? quint64(below(50)) : 0;
        track.fileSizeBytes = quint64(3'000'000 + below(12'000'000));
    }

    void fillScan(ScannedTrack &scanned)
    {
        scanned.existsOnDisk = !oneIn(20);
        scanned.onDiskSizeBytes = scanned.track.fileSizeBytes;
        scanned.tagsRead = scanned.existsOnDisk && !oneIn(6);
        scanned.hasMarkers = scanned.tagsRead && oneIn(2);
        scanned.hasBeatGrid = scanned.tagsRead && !oneIn(3);
        scanned.hasGain = scanned.tagsRead && !oneIn(4);
        if (scanned.hasGain)
            scanned.autogain = below(120) * 0.1 - 8.0;
    }

    std::mt19937 m_random{20'240'117};
    int m_artistCount;
    QStringList m_artists;
    QStringList m_tempos;
};

} // namespace

std::shared_ptr<const ScanResult> generatedLibrary(int trackCount)
{
    auto result = std::make_shared<ScanResult>();
    result->tracks.reserve(size_t(trackCount));
    Generator generator(trackCount);
    for (int i = 0; i < trackCount; ++i)
        result->tracks.push_back(generator.next(result->tracks));
    return result;
}

QList<LoadedCrate> generatedCrates(const ScanResult &library, int crateCount, int pathCount)
{
    std::mt19937 random(4'711);
    const auto pathOf = [&](size_t place) {
        // A copy of its own, as a crate file gives it.
        const QString &path = library.tracks[place % library.tracks.size()].track.relativePath;
        return QString(path.constData(), path.size());
    };
    QList<LoadedCrate> crates;
    for (int i = 0; i < crateCount; ++i) {
        LoadedCrate crate{u"Crate %1"_s.arg(i), {}, {}};
        const size_t start = random();
        const bool nearlyTheLast = i % 10 == 9;
        for (int entry = 0; entry < pathCount; ++entry) {
            if (nearlyTheLast && entry % 4 != 0)
                crate.paths << crates.last().paths.at(entry);
            else
                crate.paths << pathOf(entry % 2 == 0 ? start + size_t(entry) : random());
        }
        crates << crate;
    }
    return crates;
}

} // namespace tarnwick::bench
