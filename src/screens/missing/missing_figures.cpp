#include "screens/missing/missing_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick::MissingFigures {

namespace {

constexpr int sureFrom = 95;
constexpr int likelyFrom = 80;

} // namespace

Sureness surenessOf(int confidence)
{
    return confidence >= sureFrom     ? Sureness::Sure
           : confidence >= likelyFrom ? Sureness::Likely
                                      : Sureness::Vague;
}

QString badge(int confidence)
{
    return QString::number(confidence) + u'%';
}

QString lastSeen(const SeratoTrack &track)
{
    return u"Last seen: "_s + track.absolutePath();
}

QString browseMessage(const SeratoTrack &track)
{
    return u"Find "_s + track.fileName();
}

QString source(const RepairEngine::Candidate &candidate)
{
    return candidate.drive() + u" · "_s + candidate.reason;
}

} // namespace tarnwick::MissingFigures
