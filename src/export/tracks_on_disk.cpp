#include "export/tracks_on_disk.h"

#include <bit>
#include <cstring>

namespace tarnwick {

namespace {

/// Takes four code units at a time: paths are long.
quint32 hashOf(QStringView path)
{
    constexpr quint64 factor = 0x9E3779B97F4A7C15;
    constexpr qsizetype step = 4;
    quint64 hash = quint64(path.size());
    const auto mix = [&hash](const QChar *units, qsizetype count) {
        quint64 chunk = 0;
        std::memcpy(&chunk, units, size_t(count) * sizeof(QChar));
        hash = (hash ^ chunk) * factor;
        hash ^= hash >> 32;
    };
    for (; path.size() > step; path = path.sliced(step))
        mix(path.data(), step);
    mix(path.data(), path.size());
    return quint32(hash);
}

} // namespace

QStringView keyOf(const SeratoTrack &track)
{
    const QStringView path = track.relativePath;
    return path.startsWith(u'/') ? path.sliced(1) : path;
}

TracksOnDisk::TracksOnDisk(const std::vector<ScannedTrack> &tracks)
{
    m_tracks.reserve(tracks.size());
    // Never more than half full, so that a free place ends every search.
    m_slots.resize(std::bit_ceil(2 * tracks.size() + 1));
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        m_tracks.push_back(&scanned.track);
        insert(count());
    }
}

int TracksOnDisk::numberOf(QStringView path) const
{
    return m_slots[slotOf(path, hashOf(path))].number;
}

std::vector<int> TracksOnDisk::numbersOf(const QStringList &paths) const
{
    std::vector<int> numbers;
    for (const QString &path : paths) {
        if (const int number = numberOf(path))
            numbers.push_back(number);
    }
    return numbers;
}

/// The place of a path: the one that holds it, else the free one where it belongs.
size_t TracksOnDisk::slotOf(QStringView path, quint32 hash) const
{
    const size_t mask = m_slots.size() - 1;
    size_t place = hash & mask;
    for (; m_slots[place].number != 0; place = (place + 1) & mask) {
        const Slot &slot = m_slots[place];
        if (slot.hash == hash && keyOf(track(slot.number)) == path)
            break;
    }
    return place;
}

void TracksOnDisk::insert(int number)
{
    const QStringView path = keyOf(track(number));
    const quint32 hash = hashOf(path);
    Slot &slot = m_slots[slotOf(path, hash)];
    if (slot.number == 0)
        ++m_pathCount;
    slot = {hash, number};
}

} // namespace tarnwick
