#include "safety/cue_vault.h"

#include "foundation/identity.h"
#include "foundation/json_writer.h"
#include "platform/clock.h"
#include "safety/store.h"
#include "safety/store_file.h"
#include "tags/geob_files.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// An object whose keys are the paths; nothing where the file is anything else.
std::optional<CueVault::Entries> decoded(const QByteArray &file)
{
    CueVault::Entries entries;
    JsonReader json(file);
    const bool isObject = json.object([&](QByteArrayView key) {
        CueEntry entry;
        if (!CueEntry::read(json, file, entry))
            return false;
        entries.emplace(JsonReader::toText(key), std::move(entry));
        return true;
    });
    return isObject && json.end() ? std::optional(std::move(entries)) : std::nullopt;
}

using Item = CueVault::Entries::const_iterator;

std::vector<Item> inOrderOfTheirKeys(const CueVault::Entries &entries)
{
    std::vector<Item> items;
    items.reserve(size_t(entries.size()));
    for (auto item = entries.begin(); item != entries.end(); ++item)
        items.push_back(item);
    std::sort(items.begin(), items.end(), [](Item a, Item b) { return a.key() < b.key(); });
    return items;
}

/// Writes the entries' own texts with the keys between them, and joins nothing in memory.
void write(const CueVault::Entries &entries, platform::SharedFileWrite &file,
           platform::FileState &state)
{
    const std::vector<Item> items = inOrderOfTheirKeys(entries);
    QByteArrayList keys;
    for (const Item item : items) {
        QByteArray key = keys.isEmpty() ? "{\n  " : ",\n  ";
        JsonWriter::appendQuoted(key, item.key());
        keys.append(key + ": ");
    }
    std::vector<QByteArrayView> parts;
    parts.reserve(2 * items.size() + 1);
    for (size_t i = 0; i < items.size(); ++i) {
        parts.push_back(keys.at(qsizetype(i)));
        parts.push_back(items[i]->text());
    }
    parts.push_back(items.empty() ? "{}\n" : "\n}\n");
    (void)file.write(parts, state);
}

void takeIn(CueVault::Entries &entries, const platform::SharedFileWrite &file,
            const platform::FileState &known)
{
    const auto content = file.contentUnlike(known);
    const auto others = content ? decoded(*content) : std::nullopt;
    if (!others)
        return;
    for (auto other = others->begin(); other != others->end(); ++other) {
        const auto own = entries.constFind(other.key());
        if (own == entries.constEnd() || own->capturedAt() < other->capturedAt())
            entries.insert(other.key(), *other);
    }
}

bool hasCuesToCapture(const ScannedTrack &track)
{
    return track.existsOnDisk && (track.hasMarkers || track.hasBeatGrid);
}

bool isProtected(const CueVault::Entries &entries, const ScannedTrack &track)
{
    const auto found = entries.constFind(track.track.relativePath);
    return found != entries.constEnd() && found->fileSize() == track.onDiskSizeBytes;
}

} // namespace

QString CueVault::Loss::what() const
{
    if (lostMarkers)
        return lostGrid ? u"Hot cues and beat grid"_s : u"Hot cues"_s;
    return lostGrid ? u"Beat grid"_s : u"—"_s;
}

CueVault::CueVault()
    : m_path(Store::cueVault())
    , m_loaded([path = m_path] { return load(path); })
{}

CueVault::State CueVault::load(const QString &path)
{
    platform::FileState file;
    Entries entries = decoded(StoreFile::read(path, file)).value_or(Entries());
    return stateOf(std::move(entries), file);
}

CueVault::State CueVault::stateOf(Entries entries, const platform::FileState &file)
{
    const auto count = std::count_if(entries.begin(), entries.end(), [](const CueEntry &entry) {
        return entry.hasMarkers() || entry.hasGrid();
    });
    return {std::move(entries), int(count), file};
}

std::shared_ptr<const CueVault::State> CueVault::state() const
{
    std::unique_lock lock(m_swapping);
    if (m_captured)
        return m_captured;
    const Preloaded<const State> loaded = m_loaded;
    lock.unlock(); // the file may take its time
    return loaded.shared();
}

bool CueVault::isLoaded() const
{
    const std::scoped_lock lock(m_swapping);
    return m_loaded.isReady();
}

std::shared_ptr<const CueVault::Entries> CueVault::entries() const
{
    const auto present = state();
    return {present, &present->entries};
}

std::optional<CueEntry> CueVault::entry(const QString &relativePath) const
{
    const auto all = entries();
    const auto found = all->constFind(relativePath);
    return found == all->constEnd() ? std::nullopt : std::optional(*found);
}

int CueVault::protectedCount() const
{
    return state()->protectedCount;
}

int CueVault::capture(std::span<const ScannedTrack> tracks)
{
    const std::scoped_lock onlyOne(m_capturing);
    const auto before = state();
    Entries entries = before->entries; // shares all until the first change
    int captured = 0;
    for (const ScannedTrack &track : tracks) {
        if (!hasCuesToCapture(track) || isProtected(entries, track))
            continue;
        const auto frames = SeratoGEOB::captureCueFrames(track.track.absolutePath());
        if (frames.isEmpty())
            continue;
        entries.insert(track.track.relativePath,
                       CueEntry(frames, platform::now(), track.onDiskSizeBytes));
        ++captured;
    }
    if (captured > 0) {
        platform::FileState state = before->file;
        platform::SharedFileWrite file(m_path);
        takeIn(entries, file, state);
        write(entries, file, state);
        auto finished = std::make_shared<const State>(stateOf(std::move(entries), state));
        const std::scoped_lock lock(m_swapping);
        m_captured = std::move(finished);
        m_loaded.release();
    }
    return captured;
}

QList<CueVault::Loss> CueVault::losses(std::span<const ScannedTrack> tracks) const
{
    const auto all = entries();
    QList<Loss> found;
    for (const ScannedTrack &track : tracks) {
        if (!track.existsOnDisk)
            continue;
        const auto entry = all->constFind(track.track.relativePath);
        if (entry == all->constEnd())
            continue;
        const bool lostMarkers = entry->hasMarkers() && !track.hasMarkers;
        const bool lostGrid = entry->hasGrid() && !track.hasBeatGrid;
        if (lostMarkers || lostGrid)
            found.append({freshIdentity(), track, lostMarkers, lostGrid, entry->capturedAt()});
    }
    return found;
}

} // namespace tarnwick
