#include "export/tracks_on_disk.h"

#include <QHash>

#include <bit>

namespace tarnwick {

namespace {

quint32 hashOf(QStringView path)
{
    return quint32(qHash(path, size_t(0)));
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
    for (const ScannedTrack &scanned : tracks) {
        if (scanned.existsOnDisk)
            m_tracks.push_back(&scanned.track);
    }
    // Never more than half full, so that a free place ends every search.
    m_slots.resize(std::bit_ceil(2 * m_tracks.size() + 1));
    for (int number = 1; number <= count(); ++number)
        insert(number);
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
