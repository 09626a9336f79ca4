#include "repair/tag_plan.h"

#include "foundation/numbers.h"

using namespace Qt::StringLiterals;

namespace tarnwick::TagPlan {

namespace {

QString tracksWord(int count)
{
    return count == 1 ? u"track"_s : u"tracks"_s;
}

ChangeLog::Change gainChange(const SeratoTrack &track, double gain, const QString &note)
{
    return {.kind = ChangeEntry::Kind::Gain,
            .target = track.fileName(),
            .detail =
                u"Wrote ReplayGain %1 dB (%2)"_s.arg(QString::fromLatin1(twoDecimals(gain)), note)};
}

} // namespace

QString emptyGenreMark()
{
    return u"—"_s;
}

QString genreReason(const SeratoTrack &track)
{
    return u"Before: tag "_s + track.fileName();
}

QString genreBatchReason(size_t trackCount, const QString &genre)
{
    return u"Before: tag %1 tracks · "_s.arg(trackCount) + genre;
}

ChangeLog::Change genreSet(const SeratoTrack &track, const QString &genre)
{
    return {.kind = ChangeEntry::Kind::Tag,
            .target = track.fileName(),
            .detail = u"Genre set to "_s + genre,
            .before = track.genre.isEmpty() ? emptyGenreMark() : track.genre,
            .after = genre};
}

QString genreBatchSummary(int count, const QString &genre)
{
    return u"Tagged %1 %2 as "_s.arg(QString::number(count), tracksWord(count)) + genre;
}

QString gainReason(const SeratoTrack &track)
{
    return u"Before: gain tag "_s + track.fileName();
}

QString gainBatchReason(size_t trackCount)
{
    return u"Before: normalize %1 tracks"_s.arg(trackCount);
}

ChangeLog::Change gainWritten(const SeratoTrack &track, double gain)
{
    return gainChange(track, gain, u"tag only, no re-encode"_s);
}

ChangeLog::Change gainWrittenInBatch(const SeratoTrack &track, double gain)
{
    return gainChange(track, gain, u"tag only"_s);
}

QString gainBatchSummary(int count)
{
    return u"Levelled %1 %2 — tags only"_s.arg(QString::number(count), tracksWord(count));
}

} // namespace tarnwick::TagPlan
