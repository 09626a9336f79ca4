#include "floors/flat_grouping.h"

#include <QHash>

#include <bit>
#include <string>
#include <string_view>

namespace tarnwick::bench {

namespace {

struct Slot
{
    size_t hash = 0;
    size_t start = 0;
    size_t length = 0; ///< 0 while free
};

void appendFolded(std::u16string &texts, QStringView text)
{
    for (const QChar unit : text)
        texts.push_back(char16_t(unit.unicode() | (unit >= u'A' && unit <= u'Z' ? 0x20 : 0)));
}

} // namespace

int flatGrouping(const std::vector<ScannedTrack> &tracks)
{
    std::vector<Slot> slots(std::bit_ceil(tracks.size() * 2 + 1));
    std::u16string texts;
    int copies = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        const size_t start = texts.size();
        appendFolded(texts, scanned.track.artist);
        texts.push_back(u'|');
        appendFolded(texts, scanned.track.title);
        const std::u16string_view key = std::u16string_view(texts).substr(start);
        const size_t hash = qHashBits(key.data(), key.size() * sizeof(char16_t));
        size_t at = hash & (slots.size() - 1);
        while (slots[at].length != 0 &&
               (slots[at].hash != hash ||
                std::u16string_view(texts).substr(slots[at].start, slots[at].length) != key))
            at = (at + 1) & (slots.size() - 1);
        if (slots[at].length == 0) {
            slots[at] = {hash, start, key.size()};
        } else {
            ++copies;
            texts.resize(start);
        }
    }
    return copies;
}

} // namespace tarnwick::bench
