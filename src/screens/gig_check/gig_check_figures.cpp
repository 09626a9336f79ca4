#include "screens/gig_check/gig_check_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick::GigCheckFigures {

namespace {

QString blockerSentence(int count)
{
    return count == 1 ? u"1 blocker would fail to load. Clear these first."_s
                      : u"%1 blockers would fail to load. Clear these first."_s.arg(count);
}

QString polishSentence(int count)
{
    return count == 1
               ? u"1 polish item — playable, but a quick pass would tighten it."_s
               : u"%1 polish items — playable, but a quick pass would tighten it."_s.arg(count);
}

} // namespace

QString noDestination()
{
    return u"Choose…"_s;
}

QStringList destinations(const QList<platform::Volume> &volumes)
{
    QStringList all = {u"Engine DJ SD"_s, u"rekordbox USB"_s};
    for (const platform::Volume &volume : volumes)
        all.append(volume.name);
    return all;
}

QString picked(qsizetype crates)
{
    return u"%1 picked"_s.arg(crates);
}

Report reportOf(const GigCheck &check)
{
    return {.tracks = check.totalTracks(),
            .verdict = check.verdict(),
            .blockerCount = check.blockerCount(),
            .polishCount = check.polishCount(),
            .blockers = check.blockers,
            .polish = check.polish};
}

Report reportOf(const ScanResult &result, const QList<LoadedCrate> &crates,
                const QSet<QString> &picked)
{
    return reportOf(GigCheck(tracksInCrates(picked, crates, trackMapOf(result.tracks))));
}

QString trackCount(const Report &report)
{
    return u"%1 tracks"_s.arg(report.tracks);
}

QString sentence(const Report &report, const QString &destination)
{
    if (report.tracks == 0)
        return u"Nothing selected yet."_s;
    switch (report.verdict) {
    case GigCheck::Verdict::NotYet:
        return blockerSentence(report.blockerCount);
    case GigCheck::Verdict::GoodEnough:
        return polishSentence(report.polishCount);
    case GigCheck::Verdict::Ready:
        return u"Every track is present, gridded and tagged for %1."_s.arg(destination);
    }
    Q_UNREACHABLE();
}

} // namespace tarnwick::GigCheckFigures
