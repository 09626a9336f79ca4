#include "repair/relink_candidates.h"

#include "foundation/paths.h"
#include "platform/file_search.h"
#include "platform/files.h"
#include "platform/volumes.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::RepairEngine {

namespace {

constexpr int sameNameScore = 85;
constexpr int likeNameScore = 60;
constexpr int sameSizeBonus = 15;
constexpr int likeSizeBonus = 8;
constexpr quint64 likeSizeBytes = 65'536; ///< sizes that differ by less are alike

const QStringList &audioExtensions()
{
    static const QStringList extensions = {u"mp3"_s, u"m4a"_s,  u"aif"_s, u"aiff"_s,
                                           u"wav"_s, u"flac"_s, u"ogg"_s};
    return extensions;
}

Candidate candidateAt(const QString &path, quint64 size, const SeratoTrack &track)
{
    Candidate candidate;
    candidate.url = QUrl::fromLocalFile(path);
    candidate.confidence = likeNameScore;
    QStringList reasons;
    if (lastPathComponent(path) == lastPathComponent(track.absolutePath())) {
        candidate.confidence = sameNameScore;
        reasons << u"same filename"_s;
    }
    const quint64 wanted = track.fileSizeBytes;
    const quint64 difference = size > wanted ? size - wanted : wanted - size;
    if (wanted != 0 && difference == 0) {
        candidate.confidence += sameSizeBonus;
        reasons << u"same size"_s;
    } else if (wanted != 0 && difference < likeSizeBytes) {
        candidate.confidence += likeSizeBonus;
        reasons << u"size within 64KB"_s;
    }
    candidate.reason = reasons.isEmpty() ? u"name match"_s : reasons.join(u" · "_s);
    return candidate;
}

} // namespace

QString Candidate::drive() const
{
    const QString volume = platform::volumeNameOf(url.toLocalFile());
    return volume.isEmpty() ? platform::systemDiskName() : volume;
}

QList<Candidate> rankedCandidates(const SeratoTrack &track, const QStringList &found, int limit)
{
    QList<Candidate> candidates;
    QSet<QString> seen = {track.absolutePath()};
    for (const QString &path : found) {
        if (seen.contains(path))
            continue;
        seen.insert(path);
        if (const auto facts = platform::factsOf(path))
            candidates.append(candidateAt(path, facts->size, track));
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate &one, const Candidate &other) {
                         return one.confidence > other.confidence;
                     });
    return candidates.first(std::clamp<qsizetype>(limit, 0, candidates.size()));
}

QList<Candidate> relinkCandidates(const SeratoTrack &track, int limit)
{
    const QString name = lastPathComponent(track.absolutePath());
    if (name.isEmpty())
        return {};
    platform::FileSearch search = platform::searchOfThisMachine();
    search.extensions = audioExtensions();
    const QList<QStringList> found = platform::findFiles(search, {name, baseName(name)});
    return rankedCandidates(track, found[0] + found[1], limit);
}

} // namespace tarnwick::RepairEngine
