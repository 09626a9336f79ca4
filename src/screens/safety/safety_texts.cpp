#include "screens/safety/safety_texts.h"

using namespace Qt::StringLiterals;

namespace tarnwick::Safety {

const QList<QString> &neverDoes()
{
    static const QList<QString> promises = {
        u"Never deletes a file — everything goes to a 30-day holding folder."_s,
        u"Never writes while Serato is running."_s,
        u"Never re-encodes audio — loudness is written as tags only."_s,
        u"Never uploads your audio."_s,
        u"Snapshots the whole _Serato_ folder before every write."_s,
    };
    return promises;
}

const QList<Step> &steps()
{
    static const QList<Step> steps = {
        {u"Full disk access"_s, u"So Tarnwick can read _Serato_ and your audio files."_s},
        {u"Quit Serato"_s, u"Reading is safe; writes are blocked until Serato is closed."_s},
        {u"Pick a library"_s, u"Choose which _Serato_ database to work with."_s},
        {u"First snapshot"_s, u"A copy of the database folder, taken before any change."_s},
        {u"Read-only dry run"_s, u"See every proposed fix before a single write happens."_s},
    };
    return steps;
}

} // namespace tarnwick::Safety
