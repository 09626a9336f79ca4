#include "screens/cues/cue_figures.h"

#include "foundation/dates.h"

using namespace Qt::StringLiterals;

namespace tarnwick::CueFigures {

QString lossLine(const CueVault::Loss &loss)
{
    return u"Lost: %1 · captured %2"_s.arg(loss.what(), dateForPeople(loss.capturedAt));
}

} // namespace tarnwick::CueFigures
