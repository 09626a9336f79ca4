#include "repair/undo_plan.h"

#include "foundation/paths.h"
#include "platform/files.h"
#include "repair/tag_plan.h"
#include "safety/store.h"
#include "serato/serato_document.h"
#include "serato/track_fields.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::UndoPlan {

namespace {

template <typename Matches>
const ScannedTrack *firstTrack(const ScanResult &result, Matches matches)
{
    const auto found = std::find_if(result.tracks.begin(), result.tracks.end(), matches);
    return found == result.tracks.end() ? nullptr : &*found;
}

} // namespace

const ScannedTrack *trackAtPath(const ScanResult &result, const QString &relativePath)
{
    return firstTrack(result, [&](const ScannedTrack &scanned) {
        return scanned.track.relativePath == relativePath;
    });
}

const ScannedTrack *trackNamed(const ScanResult &result, const QString &fileName)
{
    return firstTrack(result, [&](const ScannedTrack &scanned) {
        // Most paths end otherwise, which is quicker to see than their last component is to cut
        // out.
        return scanned.track.relativePath.contains(fileName) &&
               scanned.track.fileName() == fileName;
    });
}

QString genreBefore(const ChangeEntry &entry)
{
    const QString before = entry.before.value_or(QString());
    return before == TagPlan::emptyGenreMark() ? QString() : before;
}

std::optional<DocumentRecord> recordInSnapshot(const QString &snapshotId, const QString &path)
{
    if (!Store::isPlainName(snapshotId))
        return std::nullopt;
    const QString folder = joinedPath(Store::snapshots(), snapshotId);
    const auto document = SeratoDocument::read(joinedPath(folder, u"database V2"_s));
    return document ? document->track(withoutLeadingSlash(path)) : std::nullopt;
}

ScannedTrack unscannedTrack(const DocumentRecord &record)
{
    const QByteArray bytes = record.bytes();
    const QByteArrayView fields = QByteArrayView(bytes).sliced(SeratoParser::headerSize);
    ScannedTrack scanned{.track = trackFromFields(SeratoParser::fieldsIn(fields))};
    scanned.existsOnDisk = platform::isRegularFile(scanned.track.absolutePath());
    scanned.onDiskSizeBytes = scanned.track.fileSizeBytes;
    return scanned;
}

} // namespace tarnwick::UndoPlan
